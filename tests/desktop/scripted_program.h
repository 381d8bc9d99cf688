// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro::test {

/// The whole window program in simulated time, with a song, led by lines on its standard input. Each is answered by one
/// line; the end of the input ends the program.
///
///   fill TRACK NOTES         a block of so many notes
///   blks                     tells all blocks of tracks 1 to 100, with their events
///   copyBlks                 copies these
///   pasteBlks TRACK TIME
///   copyEvnts TRACK          the events of its first block; tells them
///   pasteEvnts TRACK TIME    into its first block, or a new one; tells what has come in
///
/// Its arguments: anything, and the song.
int runScripted(int argc, char** argv);

} // namespace tessaro::test
