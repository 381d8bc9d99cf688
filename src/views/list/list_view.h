// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "views/editors/view_parts.h"
#include "views/list/evnt_cells.h"
#include "views/list/list_commands.h"
#include "views/list/list_edits.h"
#include "views/list/list_model.h"
#include "views/list/list_table.h"
#include "views/list/row_choice.h"

#include <QTimer>

namespace tessaro {

class CellEditors;

/// The events of one track as a table to type into. A cell is opened by a double click, by its commands or by a figure;
/// what is typed there goes to all selected rows when the row is one of them, `+` and `-` before a number change the
/// value that is there, and a place moves all by the same distance. A click selects a row, with Shift up to here, with
/// Ctrl one more. Rows are built anew at the end of a step, when they are in sight. User interface thread.
class CListVw : public ListTable, public HintObserver {
public:
    CListVw(const ViewParts& parts, int track, QWidget* parent);
    ~CListVw() override;

    /// Rows, the selection or what can be done have changed.
    std::function<void()> onChanged;
    /// Other rows are left out than before.
    std::function<void(const RowFilter&)> onFilter;

    [[nodiscard]] int track() const { return m_track; }
    void setTrack(int track);
    [[nodiscard]] const RowFilter& filter() const { return m_filter; }
    void setFilter(const RowFilter& filter);
    [[nodiscard]] const EvntRows& rows() const { return m_model.rows(); }
    [[nodiscard]] const EvntCells& cells() const { return m_cells; }
    [[nodiscard]] ListEdits& edits() { return m_edits; }
    [[nodiscard]] ListCommands& commands() { return m_commands; }
    [[nodiscard]] QString cellText(std::size_t row, ListColumn column) const { return m_model.cellText(row, column); }
    [[nodiscard]] bool isLocked() const { return m_parts.isLocked && m_parts.isLocked(); }

    [[nodiscard]] const EvntSelection& selection() const { return m_choice.selection(); }
    void select(std::span<const EvntRef> refs);
    void selectAllRows();
    void invertSelection();
    /// Selects an event and brings it into sight; a kind that is left out is shown again.
    void goTo(const EvntRef& ref);
    /// Goes to the next row that has the text in a cell, in a circle; false when there is none.
    bool find(const QString& text, bool backwards);

    /// Opens a cell that can be typed into.
    void openCell(const QModelIndex& index);
    /// Opens the first value of the current row.
    void openValue();
    /// The current row comes into sight after what this does.
    template <class Edit>
    void keepInSight(Edit&& edit)
    {
        m_follows = true;
        edit();
        m_follows = false;
    }

    /// The row that sounds gets a mark.
    void setPosition(std::uint32_t tick, bool follow);
    [[nodiscard]] int playRow() const { return m_playRow; }
    void songReplaced();
    void retranslate();

    /// The song is another one than the rows say.
    [[nodiscard]] bool isStale() const { return m_stale; }
    /// Rows of the song as it stands now; not while work goes on, when it may stand between two states.
    void catchUp();
    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void showCurrent();
    void markStale(int code, const CEditor& editor);
    [[nodiscard]] bool isInSight() const;
    void choose(int row, Qt::KeyboardModifiers keys);
    void tellChanged();
    void hearCurrent();
    void hush();

    const ViewParts m_parts;
    EvntCells m_cells;
    ListEdits m_edits;
    ListModel m_model;
    RowChoice m_choice;
    ListCommands m_commands;
    CellEditors* m_editors; ///< child of the table
    RowFilter m_filter;
    QTimer m_late;     ///< takes changes in that no end of a step told
    QTimer m_hush;     ///< ends the note that is heard
    QTimer m_collapse; ///< a click on one of several selected rows was no double one
    int m_track;
    int m_playRow = -1;
    std::uint32_t m_position = 0;
    bool m_stale = true;
    bool m_isHeard = false; ///< a note that we began
    bool m_follows = false; ///< the current row comes into sight after the next change
};

} // namespace tessaro
