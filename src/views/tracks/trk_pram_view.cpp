// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_pram_view.h"

#include "views/theme/colours.h"
#include "views/tracks/track_editors.h"
#include "views/tracks/track_list_model.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace tessaro {
namespace {

/// Paints a cell from the palette; the track's colour and its light in the first column.
class CellPainter : public TrackEditors {
public:
    using TrackEditors::TrackEditors;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QPalette& colours = option.palette;
        const bool chosen = option.state & QStyle::State_Selected;
        if (chosen) painter->fillRect(option.rect, rowBack(colours));
        painter->fillRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1, colours.midlight());

        const TrackRow& row = m_table.row(index);
        switch (static_cast<TrackColumn>(index.column())) {
        case TrackColumn::light: paintLight(*painter, option.rect, colours, row, m_table.lightLevel(index)); break;
        case TrackColumn::record: paintRecord(*painter, option, row.record); break;
        case TrackColumn::mute: paintSwitch(*painter, option, index, row.mute, colours.color(QPalette::Text)); break;
        case TrackColumn::solo:
            paintSwitch(*painter, option, index, row.solo, colours.color(QPalette::Highlight));
            break;
        default: paintText(*painter, option, index, row);
        }
        painter->restore();
    }

    static QColor rowBack(const QPalette& colours)
    {
        return blend(colours.color(QPalette::Highlight), colours.color(QPalette::Base), 0.14);
    }

private:
    static void paintLight(QPainter& painter, const QRect& cell, const QPalette& colours, const TrackRow& row,
                           int level)
    {
        const QColor colour = trackColour(row.track, colours);
        painter.fillRect(cell.left(), cell.top(), 4, cell.height() - 1,
                         row.sounding && row.used ? colour : colours.color(QPalette::Mid));
        const QColor dark = blend(colours.color(QPalette::Text), colours.color(QPalette::Base), 0.14);
        const QPointF middle(cell.left() + 16.0, cell.center().y() + 0.5);
        painter.setPen(Qt::NoPen);
        const double share = static_cast<double>(level) / Lights::brightest;
        if (level > 0) {
            QColor glow = colour;
            glow.setAlphaF(static_cast<float>(0.3 * share));
            painter.setBrush(glow);
            painter.drawEllipse(middle, 7.5, 7.5);
        }
        painter.setBrush(blend(colour, dark, share));
        painter.drawEllipse(middle, 4.5, 4.5);
    }

    /// The button of a switch; answers its place.
    static QRectF paintButton(QPainter& painter, const QStyleOptionViewItem& option, bool on, const QColor& lit)
    {
        const QPalette& colours = option.palette;
        const QPointF middle = QRectF(option.rect).center();
        const double height = std::min(option.rect.height() - 4, 20);
        const QRectF box(middle.x() - 11, middle.y() - height / 2, 22, height);
        const bool hovered = option.state & QStyle::State_MouseOver;
        const QColor off = blend(colours.color(QPalette::Text), colours.color(QPalette::Button), hovered ? 0.15 : 0.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(on ? lit : off);
        painter.drawRoundedRect(box, 4, 4);
        if ((option.state & QStyle::State_HasFocus)) {
            painter.setPen(QPen(colours.color(QPalette::Highlight), 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(box.adjusted(-1, -1, 1, 1), 4, 4);
        }
        return box;
    }

    static void paintRecord(QPainter& painter, const QStyleOptionViewItem& option, bool on)
    {
        const QPalette& colours = option.palette;
        const QColor red = recordColour(colours);
        const QPointF middle = paintButton(painter, option, on, red).center();
        painter.setPen(Qt::NoPen);
        painter.setBrush(on ? colours.color(QPalette::Base) : blend(red, colours.color(QPalette::Button), 0.45));
        painter.drawEllipse(middle, 4, 4);
    }

    static void paintSwitch(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index, bool on,
                            const QColor& lit)
    {
        const QPalette& colours = option.palette;
        const QRectF box = paintButton(painter, option, on, lit);
        QFont font = option.font;
        font.setPointSizeF(font.pointSizeF() * 0.9);
        font.setBold(on);
        painter.setFont(font);
        painter.setPen(colours.color(on ? QPalette::Base : QPalette::PlaceholderText));
        painter.drawText(box, Qt::AlignCenter, index.data().toString());
    }

    static void paintText(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                          const TrackRow& row)
    {
        const QPalette& colours = option.palette;
        const bool name = static_cast<TrackColumn>(index.column()) == TrackColumn::name;
        const bool strong = name && row.sounding && row.used;
        painter.setPen(colours.color(strong ? QPalette::Text : QPalette::PlaceholderText));
        const QRect place = option.rect.adjusted(name ? 8 : 2, 0, name ? -8 : -2, 0);
        const QString text = option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, place.width());
        painter.drawText(place, index.data(Qt::TextAlignmentRole).toInt(), text);
        if (option.state & QStyle::State_HasFocus) {
            painter.setPen(QPen(colours.color(QPalette::Highlight), 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -2), 3, 3);
        }
    }
};

} // namespace

CTrkPramView::CTrkPramView(TrackListModel& table, QWidget* parent) : QTableView(parent), m_table(table)
{
    setModel(&table);
    setItemDelegate(new CellPainter(table, *this));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked); // keys come as commands
    setVerticalScrollMode(ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // as beside it
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setFixedHeight(headerHeight);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setMinimumSectionSize(24);
    fitColumns();
}

void CTrkPramView::fitColumns()
{
    QHeaderView& header = *horizontalHeader();
    const auto fit = [&](TrackColumn column, const QString& widest, int least) {
        const int section = static_cast<int>(column);
        const QString title = m_table.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        const int width = std::max(fontMetrics().horizontalAdvance(widest), fontMetrics().horizontalAdvance(title));
        header.setSectionResizeMode(section, QHeaderView::Fixed);
        header.resizeSection(section, std::max(width + 16, least));
    };
    fit(TrackColumn::light, {}, 28);
    fit(TrackColumn::number, QStringLiteral("100"), 32);
    fit(TrackColumn::port, QStringLiteral("16"), 32);
    fit(TrackColumn::channel, QStringLiteral("16"), 32);
    fit(TrackColumn::transpose, QStringLiteral("+36"), 40);
    fit(TrackColumn::record, {}, 28);
    fit(TrackColumn::mute, {}, 28);
    fit(TrackColumn::solo, {}, 32);
    header.setSectionResizeMode(static_cast<int>(TrackColumn::name), QHeaderView::Stretch);
}

void CTrkPramView::setRowHeight(int height)
{
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

QSize CTrkPramView::sizeHint() const { return {360, 400}; }

bool CTrkPramView::toggleAt(const QPoint& place)
{
    const QModelIndex index = indexAt(place);
    if (!(index.flags() & Qt::ItemIsUserCheckable)) return false;
    setCurrentIndex(index);
    m_table.toggle(index);
    return true;
}

void CTrkPramView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && toggleAt(event->position().toPoint())) return;
    QTableView::mousePressEvent(event);
}

void CTrkPramView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // Two quick clicks on a switch are two clicks.
    if (event->button() == Qt::LeftButton && toggleAt(event->position().toPoint())) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && index.column() <= static_cast<int>(TrackColumn::number) && onProperties) {
        onProperties(m_table.row(index).track);
        return;
    }
    QTableView::mouseDoubleClickEvent(event);
    m_opensList = true;
}

void CTrkPramView::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    auto* ports = qobject_cast<QComboBox*>(indexWidget(currentIndex()));
    if (std::exchange(m_opensList, false) && ports) ports->showPopup();
}

void CTrkPramView::editCell()
{
    if (TrackListModel::isEditable(currentIndex())) edit(currentIndex());
}

void CTrkPramView::openCell()
{
    editCell();
    m_table.toggle(currentIndex());
}

void CTrkPramView::toggle(TrackColumn column)
{
    m_table.toggle(currentIndex().siblingAtColumn(static_cast<int>(column)));
}

void CTrkPramView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    if (!index.isValid() || !onMenu) return;
    setCurrentIndex(index);
    onMenu(m_table.row(index).track, viewport()->mapToGlobal(byKey ? visualRect(index).center() : event->pos()));
}

void CTrkPramView::finishEditing()
{
    if (QWidget* editor = indexWidget(currentIndex())) commitData(editor);
    abandonEditing();
}

void CTrkPramView::abandonEditing()
{
    if (QWidget* editor = indexWidget(currentIndex())) closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void CTrkPramView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    const int step = hint == QAbstractItemDelegate::EditNextItem     ? 1
                   : hint == QAbstractItemDelegate::EditPreviousItem ? -1
                                                                     : 0;
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (step == 0) return;
    if (const QModelIndex next = editableBeside(currentIndex(), step); next.isValid()) {
        setCurrentIndex(next);
        edit(next);
    }
}

QModelIndex CTrkPramView::editableBeside(const QModelIndex& index, int step) const
{
    const int cells = m_table.rowCount() * trackColumns;
    for (int cell = index.row() * trackColumns + index.column() + step; cell >= 0 && cell < cells; cell += step) {
        const QModelIndex found = m_table.index(cell / trackColumns, cell % trackColumns);
        if (TrackListModel::isEditable(found)) return found;
    }
    return {};
}

void CTrkPramView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) fitColumns();
}

} // namespace tessaro
