// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/armed_tracks.h"

#include "core/edit/editor.h"
#include "core/edit/undo_scope.h"

namespace tessaro::cli {

namespace {

constexpr std::size_t channels = 16;

/// Without the meta events that every take begins with.
std::size_t eventsOf(const CBlk& blk)
{
    std::size_t count = 0;
    for (const CEvnt* event = blk.GetRealBlk()->events().head(); event; event = List<CEvnt>::next(event))
        count += event->GetStatus() != status::metaEvent ? 1U : 0U;
    return count;
}

} // namespace

ArmedTracks::ArmedTracks(CEditor& editor) : m_editor(editor)
{
    for (int number = 1; number < trackCount; ++number) {
        const CTrk& trk = *editor.song().trk(number);
        const bool arm = trk.IsEmpty() && m_tracks.size() < channels;
        editor.SetTrkRec(number, arm);
        if (!arm) continue;
        const std::uint8_t before = trk.GetCh();
        editor.SetTrkCh(number, static_cast<std::uint8_t>(m_tracks.size()));
        m_tracks.push_back({number, before});
    }
}

bool ArmedTracks::takesAllChannels() const noexcept
{
    return m_tracks.size() == channels || m_tracks.size() == 1; // a single one takes them all
}

std::string ArmedTracks::list() const
{
    std::string text;
    for (std::size_t i = 0; i < m_tracks.size();) {
        std::size_t last = i;
        while (last + 1 < m_tracks.size() && m_tracks[last + 1].number == m_tracks[last].number + 1) ++last;
        text += (text.empty() ? "" : ", ") + std::to_string(m_tracks[i].number);
        if (last > i) text += '-' + std::to_string(m_tracks[last].number);
        i = last + 1;
    }
    return text;
}

TakeSummary ArmedTracks::finish()
{
    TakeSummary summary;
    for (const Track& track : m_tracks) {
        m_editor.SetTrkRec(track.number, false);
        const CBlk* take = m_editor.song().trk(track.number)->blocks().head();
        const std::size_t events = take ? eventsOf(*take) : 0;
        summary.events += events;
        if (events > 0)
            ++summary.tracks;
        else
            clear(track);
    }
    return summary;
}

void ArmedTracks::clear(const Track& track)
{
    const POSITION trk = m_editor.GetTrkPos(track.number);
    if (const POSITION blk = m_editor.GetHeadBlkPos(trk)) {
        const UndoScope step(m_editor, {});
        m_editor.BlkDel(trk, blk);
    }
    m_editor.SetTrkCh(trk, track.channelBefore);
}

} // namespace tessaro::cli
