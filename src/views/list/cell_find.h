// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/evnt_cells.h"

#include <cstddef>
#include <optional>

namespace tessaro {

class EvntRows;

struct FoundCell {
    std::size_t row;
    ListColumn column;
};

/// The next row that says a text in a cell but that of the place, from the row behind `from` or before it, in a circle;
/// capitals are as small letters. From an end where `from` is none.
[[nodiscard]] std::optional<FoundCell> findCell(const QString& wanted, const EvntRows& rows, const EvntCells& cells,
                                                const UiText& text, std::optional<std::size_t> from, bool backwards);

} // namespace tessaro
