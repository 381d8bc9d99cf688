// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "views/editors/evnt_selection.h"
#include "views/editors/view_parts.h"
#include "views/list/evnt_cells.h"
#include "views/list/fault_label.h"
#include "views/list/list_edits.h"
#include "views/list/list_model.h"

#include <QTableView>
#include <QTimer>

class QLineEdit;
class QMenu;

namespace tessaro {

/// The events of one track as a table to type into. A cell is opened by a double click, Enter, F2 or a figure; what is
/// typed there goes to all selected rows when the row is one of them, `+` and `-` before a number change the value that
/// is there, and a place moves all by the same distance. What cannot be read is said below the line, which stays open.
/// A click selects a row, with Shift up to here, with Ctrl one more. User interface thread.
class CListVw : public QTableView, public HintObserver {
public:
    CListVw(const ViewParts& parts, int track, QWidget* parent);
    ~CListVw() override;

    /// Rows, the selection or what can be done have changed.
    std::function<void()> onChanged;

    [[nodiscard]] int track() const { return m_track; }
    void setTrack(int track);
    [[nodiscard]] const RowFilter& filter() const { return m_filter; }
    void setFilter(const RowFilter& filter);
    [[nodiscard]] const EvntRows& rows() const { return m_model.rows(); }
    [[nodiscard]] const EvntCells& cells() const { return m_cells; }
    [[nodiscard]] ListEdits& edits() { return m_edits; }

    [[nodiscard]] bool can(ViewCommand command) const;
    void run(ViewCommand command);
    [[nodiscard]] const EvntSelection& selection() const { return m_selection; }
    void select(std::span<const EvntRef> refs);

    /// The kinds of events that can be inserted, as actions.
    void fillInsertMenu(QMenu& menu);
    /// At the place of the current row, or where the song stands; then opens the new row.
    void insert(EvntDraft draft);
    /// Where a new event goes.
    [[nodiscard]] std::uint32_t insertTime() const;
    [[nodiscard]] std::uint8_t channel() const;

    /// Goes to the next row that has the text in a cell, in a circle; false when there is none.
    bool find(const QString& text, bool backwards);
    void goTo(const EvntRef& ref);
    /// The row that sounds gets a mark.
    void setPosition(std::uint32_t tick, bool follow);
    [[nodiscard]] int playRow() const { return m_playRow; }
    void songReplaced();
    void retranslate();

    // For the editors of the cells.

    [[nodiscard]] QString cellText(std::size_t row, ListColumn column) const { return m_model.cellText(row, column); }
    /// Whether the text can be taken; says why not otherwise.
    bool isFine(const QString& text, const QModelIndex& index, QLineEdit& line);
    void endFault() { m_fault.end(); }
    /// Nothing for what cannot be read.
    void take(const QString& text, const QModelIndex& index);
    /// Opens the next cell of the row that can be typed into.
    void openNext(bool backwards);

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
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void readSettings();
    void refresh();
    void restoreCurrent();
    void choose(int row, Qt::KeyboardModifiers keys);
    void selectRows(int from, int to, bool keep);
    void setCurrent(int row, int column);
    [[nodiscard]] std::optional<std::size_t> currentRow() const;
    void hearCurrent();
    void hush();
    void selectionChanged();
    void openCell(const QModelIndex& index);
    [[nodiscard]] int firstValueColumn(const CEvnt& event) const;
    [[nodiscard]] std::vector<EvntRef> meant(std::size_t row) const;
    [[nodiscard]] bool isLocked() const { return m_parts.isLocked && m_parts.isLocked(); }
    void paste();
    void nudge(ViewCommand command);
    void markStale(int code, const CEditor& editor);
    void sizeRows();
    void hideColumns();

    const ViewParts m_parts;
    EvntCells m_cells;
    ListEdits m_edits;
    EvntSelection m_selection;
    EvntSelection m_current; ///< the event of the current row
    ListModel m_model;
    RowFilter m_filter;
    QTimer m_late;     ///< takes changes in that no end of a step told
    QTimer m_hush;     ///< ends the note that is heard
    QTimer m_collapse; ///< a click on one of several selected rows was no double one
    FaultLabel m_fault;
    int m_track;
    int m_anchor = 0; ///< row from which Shift selects
    int m_playRow = -1;
    std::uint32_t m_position = 0;
    bool m_stale = true;
    bool m_isHeard = false; ///< a note that we began
    bool m_restoring = false;
    bool m_follows = false; ///< the current row comes into sight after the next change
};

} // namespace tessaro
