// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QScrollBar;
class QSplitter;
class QStackedWidget;

namespace tessaro {

class EmptyHint;
class SongOverview;
class CTrkPramView;
class TrackListModel;

/// The track list and the overview of the song side by side, scrolled as one. Beside the tracks of a song without notes
/// stands what to do next.
class TrackPane : public QWidget {
public:
    static constexpr int leastRowHeight = 28;
    static constexpr int mostRowHeight = 44;

    TrackPane(TrackListModel& table, EmptyHint* hint, QWidget* parent = nullptr);

    void showHint(bool on);

    [[nodiscard]] SongOverview& overview() const { return *m_overview; }
    [[nodiscard]] CTrkPramView& list() const { return *m_list; }
    [[nodiscard]] QSplitter& splitter() const { return *m_splitter; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Few tracks share the height; many scroll.
    void fitRows();

    // Children of the widget.
    QSplitter* m_splitter;
    CTrkPramView* m_list;
    QStackedWidget* m_right;
    EmptyHint* m_hint;
    SongOverview* m_overview;
    QWidget* m_barColumn; ///< the scroll bar below the height of the ruler
    QScrollBar* m_bar;
};

} // namespace tessaro
