// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaro {
class CEditor;
}

namespace tessaro::cli {

/// What a take has left.
struct TakeSummary {
    std::size_t events = 0;
    std::size_t tracks = 0;
};

/// The tracks of a take: the first unused ones of a song, armed, one for each MIDI channel as far as they go.
class ArmedTracks {
public:
    explicit ArmedTracks(CEditor& editor);

    [[nodiscard]] bool empty() const noexcept { return m_tracks.empty(); }
    [[nodiscard]] bool takesAllChannels() const noexcept;
    /// As "1-16" or "3, 7-21".
    [[nodiscard]] std::string list() const;
    /// Behind the take: disarms, and leaves the tracks on which nothing came in as they were.
    TakeSummary finish();

private:
    struct Track {
        int number;
        std::uint8_t channelBefore;
    };
    void clear(const Track& track);

    CEditor& m_editor;
    std::vector<Track> m_tracks;
};

} // namespace tessaro::cli
