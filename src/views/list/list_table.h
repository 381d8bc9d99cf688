// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/cell_change.h"

#include <QTableView>

namespace tessaro {

struct ListSettings;
class UiText;

/// How the event list looks as a table: its columns, whose widths are kept in the settings, its font and its rows.
/// Borrows settings and texts; without settings all is as usual and nothing is kept.
class ListTable : public QTableView {
public:
    ListTable(ListSettings* settings, const UiText& text, QWidget* parent);

    void retranslate();

protected:
    /// Before anything else; the model has all columns.
    void begin(QAbstractItemModel& model);
    /// Events of the master track have less to say.
    void showColumnsOf(int track);
    void changeEvent(QEvent* event) override;

private:
    void readSettings();
    void sizeRows();

    ListSettings* m_settings;
    const UiText& m_text;
};

} // namespace tessaro
