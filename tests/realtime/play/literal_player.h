// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"

#include <cstdint>
#include <vector>

namespace tessaro::test {

/// Plays a song the long way: every tick counts down in every block and in every pending note-off. What it tells is
/// what the engine has to send, in order. No filters, all tracks on.
class LiteralPlayer {
public:
    struct Out {
        std::uint32_t tick;
        int port;
        std::vector<std::uint8_t> bytes;
        bool operator==(const Out&) const = default;
    };

    LiteralPlayer(const CEditor& editor, std::uint32_t from, std::uint32_t loopStart, std::uint32_t loopEnd);
    std::vector<Out> steps(unsigned count);

private:
    struct Block {
        int track;
        std::uint32_t top;
        std::vector<_EDT_EVNT> events;
        std::size_t next = 0;
        std::int64_t wait = 0;
        bool finished = false;
    };
    struct NoteOff {
        std::int64_t wait;
        Out out;
    };

    void place(std::uint32_t tick);
    void stepTracks();
    void handle(int track, const _EDT_EVNT& event);
    void put(int track, std::uint8_t status, std::vector<std::uint8_t> data);

    const CEditor& m_editor;
    std::vector<Block> m_blocks;
    std::vector<NoteOff> m_notes;
    std::vector<Out> m_out;
    std::uint32_t m_now;
    std::uint32_t m_bias = 1;
    std::uint32_t m_loopStart;
    std::uint32_t m_loopEnd;
};

} // namespace tessaro::test
