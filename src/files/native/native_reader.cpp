// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/native_reader.h"

#include "core/edit/editor.h"
#include "core/edit/load_steps.h"
#include "core/model/style_ctab.h"
#include "files/native/blk_form.h"
#include "files/native/load_evnt.h"
#include "files/native/native_chunks.h"

#include <algorithm>
#include <array>
#include <memory>

namespace tessaro {

namespace {

constexpr std::size_t versionAt = 8;
constexpr std::uint8_t highestChannel = 15;
constexpr int widestTranspose = 36;

std::string text(ByteReader& in) { return std::string(in.chars(in.vlq())); }

std::uint8_t channel(std::uint8_t byte) { return std::min(byte, highestChannel); }

std::int8_t transpose(std::uint8_t byte)
{
    return static_cast<std::int8_t>(std::clamp<int>(static_cast<std::int8_t>(byte), -widestTranspose, widestTranspose));
}

/// Puts objects in the order of their tops; in a whole file they stand so already.
template <class Owners>
void sortByTop(Owners& owners)
{
    std::stable_sort(owners.begin(), owners.end(),
                     [](const auto& a, const auto& b) { return a->GetTimeTop() < b->GetTimeTop(); });
}

} // namespace

NativeReader::NativeReader(CEditor& editor, const Strings& strings, const _EDT_FILE& file)
    : m_editor(editor)
    , m_strings(strings)
    , m_file(file)
    , m_in({file.buffer, file.fileLength})
{
    ByteReader header = m_in;
    header.seek(versionAt);
    m_version = header.u8();
}

bool NativeReader::LoadTr9()
{
    if (!LoadTr9Blk() || !LoadTr9Trk() || !LoadStyle()) return false;
    m_editor.RemoveScratch();
    return LoadScr();
}

bool NativeReader::LoadTr9Blk()
{
    stage(TextId::progressLoadBlockChunk, m_file.numRealBlk);
    m_in.seek(m_file.blkOffset);
    // The master's real block is there before the file; a file without blocks has its first chunk read all the same.
    CRealBlk* real = m_editor.song().masterReal();
    for (std::uint32_t number = 0; real && LoadTr9Evnts(*real);) {
        m_reals.push_back(real);
        if (++number >= m_file.numRealBlk) return true;
        m_editor.SetPrgDlgPos(number);
        real = m_editor.NewAddTailRealBlk();
    }
    return false;
}

bool NativeReader::LoadTr9Evnts(CRealBlk& real)
{
    const ByteReader events = chunk();
    return m_in.ok() && EvntLoader(events, real).LoadTr9Evnts();
}

bool NativeReader::LoadTr9Trk()
{
    stage(TextId::progressLoadTrackChunk, m_file.numTrk);
    m_in.seek(m_file.trkOffset);
    for (int number = 0; number < m_file.numTrk; ++number) {
        m_editor.SetPrgDlgPos(static_cast<std::uint32_t>(number));
        CTrk* trk = m_editor.song().trk(number);
        ByteReader in = chunk();
        if (!trk || !m_in.ok()) return false;
        LoadTr9TrkInfo(in, *trk);
        if (!in.ok() || !loadBlks(in, *trk)) return false;
    }
    return true;
}

/// The master keeps its type, since it has its block already.
void NativeReader::LoadTr9TrkInfo(ByteReader& in, CTrk& trk) const
{
    trk.SetType(in.u8());
    trk.SetPort(in.u8());
    trk.SetCh(channel(in.u8()));
    trk.SetTranspose(transpose(in.u8()));
    trk.SetSolo(in.u8() != 0);
    trk.SetMute(in.u8() != 0);
    trk.SetTransEnable(in.u8() != 0);
    const std::uint32_t instType = in.u32be();
    const std::uint8_t staffType = in.u8();
    const std::uint8_t wavVol = in.u8();
    if (m_version >= native::version) {
        trk.SetInstType(instType);
        trk.SetStaffType(staffType);
        trk.SetWavVol(wavVol);
    }
    in.skip(native::trkReserve);
    trk.SetName(text(in));
}

bool NativeReader::loadBlks(ByteReader& in, CTrk& trk)
{
    if (CBlk* master = m_editor.song().masterBlk(); master == trk.blocks().head()) {
        while (!in.atEnd())
            if (!LoadTr9TrkData(in, *master)) return false;
        return true;
    }
    std::vector<std::unique_ptr<CBlk>> blks;
    while (!in.atEnd()) {
        CBlk* blk = nullptr;
        trk.New(&blk);
        blks.emplace_back(blk);
        if (!LoadTr9TrkData(in, *blk)) return false;
    }
    sortByTop(blks);
    for (auto& blk : blks) {
        const std::uint32_t top = blk->GetTimeTop();
        trk.Add(blk.release(), top);
    }
    return true;
}

bool NativeReader::LoadTr9TrkData(ByteReader& in, CBlk& blk)
{
    BlkForm form = readBlkInfo(in);
    CRealBlk* real = realBlk(form.real);
    if (!in.ok() || !real) return false;
    blk.Set(form.top, std::max(form.top, form.end), real, form.type);
    blk.SetName(std::move(form.name));
    return true;
}

/// Songs of older programs end where the styles begin.
bool NativeReader::LoadStyle()
{
    if (ByteReader(m_in).chars(4) != chunkid::styleTrk) return true;
    ByteReader in = chunk();
    const std::uint8_t version = in.u8();
    if (!m_in.ok() || !in.ok()) return false;
    if (version != 0) return true;

    in.skip(1);
    const std::uint32_t count = in.u32be();
    const auto each = [&in](auto& values, auto&& convert) {
        for (auto& value : values) value = convert(in.u8());
    };
    const auto plain = [](std::uint8_t byte) { return byte; };
    const auto flag = [](std::uint8_t byte) { return byte != 0; };
    _STYLE_TRK_INFO info;
    each(info.port, plain);
    each(info.ch, channel);
    info.transOfst = static_cast<std::int8_t>(in.u8());
    each(info.trans, transpose);
    each(info.transEnable, flag);
    each(info.solo, flag);
    each(info.mute, flag);
    info.styleBSetup = in.u8() != 0;
    info.styleBTempo = in.u8() != 0;
    in.skip(native::styleReserve);
    info.styleName = text(in);
    if (!in.ok()) return false;
    m_editor.styles().info() = std::move(info);

    stage(TextId::progressLoadStyleChunk, count);
    std::vector<std::unique_ptr<CStyleBlk>> styles;
    for (std::uint32_t number = 0; number < count; ++number) {
        m_editor.SetPrgDlgPos(number);
        styles.push_back(std::make_unique<CStyleBlk>());
        if (!LoadStyleBlk(*styles.back())) return false;
    }
    sortByTop(styles);
    for (auto& style : styles) {
        const std::uint32_t top = style->GetTimeTop();
        m_editor.AddStyle(top, style.release());
    }
    return true;
}

bool NativeReader::LoadStyleBlk(CStyleBlk& style)
{
    if (ByteReader(m_in).chars(4) != chunkid::styleBlk) return false;
    ByteReader in = chunk();
    if (!m_in.ok()) return false;
    for (int part = 0; part < stylePartCount; ++part) style.SetMute(part, in.u8() != 0);
    style.SetNumerator(in.u8());
    style.SetDenominator(in.u8());
    style.SetMeasClock(in.u32be());
    style.SetSectionClock(in.u32be());
    style.SetTempoEnable(in.u8() != 0);
    std::array<std::uint8_t, 3> tempo{};
    for (std::uint8_t& byte : tempo) byte = in.u8();
    style.SetTempo(tempo);
    const std::uint32_t top = in.u32be();
    style.SetTime(top, std::max(top, in.u32be()));
    in.skip(native::styleReserve);
    if (!loadSetups(in, style) || !loadPhrases(in, style)) return false;
    style.SetFileName(text(in));
    style.SetStyleName(text(in));
    style.SetSectionName(text(in));
    return in.ok();
}

/// A number of 0, which is the master's, means none here and in the phrases.
bool NativeReader::loadSetups(ByteReader& in, CStyleBlk& style) const
{
    for (int part = 0; part < stylePartCount; ++part) {
        const std::uint32_t index = in.u32be();
        if (index == 0) continue;
        CRealBlk* real = realBlk(index);
        if (!real) return false;
        style.SetSetup(part, real);
    }
    return in.ok();
}

bool NativeReader::loadPhrases(ByteReader& in, CStyleBlk& style) const
{
    for (int part = 0; part < stylePartCount; ++part) {
        const std::uint32_t index = in.u32be();
        const _STYLE_CTAB table = readStyleCtab(in);
        if (index == 0) continue;
        CRealBlk* real = realBlk(index);
        if (!real) return false;
        auto phrase = std::make_unique<CPhraseBlk>();
        phrase->SetTime(0, style.GetSectionClock());
        phrase->SetRealBlk(real);
        phrase->SetCtab(table);
        style.AddPhrase(part, 0, phrase.release());
    }
    return in.ok();
}

/// The score's chunks go to who keeps the score. Without them, links to it have nothing to refer to; a file with waves
/// behind it keeps them nevertheless.
bool NativeReader::LoadScr()
{
    const ByteReader file({m_file.buffer, m_file.fileLength});
    const ReadAt read = [file](std::uint64_t offset, std::span<std::uint8_t> into) {
        ByteReader at = file;
        at.seek(static_cast<std::size_t>(offset));
        const ByteReader::Bytes bytes = at.bytes(into.size());
        std::copy(bytes.begin(), bytes.end(), into.begin());
        return at.ok();
    };
    const auto score = findTrailingChunk(read, m_file.fileLength, chunkid::score);
    if (score) {
        m_editor.SetPrgDlgText(m_strings(TextId::progressLoadScoreChunk));
        const std::span<const std::uint8_t> all(m_file.buffer, m_file.fileLength);
        return score->length > 0 && m_editor.score().load(all.subspan(score->offset, score->length));
    }
    if (!m_file.wavesFollow) load_steps::deleteScoreLinks(m_editor.song());
    return true;
}

void NativeReader::stage(TextId text, std::uint32_t steps)
{
    m_editor.SetPrgDlgText(m_strings(text));
    m_editor.SetPrgDlgRange(0, steps);
}

ByteReader NativeReader::chunk()
{
    m_in.skip(4);
    return ByteReader(m_in.bytes(m_in.u32be()));
}

CRealBlk* NativeReader::realBlk(std::uint32_t index) const noexcept
{
    return index < m_reals.size() ? m_reals[index] : nullptr;
}

} // namespace tessaro
