// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/wave_size.h"

#include "core/edit/blk_events.h"
#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "core/ports/wave_lengths.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace tessaro::wave_size {

namespace {

/// The tick at which the last sound of a block ends; none when no length is known.
std::optional<std::uint32_t> lastSound(const CEditor& editor, const CBlk& blk, WaveLengths& lengths)
{
    if (blk.GetType() != blktype::real || !blk.GetRealBlk()) return std::nullopt;
    std::optional<std::uint32_t> last; // in milliseconds
    for (const CEvnt* e = blk.GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
        if (status::kind(e->GetStatus()) != status::wave) continue;
        const std::uint32_t start = editor.TimeToMsecond(tick::later(blk.GetTimeTop(), e->GetTime()));
        if (const auto length = lengths.milliseconds(e->GetFileName()))
            last = std::max(last.value_or(0), tick::later(start, *length));
    }
    if (last) return editor.MsecondToTime(*last);
    return std::nullopt;
}

void setEnd(CEditor& editor, CTrk& trk, CBlk& blk, std::uint32_t end)
{
    blk.SetTimeEnd(end);
    editor.HintBlkReSize(&trk, &blk);
}

} // namespace

bool fit(CEditor& editor, WaveLengths& lengths, POSITION trk, POSITION pos)
{
    if (!trk || !pos) return false;
    CBlk& blk = *List<CBlk>::get(pos);
    const auto end = lastSound(editor, blk, lengths);
    if (!end) return false;
    blk.SetTimeEnd(*end);
    blk_events::fitGhosts(editor, blk);
    editor.HintBlkReSize(trk, pos);
    return true;
}

void fitAll(CEditor& editor, WaveLengths& lengths)
{
    // The ghosts of all measured blocks follow in one walk over the song.
    std::unordered_map<const CRealBlk*, std::uint32_t> measured;
    for (CTrk* trk = editor.song().trk(1); trk; trk = List<CTrk>::next(trk)) {
        if (trk->GetType() != trktype::wave) continue;
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            const auto end = lastSound(editor, *blk, lengths);
            if (!end) continue;
            setEnd(editor, *trk, *blk, *end);
            measured[blk->GetRealBlk()] = blk->GetTimeEnd() - blk->GetTimeTop();
        }
    }
    if (measured.empty()) return;
    for (CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            const auto length = measured.find(blk->GetRealBlk());
            if (blk->GetType() == blktype::ghost && length != measured.end())
                setEnd(editor, *trk, *blk, tick::later(blk->GetTimeTop(), length->second));
        }
}

} // namespace tessaro::wave_size
