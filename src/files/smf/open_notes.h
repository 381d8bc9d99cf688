// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/evnt.h"
#include "files/smf/smf_clock.h"
#include "files/smf/smf_target.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

/// The notes of a chunk whose note-off has not come yet. One pass finds the pairs that each note would find
/// if it looked ahead on its own, in the order of the note-ons:
///
/// - A note-off goes to the earliest open note of its channel and pitch, and is then used up: for every
///   note that looks later it reads as one of pitch 0.
/// - Hence it ends the open notes of pitch 0 on its channel too that began after the note which took it.
/// - A note-off of pitch 0 is never used up: it ends all open notes of pitch 0 on its channel.
///
/// A note that ends gets its gate time, at least 1, and lengthens its block as if that had been done when the
/// note began: not any more once the block's end was set in between.
class OpenNotes {
public:
    /// `targets` are indexed by channel, and are those of the chunk whose notes are open.
    explicit OpenNotes(std::span<SmfTarget, 16> targets);

    [[nodiscard]] bool empty() const noexcept { return m_count == 0; }
    /// Takes a note that has its time, status and pitch. Throws bad_alloc.
    void open(CEvnt& note, const SmfClock& now);
    /// A note-off.
    void close(std::uint8_t channel, std::uint8_t pitch, const SmfClock& now);
    /// Ends all notes that are still open.
    void closeAll(const SmfClock& now);

private:
    using Index = std::uint32_t;
    static constexpr Index none = 0xFFFFFFFF;

    struct Note {
        CEvnt* event;          ///< null while the slot is free
        Index next;            ///< in the queue, stack or free list
        std::uint32_t serial;  ///< in the order of the note-ons
        std::uint32_t rest;    ///< of the clock at the note-on
        std::uint32_t endsSet; ///< of the target at the note-on
    };
    struct Queue {
        Index first = none;
        Index last = none;
    };

    Queue& queue(std::uint8_t channel, std::uint8_t pitch) { return m_queues[channel * 256U + pitch]; }
    void closeZeros(std::uint8_t channel, std::uint32_t afterSerial, const SmfClock& now);
    void finish(Index index, const SmfClock& now);

    std::span<SmfTarget, 16> m_targets;
    std::vector<Note> m_notes;
    Index m_free = none;
    std::uint32_t m_serial = 0;
    std::size_t m_count = 0;
    std::array<Queue, 16U * 256U> m_queues; ///< by channel and pitch, earliest first
    std::array<Index, 16> m_zeros;          ///< stacks of the notes of pitch 0, latest first
};

} // namespace tessaro
