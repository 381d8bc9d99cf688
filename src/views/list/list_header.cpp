// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_header.h"

#include "views/list/cell_editors.h"

#include <QPainter>

namespace tessaro {

ListHeader::ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) { setSectionsClickable(false); }

QSize ListHeader::sizeHint() const { return {QHeaderView::sizeHint().width(), fontMetrics().height() + 8}; }

void ListHeader::paintSection(QPainter* painter, const QRect& place, int column) const
{
    QStyleOptionHeader section;
    initStyleOption(&section);
    section.rect = place;
    style()->drawControl(QStyle::CE_HeaderSection, &section, painter, this);
    const auto alignment = model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const QString name = model()->headerData(column, Qt::Horizontal).toString();
    const QRect room = place.adjusted(CellEditors::padding, 0, -CellEditors::padding, -1);
    painter->setPen(palette().color(QPalette::PlaceholderText));
    painter->drawText(room, alignment, fontMetrics().elidedText(name, Qt::ElideRight, room.width()));
}

} // namespace tessaro
