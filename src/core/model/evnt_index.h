// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"
#include "core/model/evnt.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

/// A sparse index beside a time-sorted event list: every so many events one mark. Built as far as
/// a question needs it, cut back where the list changes; an answer costs a bisection and a few steps.
class EvntIndex {
public:
    /// The first event of `list` with a time not less than `time`; null if none.
    [[nodiscard]] CEvnt* lowerBound(const List<CEvnt>& list, std::uint32_t time);

    /// To be called before an event of this time is linked, unlinked or moved.
    void changed(std::uint32_t time) noexcept;
    void clear() noexcept { m_marks.clear(); }

private:
    static constexpr std::size_t stride = 64;

    struct Mark {
        std::uint32_t time;
        CEvnt* event;
    };
    void extend(const List<CEvnt>& list, std::uint32_t time);

    std::vector<Mark> m_marks; ///< head first, `stride` events apart, times never decreasing
};

} // namespace tessaro
