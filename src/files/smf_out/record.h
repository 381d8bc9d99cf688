// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace tessaro {

class CEvnt;

/// One event on its way out of the song: a copy of what a message needs, at its absolute tick. Events with a body lend
/// it; the record borrows the event. A packed kind stays one record until its stage.
struct SmfRecord {
    std::uint32_t time = 0;
    std::uint32_t gate = 0;
    const CEvnt* event = nullptr; ///< of metas, system exclusives and notes that carry one
    std::uint8_t status = 0;
    std::uint8_t post1 = 0;
    std::uint8_t post2 = 0;
    std::uint8_t post3 = 0;
    std::uint8_t post4 = 0;

    bool operator==(const SmfRecord&) const = default;
};

/// The working list of export, sorted by time between the stages. What order equal times have is each stage's rule.
using RecordList = std::vector<SmfRecord>;

[[nodiscard]] inline bool isEarlier(const SmfRecord& a, const SmfRecord& b) noexcept { return a.time < b.time; }

/// Puts a pitch that left 0 to 127 back by octaves.
[[nodiscard]] constexpr std::uint8_t foldPitch(int pitch) noexcept
{
    while (pitch < 0) pitch += 12;
    while (pitch > 127) pitch -= 12;
    return static_cast<std::uint8_t>(pitch);
}

/// Sorts by time; records of one time keep their order. A list that is made of a few runs in order, as blocks put
/// one behind the other are, takes linear time for each doubling of the runs.
void sortByTime(RecordList& list);

} // namespace tessaro
