// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"
#include "core/model/evnt.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

/// A sparse index beside a time-sorted event list: some of its events are marked, in the order of the list. A question
/// costs a bisection and a few steps; one that has to walk far leaves marks behind for the next ones. Events come into
/// the list without a word. Marked ones carry a flag, by which the index lets go of them in constant time.
class EvntIndex {
public:
    /// The first event of `list` with a time not less than `time`; null if none.
    [[nodiscard]] CEvnt* lowerBound(const List<CEvnt>& list, std::uint32_t time) noexcept;
    /// The last event of `list` with a time not greater than `time`; null if none.
    [[nodiscard]] CEvnt* lastUpTo(const List<CEvnt>& list, std::uint32_t time) noexcept;

    /// To be called before an event is unlinked or its time changes.
    void release(CEvnt* e) noexcept
    {
        if (e->isMarked()) moveMark(e);
    }
    /// To be called before all times change.
    void clear() noexcept;
    /// The same when all events go anyway.
    void forget() noexcept { m_marks.clear(); }

private:
    /// Events from mark to mark: no more than twice as many once a question has passed there.
    static constexpr std::size_t stride = 32;

    struct Mark {
        std::uint32_t time;
        CEvnt* event;
    };
    using Marks = std::vector<Mark>;

    template <class Passes>
    CEvnt* walk(const List<CEvnt>& list, Marks::iterator behind, Passes passes) noexcept;
    void moveMark(CEvnt* e) noexcept;
    void add(Marks::iterator at, const Marks& fresh) noexcept;

    Marks m_marks; ///< times never decreasing
};

} // namespace tessaro
