// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_rows.h"

#include "core/edit/editor.h"

namespace tessaro {
namespace {

constexpr int lastTrack = 100;
constexpr int leastRows = 16;

TrackRow makeRow(const CTrk& trk, int number, bool soloed)
{
    TrackRow row;
    row.track = number;
    row.name = trk.GetName();
    row.port = trk.GetPort();
    row.channel = trk.GetCh();
    row.transpose = trk.GetTrans();
    row.transposes = trk.GetTransEnable();
    row.solo = trk.GetSolo();
    row.mute = trk.GetMute();
    row.record = trk.GetRec();
    row.used = !trk.IsEmpty();
    row.sounding = soloed ? row.solo : !row.mute;
    return row;
}

} // namespace

std::vector<TrackRow> trackRows(const CEditor& editor)
{
    const bool soloed = editor.IsSoloExist() || editor.IsSoloExistStyle();
    const auto used = [&editor](int number) {
        const CTrk* trk = editor.song().trk(number);
        return trk && !trk->IsEmpty();
    };
    int last = lastTrack;
    while (last > 0 && !used(last)) --last;
    std::vector<TrackRow> rows;
    for (int number = 1; number <= lastTrack; ++number)
        if (number <= leastRows || number == last + 1 || used(number))
            if (const CTrk* trk = editor.song().trk(number)) rows.push_back(makeRow(*trk, number, soloed));
    return rows;
}

} // namespace tessaro
