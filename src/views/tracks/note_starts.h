// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace tessaro {

class CTrk;

/// When the notes of one track begin, in order, and how loud they are; 8 bytes a note. A copy, so that lights can look
/// things up while the song plays, without touching what the feeder reads.
class NoteStarts {
public:
    NoteStarts() = default;
    explicit NoteStarts(const CTrk& track);

    [[nodiscard]] std::uint32_t count() const { return static_cast<std::uint32_t>(m_starts.size()); }
    /// The highest velocity among the notes that begin at `from` or later and before `to`; 0 without one.
    [[nodiscard]] int loudest(std::uint32_t from, std::uint32_t to) const;

private:
    struct Start {
        std::uint32_t tick;
        std::uint8_t velocity;
    };
    std::vector<Start> m_starts;
};

} // namespace tessaro
