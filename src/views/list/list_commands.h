// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/list/evnt_kind.h"

#include <cstdint>

class QMenu;

namespace tessaro {

class CListVw;

/// What can be asked of the event list: commands on its selection and its current row, and new events. User interface
/// thread; borrows all.
class ListCommands {
public:
    ListCommands(const ViewParts& parts, CListVw& view) : m_parts(parts), m_view(view) {}

    [[nodiscard]] bool can(ViewCommand command) const;
    void run(ViewCommand command);

    /// The kinds of events that can be inserted, as actions.
    void fillInsertMenu(QMenu& menu);
    /// Then opens the new row.
    void insert(EvntDraft draft);
    /// Where a new event goes: the place of the current row, or where the song stands.
    [[nodiscard]] std::uint32_t insertTime() const;
    [[nodiscard]] std::uint8_t channel() const;

private:
    [[nodiscard]] bool isLocked() const { return m_parts.isLocked && m_parts.isLocked(); }
    [[nodiscard]] std::vector<EvntRef> selected() const;
    void cut();
    void paste();
    void nudge(ViewCommand command);
    void showInsertMenu();

    const ViewParts m_parts;
    CListVw& m_view;
};

} // namespace tessaro
