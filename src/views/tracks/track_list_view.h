// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

namespace tessaro {

class TrackListModel;

/// The left side of the track pane: the table of tracks with their switches. M and S act on the row with the focus.
class TrackListView : public QTableView {
public:
    static constexpr int headerHeight = 28;

    explicit TrackListView(TrackListModel& table, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    void setRowHeight(int height);
    /// Sets the widths of the narrow columns for the font in use.
    void fitColumns();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool toggleAt(const QPoint& place);

    TrackListModel& m_table;
};

} // namespace tessaro
