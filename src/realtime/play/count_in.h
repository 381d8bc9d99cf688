// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

namespace tessaro {

class CEditor;
class QueueWriter;

/// The clicks before a run, and how far they have come. Set up by the user interface thread before the feeder starts,
/// followed by the feeder, read by both.
class CountIn {
public:
    /// Queues `bars` bars of beats and what the bar of `tick` holds before it. Nothing else is in the queue.
    void queue(QueueWriter& queue, const CEditor& editor, std::uint32_t tick, unsigned bars);
    /// The queue is about to play; it holds `waiting` records, those of the count-in included.
    void begin(unsigned waiting) noexcept;
    /// False once the last click has been played; `waiting` are the records left in the queue.
    bool follow(unsigned waiting) noexcept;
    void clear() noexcept;

    /// What the display shows: a count that rises to 0 with the beats; none when no count-in is under way.
    [[nodiscard]] std::optional<int> shown() const noexcept;

private:
    static constexpr int none = 1;

    unsigned m_records = 0; ///< of the count-in
    unsigned m_start = 0;
    std::atomic<int> m_shown{none};
};

} // namespace tessaro
