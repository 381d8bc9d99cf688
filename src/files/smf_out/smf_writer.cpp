// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/smf_out/smf_writer.h"

#include "base/byte_sink.h"
#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "files/recognise.h"
#include "files/smf_out/smf_evnt.h"
#include "files/smf_out/stages.h"

#include <new>
#include <stdexcept>

namespace tessaro {

namespace {

constexpr std::uint32_t division = 480;
constexpr std::size_t ntrksOffset = 10;
constexpr std::uint8_t vbPorts = 4;
constexpr std::size_t usualBytes = 5; ///< of a delta and a channel message
constexpr std::uint32_t noProgress = 0;

void putHeader(ByteWriter& out, std::uint32_t format)
{
    out.chars("MThd");
    out.u32be(6);
    out.u16be(format);
    out.u16be(1);
    out.u16be(division);
}

} // namespace

SmfWriter::SmfWriter(CEditor& editor, const Strings& strings, ScorePlayout& score, ByteSink& sink)
    : m_editor(editor)
    , m_strings(strings)
    , m_sink(sink)
    , m_merger(editor, score)
{
}

bool SmfWriter::SaveSmf0()
{
    m_merger.MergeAll(m_main);
    putSmf0();
    return hand();
}

bool SmfWriter::SaveZp()
{
    ZpLists lists;
    m_merger.MergeZp(lists);
    m_main.swap(lists.main);
    putSmf0();
    putZpChunk("ZPIH", TextId::progressSaveZpInfo, lists.info);
    putZpChunk("ZPKM", TextId::progressSaveZpKaraoke, lists.messages);
    return hand();
}

bool SmfWriter::SaveSmf1()
{
    SaveSmf1Mthd();
    for (int number = 0; number < trackCount; ++number) {
        m_main.clear();
        m_merger.MergeTrk(number, m_main);
        unpack();
        SaveSmf1Mtrk(number);
    }
    patchNtrks(m_chunks);
    return hand();
}

bool SmfWriter::SaveVb()
{
    SaveSmf1Mthd();
    for (std::uint8_t port = 0; port < vbPorts; ++port) {
        m_main.clear();
        m_merger.MergeTrkVb(port, m_main);
        unpack();
        SaveSmf1MtrkVb(port);
    }
    patchNtrks(vbPorts);
    return hand();
}

void SmfWriter::unpack()
{
    FwdSyng(m_main);
    UnpackSyng(m_main);
    UnpackNote(m_main);
    UnpackVce(m_main);
}

void SmfWriter::putSmf0()
{
    unpack();
    m_editor.SetPrgDlgText(m_strings(TextId::progressSaveSmf0));
    m_editor.SetPrgDlgRange(0, static_cast<std::uint32_t>(m_main.size()));
    putHeader(m_out, 0);
    const std::size_t length = beginChunk("MTrk");
    putRecords(m_main, 256);
    endChunk(length);
}

void SmfWriter::putZpChunk(std::string_view id, TextId text, const RecordList& list)
{
    m_editor.SetPrgDlgText(m_strings(text));
    m_editor.SetPrgDlgRange(0, static_cast<std::uint32_t>(list.size()));
    const std::size_t length = beginChunk(id);
    putRecords(list, 1);
    endChunk(length);
}

void SmfWriter::SaveSmf1Mthd()
{
    m_editor.SetPrgDlgText(m_strings(TextId::progressSaveSmf1));
    putHeader(m_out, 1);
}

void SmfWriter::SaveSmf1Mtrk(int number)
{
    if (m_main.empty()) return;
    ++m_chunks;
    const std::size_t length = beginChunk("MTrk");
    const CTrk& trk = *m_editor.song().trk(number);
    if (number != 0) {
        m_out.u8(0);
        GetStrTr9MetaPort(trk.GetPort(), m_out);
    }
    if (number != 0 && !trk.GetName().empty()) {
        m_out.u8(0);
        m_out.u8(status::metaEvent);
        m_out.u8(meta::trackName);
        m_out.vlq(static_cast<std::uint32_t>(trk.GetName().size()));
        m_out.chars(trk.GetName());
    }
    putRecords(m_main, noProgress);
    endChunk(length);
}

void SmfWriter::SaveSmf1MtrkVb(std::uint8_t port)
{
    const std::size_t length = beginChunk("MTrk");
    m_out.u8(0);
    GetStrTr9MetaPort(port, m_out);
    putRecords(m_main, noProgress);
    endChunk(length);
}

void SmfWriter::putRecords(const RecordList& list, std::uint32_t progressStep)
{
    m_bytes.reserve(m_bytes.size() + list.size() * usualBytes);
    std::uint32_t last = 0;
    std::uint32_t count = 0;
    for (const SmfRecord& r : list) {
        if (progressStep != 0 && count % progressStep == 0) m_editor.SetPrgDlgPos(count);
        ++count;
        if (!IsSmfEvnt(r.status)) continue;
        m_out.vlq(r.time - last);
        last = r.time;
        GetSmfEvnt(r, m_out);
    }
}

std::size_t SmfWriter::beginChunk(std::string_view id)
{
    m_out.chars(id);
    return m_out.beginLength();
}

void SmfWriter::endChunk(std::size_t length)
{
    GetEot(m_out);
    m_out.endLength(length);
}

void SmfWriter::patchNtrks(std::uint32_t count) noexcept
{
    m_bytes[ntrksOffset] = static_cast<std::uint8_t>(count >> 8);
    m_bytes[ntrksOffset + 1] = static_cast<std::uint8_t>(count);
}

bool SmfWriter::hand() { return m_sink.write(m_bytes); }

bool saveSmf(std::uint8_t kind, CEditor& editor, const Strings& strings, ScorePlayout& score, ByteSink& sink)
{
    try {
        SmfWriter writer(editor, strings, score, sink);
        switch (kind) {
        case filekind::smf0: return writer.SaveSmf0();
        case filekind::smf1: return writer.SaveSmf1();
        case filekind::zp: return writer.SaveZp();
        case filekind::vb: return writer.SaveVb();
        default: return false;
        }
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

} // namespace tessaro
