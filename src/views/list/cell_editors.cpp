// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/cell_editors.h"

#include "views/list/list_view.h"
#include "views/theme/colours.h"
#include "views/widgets/keeps_key.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

namespace tessaro {

CellEditors::CellEditors(CListVw& view) : QStyledItemDelegate(&view), m_view(view) {}

void CellEditors::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto row = static_cast<std::size_t>(index.row());
    if (row >= m_view.rows().count()) return;
    const QPalette& colours = option.palette;
    const QRect& cell = option.rect;
    const QColor accent = colours.color(QPalette::Highlight);
    const QColor base = colours.color(QPalette::Base);
    const bool isSelected = m_view.selection().contains(m_view.rows().ref(row));
    if (isSelected) painter->fillRect(cell, blend(accent, base, 0.18));
    if (index.row() == m_view.playRow()) {
        painter->fillRect(cell, blend(accent, base, isSelected ? 0.34 : 0.1));
        if (index.column() == 0) painter->fillRect(cell.left(), cell.top(), 3, cell.height(), accent);
    }
    painter->fillRect(cell.left(), cell.bottom(), cell.width(), 1, colours.midlight());

    const auto column = static_cast<ListColumn>(index.column());
    const bool isFixed = column != ListColumn::kind && !(index.flags() & Qt::ItemIsEditable);
    painter->setFont(option.font);
    painter->setPen(
        colours.color(isFixed || column == ListColumn::channel ? QPalette::PlaceholderText : QPalette::Text));
    const QRect place = cell.adjusted(padding, 0, -padding, -1);
    const auto alignment = static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt());
    painter->drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(m_view.cellText(row, column), Qt::ElideRight, place.width()));
    if (index == m_view.currentIndex() && m_view.hasFocus()) {
        painter->setPen(accent);
        painter->drawRect(cell.adjusted(0, 0, -1, -2));
    }
}

QWidget* CellEditors::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    auto* line = new QLineEdit(parent);
    line->setAlignment(static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt()));
    line->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    m_open = index;
    QObject::connect(line, &QLineEdit::textEdited, line, [this] { m_view.endFault(); });
    return line;
}

void CellEditors::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* line = static_cast<QLineEdit*>(editor);
    if (!line->isModified()) line->setText(index.data(Qt::EditRole).toString());
}

/// From a click elsewhere: what cannot be read is dropped.
void CellEditors::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    m_view.endFault();
    const auto* line = static_cast<QLineEdit*>(editor);
    if (line->isModified()) m_view.take(line->text(), index);
}

void CellEditors::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const int height = std::max(editor->sizeHint().height(), option.rect.height());
    QRect place(option.rect.left(), option.rect.center().y() - height / 2, option.rect.width(), height);
    const int room = editor->parentWidget()->height();
    if (place.bottom() >= room) place.moveBottom(room - 1);
    if (place.top() < 0) place.moveTop(0);
    editor->setGeometry(place);
}

bool CellEditors::eventFilter(QObject* editor, QEvent* event)
{
    if (keepsKey(event)) return true;
    if (event->type() == QEvent::KeyPress) {
        auto* line = static_cast<QLineEdit*>(editor);
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool isTab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
        if (key == Qt::Key_Return || key == Qt::Key_Enter || isTab) {
            const QString text = line->text();
            const QPersistentModelIndex at = m_open;
            const bool isModified = line->isModified();
            if (isModified && !m_view.isFine(text, at, *line)) return true;
            closeEditor(line, NoHint);
            if (isModified) m_view.take(text, at);
            if (isTab) m_view.openNext(key == Qt::Key_Backtab);
            return true;
        }
        if (key == Qt::Key_Escape) m_view.endFault();
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

} // namespace tessaro
