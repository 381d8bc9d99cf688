// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_rows.h"

#include "core/edit/editor.h"

namespace tessaro {
namespace {

constexpr int lastTrack = 100;

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
    std::vector<TrackRow> rows;
    rows.reserve(lastTrack);
    for (int number = 1; number <= lastTrack; ++number)
        if (const CTrk* trk = editor.song().trk(number)) rows.push_back(makeRow(*trk, number, soloed));
    return rows;
}

} // namespace tessaro
