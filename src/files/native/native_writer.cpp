// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/native_writer.h"

#include "core/edit/editor.h"
#include "core/model/style_ctab.h"
#include "files/native/blk_form.h"
#include "files/native/cnv_evnt.h"
#include "files/native/native_chunks.h"

#include <array>
#include <limits>

namespace tessaro {

NativeWriter::NativeWriter(CEditor& editor, const Strings& strings, ByteSink& sink)
    : m_editor(editor)
    , m_strings(strings)
    , m_sink(sink)
{
    std::uint32_t number = 0;
    m_index.reserve(editor.song().realBlks().count());
    for (const CRealBlk* real = editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real))
        m_index.emplace(real, number++);
}

bool NativeWriter::SaveTr9()
{
    return SaveTr9Hdr() && SaveTr9Blk() && SaveTr9Trk() && SaveStyleTrk() && SaveStyleBlk()
        && m_editor.score().save(m_sink);
}

bool NativeWriter::SaveTr9Hdr()
{
    beginChunk(chunkid::header);
    m_out.u8(native::version);
    m_out.u8(0);
    m_out.u16be(trackCount);
    m_out.u32be(m_editor.GetRealBlkCount());
    m_out.u16be(native::division);
    zeros(native::headerReserve);
    return endChunk();
}

bool NativeWriter::SaveTr9Blk()
{
    stage(TextId::progressConvertBlockChunk, m_editor.GetRealBlkCount());
    std::uint32_t number = 0;
    for (const CRealBlk* real = m_editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real)) {
        m_editor.SetPrgDlgPos(number++);
        beginChunk(chunkid::realBlk);
        if (!CnvBlk(*real, m_out) || !endChunk()) return false;
    }
    return true;
}

bool NativeWriter::SaveTr9Trk()
{
    stage(TextId::progressConvertTrackChunk, trackCount);
    std::uint32_t number = 0;
    for (const CTrk* trk = m_editor.song().trks().head(); trk; trk = List<CTrk>::next(trk)) {
        m_editor.SetPrgDlgPos(number++);
        beginChunk(chunkid::trk);
        CnvTrkInfo(*trk, m_out);
        text(trk->GetName());
        if (!CnvBlks(*trk) || !endChunk()) return false;
    }
    return true;
}

bool NativeWriter::CnvBlks(const CTrk& trk)
{
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        const std::uint32_t real = indexOf(blk->GetRealBlk());
        if (!CnvBlkInfo({blk->GetType(), blk->GetTimeTop(), blk->GetTimeEnd(), real, blk->GetName()}, m_out))
            return false;
    }
    return true;
}

bool NativeWriter::SaveStyleTrk()
{
    const _STYLE_TRK_INFO& info = m_editor.styles().info();
    const auto each = [this](const auto& values) {
        for (const auto value : values) m_out.u8(static_cast<std::uint8_t>(value));
    };
    beginChunk(chunkid::styleTrk);
    m_out.u8(0); // version
    m_out.u8(0);
    m_out.u32be(static_cast<std::uint32_t>(m_editor.GetCountStyle()));
    each(info.port);
    each(info.ch);
    m_out.u8(static_cast<std::uint8_t>(info.transOfst));
    each(info.trans);
    each(info.transEnable);
    each(info.solo);
    each(info.mute);
    m_out.u8(info.styleBSetup);
    m_out.u8(info.styleBTempo);
    zeros(native::styleReserve);
    text(info.styleName);
    return endChunk();
}

bool NativeWriter::SaveStyleBlk()
{
    stage(TextId::progressConvertStyleChunk, static_cast<std::uint32_t>(m_editor.GetCountStyle()));
    std::uint32_t number = 0;
    for (const CStyleBlk* style = m_editor.styles().blks().head(); style; style = List<CStyleBlk>::next(style)) {
        m_editor.SetPrgDlgPos(number++);
        beginChunk(chunkid::styleBlk);
        CnvStyle(*style);
        if (!endChunk()) return false;
    }
    return true;
}

void NativeWriter::CnvStyle(const CStyleBlk& style)
{
    for (int part = 0; part < stylePartCount; ++part) m_out.u8(style.GetMute(part));
    m_out.u8(style.GetNumerator());
    m_out.u8(style.GetDenominator());
    m_out.u32be(style.GetMeasClock());
    m_out.u32be(style.GetSectionClock());
    m_out.u8(style.GetTempoEnable());
    m_out.bytes(style.GetTempo());
    m_out.u32be(style.GetTimeTop());
    m_out.u32be(style.GetTimeEnd());
    zeros(native::styleReserve);
    for (int part = 0; part < stylePartCount; ++part) m_out.u32be(indexOf(style.GetSetup(part)));
    for (int part = 0; part < stylePartCount; ++part) CnvPhrase(List<CPhraseBlk>::get(style.GetHeadPos(part)));
    text(style.GetFileName());
    text(style.GetStyleName());
    text(style.GetSectionName());
}

void NativeWriter::CnvPhrase(const CPhraseBlk* phrase)
{
    const std::uint32_t index = phrase ? indexOf(phrase->GetRealBlk()) : 0;
    m_out.u32be(index);
    if (index != 0)
        writeStyleCtab(m_out, phrase->GetCtab());
    else
        zeros(styleCtabSize);
}

void NativeWriter::stage(TextId text, std::uint32_t steps)
{
    m_editor.SetPrgDlgText(m_strings(text));
    m_editor.SetPrgDlgRange(0, steps);
}

void NativeWriter::beginChunk(std::string_view id)
{
    m_bytes.clear();
    m_out.chars(id);
    m_length = m_out.beginLength();
}

bool NativeWriter::endChunk()
{
    if (!m_fits || m_bytes.size() > std::numeric_limits<std::uint32_t>::max()) return false;
    m_out.endLength(m_length);
    return m_sink.write(m_bytes);
}

void NativeWriter::text(const std::string& text)
{
    m_fits = m_fits && text.size() <= native::longestData;
    m_out.vlq(static_cast<std::uint32_t>(text.size()));
    m_out.chars(text);
}

void NativeWriter::zeros(std::size_t count) { m_bytes.insert(m_bytes.end(), count, 0); }

std::uint32_t NativeWriter::indexOf(const CRealBlk* real) const
{
    const auto at = m_index.find(real);
    return at == m_index.end() ? 0 : at->second;
}

} // namespace tessaro
