// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

class CEvnt;
class CRealBlk;

/// A thumbnail of a real block's notes: for each of at most 65,536 equal spans of ticks, which pitches sound in it, in
/// steps of two semitones. Made by one walk over the events, which may be split; drawn at any zoom from then on without
/// a look at the events. Ticks count from the block's top. The block must not change until the walk is over.
class BlkPicture {
public:
    static constexpr std::uint32_t leastSpan = 24; ///< ticks
    static constexpr std::size_t mostSpans = 65536;

    explicit BlkPicture(const CRealBlk& real);

    /// Walks on over at most `budget` events, which becomes less. True once all have been seen.
    bool build(std::size_t& budget);

    /// The pitches of all notes: bit n for 2 n and 2 n + 1.
    [[nodiscard]] std::uint64_t pitches() const { return m_pitches; }
    /// Those that sound from `from` up to, but without, `to`.
    [[nodiscard]] std::uint64_t pitches(std::uint32_t from, std::uint32_t to) const;

private:
    void add(const CEvnt& note);
    [[nodiscard]] std::size_t spanAt(std::uint32_t tick) const;

    std::vector<std::uint64_t> m_spans;
    std::uint64_t m_pitches = 0;
    std::uint32_t m_span = leastSpan;       ///< ticks
    const CEvnt* m_next;                    ///< the event to look at; null behind the last
    std::array<std::size_t, 64> m_filled{}; ///< for each bit, the span up to which it is known
};

} // namespace tessaro
