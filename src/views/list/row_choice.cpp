// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/row_choice.h"

#include <algorithm>

namespace tessaro {

std::optional<std::size_t> RowChoice::current() const
{
    const std::vector<EvntRef> current = m_current.inOrder();
    return current.empty() ? std::nullopt : m_rows.find(current.front());
}

void RowChoice::makeCurrent(std::size_t row)
{
    m_current.clear();
    m_current.add(m_rows.ref(row));
    m_row = row;
}

void RowChoice::setCurrent(std::size_t row)
{
    makeCurrent(row);
    m_anchor = row;
}

void RowChoice::choose(std::size_t row, Qt::KeyboardModifiers keys)
{
    if (!(keys & Qt::ControlModifier)) m_selection.clear();
    if (keys & Qt::ShiftModifier) {
        makeCurrent(row);
        m_anchor = std::min(m_anchor, m_rows.count() - 1);
        selectRows(std::min(m_anchor, row), std::max(m_anchor, row));
        return;
    }
    setCurrent(row);
    m_selection.toggle(m_rows.ref(row));
}

void RowChoice::selectRows(std::size_t first, std::size_t last)
{
    for (std::size_t row = first; row <= last; ++row) m_selection.add(m_rows.ref(row));
}

void RowChoice::select(std::span<const EvntRef> refs)
{
    m_selection.set(refs);
    if (refs.empty()) return;
    if (const auto row = m_rows.find(refs.front())) setCurrent(*row);
}

void RowChoice::invert()
{
    for (std::size_t row = 0; row < m_rows.count(); ++row) m_selection.toggle(m_rows.ref(row));
}

void RowChoice::clear()
{
    m_selection.clear();
    m_current.clear();
    m_row.reset();
}

void RowChoice::follow(int code, const CEditor& editor)
{
    m_current.follow(code, editor);
    m_selection.follow(code, editor);
}

void RowChoice::rowsChanged()
{
    const std::optional<std::size_t> row = current() ? current() : m_row;
    if (row && m_rows.count() != 0) setCurrent(std::min(*row, m_rows.count() - 1));
}

} // namespace tessaro
