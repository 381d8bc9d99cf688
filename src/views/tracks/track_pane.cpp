// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_pane.h"

#include "views/tracks/song_overview.h"
#include "views/tracks/track_list_model.h"
#include "views/tracks/trk_pram_view.h"
#include "views/widgets/empty_hint.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace tessaro {

TrackPane::TrackPane(TrackListModel& table, EmptyHint* hint, QWidget* parent)
    : QWidget(parent)
    , m_splitter(new QSplitter(Qt::Horizontal, this))
    , m_list(new CTrkPramView(table))
    , m_right(new QStackedWidget)
    , m_hint(hint)
    , m_overview(new SongOverview)
    , m_barColumn(new QWidget(this))
    , m_bar(new QScrollBar(Qt::Vertical, m_barColumn))
{
    m_splitter->addWidget(m_list);
    m_right->addWidget(m_overview);
    m_right->addWidget(m_hint);
    m_splitter->addWidget(m_right);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    m_list->setMinimumWidth(240);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(m_barColumn);
    auto* column = new QVBoxLayout(m_barColumn);
    column->setContentsMargins(0, CTrkPramView::headerHeight, 0, 0);
    column->addWidget(m_bar);

    QScrollBar* inner = m_list->verticalScrollBar();
    connect(inner, &QScrollBar::rangeChanged, m_bar, [this, inner](int low, int high) {
        m_bar->setRange(low, high);
        m_bar->setPageStep(inner->pageStep());
    });
    connect(inner, &QScrollBar::valueChanged, this, [this](int value) {
        m_bar->setValue(value);
        m_overview->setScroll(value);
    });
    connect(m_bar, &QScrollBar::valueChanged, inner, &QScrollBar::setValue);
    m_barColumn->hide();
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { m_overview->setCurrentRow(current.isValid() ? current.row() : -1); });
    m_overview->installEventFilter(this);
    connect(&table, &QAbstractItemModel::modelReset, this, [this] { fitRows(); });
    fitRows();
}

void TrackPane::showHint(bool on) { m_right->setCurrentWidget(on ? static_cast<QWidget*>(m_hint) : m_overview); }

void TrackPane::fitRows()
{
    const int rows = std::max(1, m_list->model()->rowCount());
    const int room = height() - CTrkPramView::headerHeight;
    const int rowHeight = std::clamp(room / rows / 4 * 4, leastRowHeight, mostRowHeight);
    m_list->setRowHeight(rowHeight);
    m_overview->setRowHeight(rowHeight);
    m_bar->setSingleStep(rowHeight);
    m_barColumn->setVisible(rows * rowHeight > room);
}

void TrackPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitRows();
}

bool TrackPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel) return QCoreApplication::sendEvent(m_bar, event);
    return QWidget::eventFilter(watched, event);
}

} // namespace tessaro
