// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/evnt_kind.h"

#include <vector>

namespace tessaro {

enum class ListColumn { place, kind, channel, value1, value2, gate, data };
inline constexpr int listColumns = 7;

/// What a cell is to become: a value, or more or less of the value that it has.
struct CellChange {
    CellForm form = CellForm::none;
    bool isRelative = false;
    /// By the form: a number, microseconds a quarter note (beats a minute where relative), both bytes of a pair, the
    /// bytes of a signature or of a payload.
    double number = 0;
    std::vector<std::uint8_t> bytes;
};

/// The range of what is a number; texts show it with `shift` added.
struct CellRange {
    int lowest;
    int highest;
    int shift = 0;
};
[[nodiscard]] CellRange rangeOf(CellForm form, ListColumn column) noexcept;
/// What is a number, as the event holds it.
[[nodiscard]] int rawNumber(const _EDT_EVNT& rec, ListColumn column, CellForm form) noexcept;

/// Writes a change into a draft of an event that has this form in the column; what is out of range stops at the range.
/// False when nothing changes.
bool applyChange(const CellChange& change, ListColumn column, EvntDraft& draft);

} // namespace tessaro
