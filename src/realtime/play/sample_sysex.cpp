// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/sample_sysex.h"

#include "core/edit/song.h"
#include "realtime/play/direct_sender.h"
#include "realtime/play/event_player.h"
#include "realtime/play/track_table.h"

#include <algorithm>

namespace tessaro {

SampleSysex::SampleSysex(const Song& song, const TrackTable& tracks)
{
    for (int number = 0; number < trackCount; ++number) {
        const CTrk* trk = song.trk(number);
        if (!trk) continue;
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            const CRealBlk* real = blk->GetRealBlk();
            for (const CEvnt* e = real ? real->events().head() : nullptr; e; e = List<CEvnt>::next(e))
                if (e->GetStatus() == status::sysex && isSampleSysex(e->payload()))
                    m_dumps.push_back({std::int64_t{blk->GetTimeTop()} + e->GetTime(), e, tracks.port(number)});
        }
    }
    std::stable_sort(m_dumps.begin(), m_dumps.end(), [](const Dump& a, const Dump& b) { return a.time < b.time; });
}

std::size_t SampleSysex::byteCount() const noexcept
{
    std::size_t count = 0;
    for (const Dump& dump : m_dumps) count += dump.event->payload().size() + 1;
    return count;
}

void SampleSysex::send(DirectSender& sender) const
{
    for (const Dump& dump : m_dumps) sender.songSysex(dump.port, status::sysex, dump.event->payload());
}

} // namespace tessaro
