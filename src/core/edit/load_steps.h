// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

class CRealBlk;
class MeasMap;
class Song;

/// The steps between what a reader has read and the song that the user sees. Each is linear in the song.
/// Main thread only.
namespace load_steps {

/// Format 1: the first block of each track becomes whole measures, from the one that holds its first event
/// through the one that holds its end; the events keep their places in the song.
void snapFirstBlks(Song& song, const MeasMap& meas);
/// Native: the master block ends with its last event.
void trimMaster(Song& song);
/// Appends each system exclusive continuation to the start before it in its block, and deletes it.
void packSysex(Song& song);
/// Deletes all events that refer to score entries.
void deleteScoreLinks(Song& song);
void deleteScoreLinks(CRealBlk& real);

} // namespace load_steps
} // namespace tessaro
