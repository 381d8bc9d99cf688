// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/clip/blk_clip_reader.h"

#include "core/edit/editor.h"
#include "core/edit/load_steps.h"
#include "core/edit/undo_part.h"
#include "core/model/tick.h"
#include "files/clip/clip_chunks.h"
#include "files/native/load_evnt.h"
#include "files/native/native_chunks.h"

#include <algorithm>

namespace tessaro {

namespace {
constexpr std::size_t trkInfoRest = 31; ///< of a track's settings, behind the type
}

void BlkClipReader::DropReal::operator()(CRealBlk* real) const { editor->song().deleteRealBlk(real); }

bool BlkClipReader::ClipPaste_blk(std::uint32_t time, int track)
{
    if (!ChkTr9i() || !readBlks() || !LoadScr()) return false;
    int strange = 0;
    {
        const UndoPart step(m_editor, std::string(m_strings(TextId::undoBlockPaste)));
        if (!step) return false;
        for (Blk& blk : m_blks)
            if (!SetClipTrkInfo(time, track, blk)) ++strange;
    }
    for (; strange > 0; --strange) m_editor.user().message(TextId::blockTypeDiffers, MessageKind::warning);
    return true;
}

bool BlkClipReader::ChkTr9i()
{
    if (m_in.chars(4) != clipid::blks) return false;
    m_in.skip(4);
    if (m_in.chars(4) != chunkid::header) return false;
    m_count = m_in.u32be();
    return m_in.ok();
}

bool BlkClipReader::readBlks()
{
    for (std::uint32_t number = 0; number < m_count; ++number) {
        if (!ChkTr9b()) return false;
        FreshReal real(m_editor.NewAddTailRealBlk(), {&m_editor});
        if (!real || !SetClipEvnts(*real)) return false;
        load_steps::deleteScoreLinks(*real);
        m_blks.push_back({std::move(real), 0, 0, {}});
    }
    return std::all_of(m_blks.begin(), m_blks.end(), [this](Blk& blk) { return readTrkInfo(blk); });
}

bool BlkClipReader::ChkTr9b() { return m_in.chars(4) == chunkid::realBlk; }

bool BlkClipReader::SetClipEvnts(CRealBlk& real)
{
    const ByteReader::Bytes events = m_in.bytes(m_in.u32be());
    return m_in.ok() && EvntLoader(ByteReader(events), real).LoadTr9Evnts();
}

bool BlkClipReader::readTrkInfo(Blk& blk)
{
    blk.track = m_in.u8();
    blk.trkType = m_in.u8();
    m_in.skip(trkInfoRest);
    blk.form = readBlkInfo(m_in);
    blk.form.end = std::max(blk.form.top, blk.form.end);
    return m_in.ok();
}

/// Each of the three lists may be missing; those that are there tell of the same count of blocks.
bool BlkClipReader::LoadScr()
{
    std::uint32_t counts[clipid::score.size()]{};
    for (std::size_t list = 0; list < clipid::score.size(); ++list) {
        if (ByteReader(m_in).chars(4) != clipid::score[list]) continue;
        m_in.skip(4);
        ByteReader chunk(m_in.bytes(m_in.u32be()));
        counts[list] = chunk.u32be();
        if (!m_in.ok() || !chunk.ok()) return false;
    }
    return counts[0] == counts[1] && counts[1] == counts[2];
}

bool BlkClipReader::SetClipTrkInfo(std::uint32_t time, int track, Blk& blk)
{
    const Blk& first = m_blks.front();
    const int offset = track != 0 ? track - first.track : 0;
    const POSITION trk = m_editor.GetTrkPos(std::clamp(blk.track + offset, 1, trackCount - 1));
    const std::uint8_t present = List<CTrk>::get(trk)->GetType();
    const bool isTrkType = blk.trkType == trktype::midi || blk.trkType == trktype::wave;
    if (!isTrkType || (present != trktype::unused && present != blk.trkType)) return false;

    if (present == trktype::unused) m_editor.SetTrkType(trk, blk.trkType);
    const std::uint32_t top = tick::shifted(time, std::int64_t{blk.form.top} - first.form.top);
    const std::uint32_t end = tick::later(top, blk.form.end - blk.form.top);
    const POSITION made = m_editor.BlkPasteNoHint(trk, top, end, blk.real.get());
    if (!made) {
        List<CTrk>::get(trk)->SetType(present);
        return true;
    }
    if (present == trktype::unused) m_editor.flags().trkTypeChanged = true;
    static_cast<void>(blk.real.release());
    List<CBlk>::get(made)->SetName(std::move(blk.form.name));
    m_editor.HintBlkNew(trk, made);
    m_placed.push_back({trk, made});
    return true;
}

} // namespace tessaro
