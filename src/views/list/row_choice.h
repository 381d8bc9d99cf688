// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/evnt_selection.h"
#include "views/list/evnt_rows.h"

#include <Qt>

#include <optional>
#include <span>

namespace tessaro {

/// The rows that are selected, and the current one. Both are kept as events, so that they stay what they are while rows
/// come and go. Borrows the rows; these have to be true where a row is asked for.
class RowChoice {
public:
    explicit RowChoice(const EvntRows& rows) : m_rows(rows) {}

    [[nodiscard]] const EvntSelection& selection() const { return m_selection; }
    [[nodiscard]] bool isSelected(std::size_t row) const { return m_selection.contains(m_rows.ref(row)); }
    /// Nothing when it is not among the rows.
    [[nodiscard]] std::optional<std::size_t> current() const;
    /// From where Shift selects.
    [[nodiscard]] std::size_t anchor() const { return m_anchor; }

    /// As a click does: this row alone, with Shift all from the anchor on, with Ctrl this one too or no longer.
    void choose(std::size_t row, Qt::KeyboardModifiers keys);
    /// What is selected stays.
    void setCurrent(std::size_t row);
    void selectRows(std::size_t first, std::size_t last);
    /// The first of these becomes the current row.
    void select(std::span<const EvntRef> refs);
    void deselect() { m_selection.clear(); }
    void invert();
    /// Nothing is selected or current.
    void clear();

    /// To be told every hint.
    void follow(int code, const CEditor& editor);
    /// The rows are built anew. Where the current one was comes another when it has gone.
    void rowsChanged();

private:
    void makeCurrent(std::size_t row);

    const EvntRows& m_rows;
    EvntSelection m_selection;
    EvntSelection m_current;          ///< one event at most
    std::optional<std::size_t> m_row; ///< where it was
    std::size_t m_anchor = 0;
};

} // namespace tessaro
