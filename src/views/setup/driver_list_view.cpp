// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/driver_list_view.h"

#include "views/text/ui_text.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace tessaro {
namespace {

constexpr int nameColumn = 0;
constexpr int portColumn = 1;

int stepOf(const QKeyEvent& key)
{
    if (key.modifiers() != Qt::AltModifier) return 0;
    return key.key() == Qt::Key_Up ? -1 : key.key() == Qt::Key_Down ? 1 : 0;
}

} // namespace

DriverListView::DriverListView(DriverOrder order, QStringList names, const UiText& text, QWidget* parent)
    : QTreeWidget(parent)
    , m_order(std::move(order))
    , m_names(std::move(names))
    , m_text(text)
{
    setColumnCount(2);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(portColumn, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
        if (m_filling) return;
        m_order.check(static_cast<std::size_t>(indexOfTopLevelItem(item)), item->checkState(nameColumn) == Qt::Checked);
        changed();
    });
    showRows(0);
}

void DriverListView::setOrder(DriverOrder order)
{
    m_order = std::move(order);
    showRows(0);
    changed();
}

void DriverListView::showRows(int current)
{
    m_filling = true;
    clear();
    for (const DriverOrder::Row& row : m_order.rows()) {
        auto* item = new QTreeWidgetItem(this);
        item->setText(nameColumn, m_names.value(row.driver));
        item->setSizeHint(nameColumn, {0, fontMetrics().height() + 8});
        item->setToolTip(nameColumn, m_names.value(row.driver));
        item->setCheckState(nameColumn, row.checked ? Qt::Checked : Qt::Unchecked);
        item->setTextAlignment(portColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setForeground(portColumn, palette().color(QPalette::PlaceholderText));
    }
    setCurrentItem(topLevelItem(current));
    m_filling = false;
    showPorts();
}

void DriverListView::showPorts()
{
    m_filling = true;
    int port = 0;
    for (int row = 0; row < topLevelItemCount(); ++row) {
        const bool checked = m_order.rows()[static_cast<std::size_t>(row)].checked;
        topLevelItem(row)->setText(portColumn, checked ? m_text(TextId::devicePort).arg(++port) : QString());
    }
    m_filling = false;
}

void DriverListView::changed()
{
    showPorts();
    if (onChanged) onChanged();
}

void DriverListView::stepCurrent(int direction)
{
    const int row = indexOfTopLevelItem(currentItem());
    if (row < 0 || !m_order.step(static_cast<std::size_t>(row), direction)) return;
    showRows(row + direction);
    changed();
}

// Dragging

int DriverListView::placeAt(const QPoint& point) const
{
    QTreeWidgetItem* item = itemAt(point);
    if (item) return indexOfTopLevelItem(item);
    return point.y() < 0 ? 0 : topLevelItemCount();
}

void DriverListView::setDropPlace(std::optional<int> place)
{
    if (place == m_dropPlace) return;
    m_dropPlace = place;
    viewport()->update();
}

void DriverListView::mousePressEvent(QMouseEvent* event)
{
    QTreeWidget::mousePressEvent(event);
    QTreeWidgetItem* item = itemAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !item) return;
    setCurrentItem(item); // which a press on the box alone does not
    m_held = indexOfTopLevelItem(item);
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void DriverListView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_held) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    const int place = placeAt(event->position().toPoint());
    setDropPlace(place == *m_held ? std::nullopt : std::optional(place));
}

void DriverListView::mouseReleaseEvent(QMouseEvent* event)
{
    const std::optional<int> held = m_held;
    const int place = placeAt(event->position().toPoint());
    m_held.reset();
    setDropPlace(std::nullopt);
    viewport()->unsetCursor();
    if (event->button() != Qt::LeftButton || !held || place == *held) {
        QTreeWidget::mouseReleaseEvent(event);
        return;
    }
    setState(NoState);
    m_order.drop(static_cast<std::size_t>(*held), static_cast<std::size_t>(place));
    showRows(place < *held ? place : place - 1);
    changed();
}

void DriverListView::paintEvent(QPaintEvent* event)
{
    QTreeWidget::paintEvent(event);
    QPainter painter(viewport());
    if (topLevelItemCount() == 0) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                         m_text(TextId::deviceNoOutputs));
    }
    if (!m_dropPlace) return;
    const bool behind = *m_dropPlace >= topLevelItemCount();
    const QRect row = visualItemRect(topLevelItem(behind ? topLevelItemCount() - 1 : *m_dropPlace));
    const int y = behind ? row.bottom() : row.top();
    painter.fillRect(0, std::max(y - 1, 0), viewport()->width(), 2, palette().highlight());
}

// Keys

bool DriverListView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && stepOf(*static_cast<QKeyEvent*>(event)) != 0) {
        event->accept();
        return true;
    }
    return QTreeWidget::event(event);
}

void DriverListView::keyPressEvent(QKeyEvent* event)
{
    if (const int direction = stepOf(*event); direction != 0)
        stepCurrent(direction);
    else
        QTreeWidget::keyPressEvent(event);
}

} // namespace tessaro
