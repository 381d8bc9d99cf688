// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaro {

class CEditor;

/// What the list shows of one track.
struct TrackRow {
    int track = 0;          ///< 1 to 100
    std::string name;       ///< bytes as the song holds them
    int port = 0;           ///< from 0
    int channel = 0;        ///< from 0
    int transpose = 0;      ///< semitones
    bool transposes = true; ///< false where the transposition is switched off
    bool solo = false;
    bool mute = false;
    bool record = false;  ///< armed
    bool used = true;     ///< holds blocks
    bool sounding = true; ///< false while mute or another track's solo silences it

    bool operator==(const TrackRow&) const = default;
};

/// Tracks 1 to 100.
[[nodiscard]] std::vector<TrackRow> trackRows(const CEditor& editor);

} // namespace tessaro
