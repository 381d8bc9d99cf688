// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/cell_find.h"

#include "views/list/evnt_rows.h"
#include "views/text/ui_text.h"

#include <array>

namespace tessaro {
namespace {

constexpr int firstColumn = static_cast<int>(ListColumn::kind);

} // namespace

std::optional<FoundCell> findCell(const QString& wanted, const EvntRows& rows, const EvntCells& cells,
                                  const UiText& text, std::optional<std::size_t> from, bool backwards)
{
    const std::size_t count = rows.count();
    if (wanted.isEmpty() || count == 0) return std::nullopt;
    const auto says = [&wanted](const QString& cell) { return cell.contains(wanted, Qt::CaseInsensitive); };
    std::array<bool, evntKinds> isMeant{};
    for (std::size_t kind = 0; kind < isMeant.size(); ++kind)
        isMeant[kind] = says(kindName(static_cast<EvntKind>(kind), text));
    const std::size_t start = from.value_or(backwards ? 0 : count - 1);
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t row = (start + (backwards ? count - step : step)) % count;
        const CEvnt& event = rows.event(row);
        if (isMeant[static_cast<std::size_t>(kindOf(event))]) return FoundCell{row, ListColumn::kind};
        for (int i = firstColumn + 1; i < listColumns; ++i)
            if (const auto column = static_cast<ListColumn>(i); says(cells.shown(event, rows.time(row), column)))
                return FoundCell{row, column};
    }
    return std::nullopt;
}

} // namespace tessaro
