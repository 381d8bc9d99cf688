// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/track_cursors.h"

#include "core/edit/editor.h"

#include <algorithm>

namespace tessaro {

namespace {
std::int64_t songTime(const CBlk& blk, const CEvnt& event) noexcept
{
    return std::int64_t{blk.GetTimeTop()} + event.GetTime();
}

CEvnt* findByIndex(const CBlk& blk, std::uint32_t tick)
{
    const CRealBlk* real = blk.GetRealBlk();
    if (!real) return nullptr;
    return List<CEvnt>::get(real->GetTimePos(tick - std::min(tick, blk.GetTimeTop())));
}

const CEvnt* findFrom(const CBlk& blk, const CEvnt* from, std::uint32_t tick) noexcept
{
    const CRealBlk* real = blk.GetRealBlk();
    if (!real) return nullptr;
    const CEvnt* found = from; // null behind the tail
    for (const CEvnt* e = from ? List<CEvnt>::prev(from) : real->events().tail(); e && songTime(blk, *e) >= tick;
         e = List<CEvnt>::prev(e))
        found = e;
    while (found && songTime(blk, *found) < tick) found = List<CEvnt>::next(found);
    return found;
}
} // namespace

void TrackCursors::chain(CEditor* editor, const LeftOut& leftOut)
{
    m_first.fill(nullptr);
    m_due.clear();
    if (!editor) return;
    std::size_t count = 0;
    for (int track = 0; track < trackCount; ++track) {
        const CTrk* trk = editor->song().trk(track);
        const auto index = static_cast<std::size_t>(track);
        if (!trk || leftOut.tracks[index]) continue;
        CBlk** link = &m_first[index];
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            if (blk == leftOut.takeBlks[index]) continue;
            blk->resetPlayState();
            *link = blk;
            link = &blk->playState().playNext;
            ++count;
        }
    }
    m_due.reserve(count);
    locate(0, 0);
}

template <class Find>
void TrackCursors::place(std::uint32_t tick, std::int64_t step, Find find)
{
    m_due.clear();
    std::uint32_t order = 0;
    for (int track = 0; track < trackCount; ++track) {
        for (CBlk* blk = m_first[static_cast<std::size_t>(track)]; blk; blk = blk->playState().playNext, ++order) {
            auto& state = blk->playState();
            state.pending = find(*blk, state.pending);
            state.playState = state.pending ? state.playing : state.finished;
            if (!state.pending) continue;
            state.playTime = songTime(*blk, *state.pending);
            m_due.push_back({step + (state.playTime - tick), order, track, blk});
        }
    }
    std::make_heap(m_due.begin(), m_due.end(), later);
}

void TrackCursors::locate(std::uint32_t tick, std::int64_t step)
{
    place(tick, step, [tick](const CBlk& blk, const CEvnt*) { return findByIndex(blk, tick); });
}

void TrackCursors::jump(std::uint32_t tick, std::int64_t step)
{
    place(tick, step, [tick](const CBlk& blk, const CEvnt* from) { return findFrom(blk, from, tick); });
}

bool TrackCursors::peek(std::int64_t step, DueEvent& out) const noexcept
{
    if (m_due.empty() || m_due.front().due > step) return false;
    const Entry& entry = m_due.front();
    const auto& state = entry.blk->playState();
    out = {entry.track, static_cast<std::uint32_t>(state.playTime), state.pending};
    return true;
}

void TrackCursors::advance() noexcept
{
    Entry& top = m_due.front();
    auto& state = top.blk->playState();
    state.pending = List<CEvnt>::next(state.pending);
    if (state.pending) {
        const std::int64_t time = std::max(songTime(*top.blk, *state.pending), state.playTime);
        const std::int64_t distance = time - state.playTime;
        state.playTime = time;
        if (distance == 0) return;
        std::pop_heap(m_due.begin(), m_due.end(), later);
        m_due.back().due += distance;
        std::push_heap(m_due.begin(), m_due.end(), later);
    } else {
        state.playState = state.finished;
        std::pop_heap(m_due.begin(), m_due.end(), later);
        m_due.pop_back();
    }
}

} // namespace tessaro
