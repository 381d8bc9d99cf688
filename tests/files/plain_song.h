// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaro {
class CEditor;
}

namespace tessaro::test {

using Bytes = std::vector<std::uint8_t>;

struct PlainEvent {
    std::uint32_t time = 0;
    std::uint32_t gate = 0;
    std::uint8_t status = 0;
    std::uint8_t post1 = 0;
    std::uint8_t post2 = 0;
    std::uint8_t metaType = 0;
    Bytes data;
    bool operator==(const PlainEvent&) const = default;
};

struct PlainBlock {
    std::uint32_t top = 0;
    std::uint32_t end = 0;
    std::vector<PlainEvent> events;
    bool operator==(const PlainBlock&) const = default;
};

struct PlainTrack {
    unsigned type = 0;
    unsigned port = 0;
    unsigned channel = 0;
    bool transposes = true;
    std::string name;
    std::vector<PlainBlock> blocks;
    bool operator==(const PlainTrack&) const = default;
};

/// What a file gave: a song in plain data, by whatever way it was read.
struct PlainSong {
    unsigned kind = 0;
    bool loaded = false;
    bool partial = false;
    bool wraps = false; ///< times passed 32 bits, so that their order is lost
    int complaints = 0; ///< times that message 912 was shown
    std::vector<PlainTrack> tracks;
};

/// The tracks of the editor's song.
std::vector<PlainTrack> plainTracks(const CEditor& editor);
/// The first difference of two songs in words; empty if there is none.
std::string difference(const PlainSong& expected, const PlainSong& actual);

} // namespace tessaro::test
