// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/cell_editors.h"

#include "views/list/list_view.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"
#include "views/widgets/keeps_key.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

namespace tessaro {

CellEditors::CellEditors(CListVw& view, const UiText& text) : QStyledItemDelegate(&view), m_view(view), m_text(text) {}

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
    QObject::connect(line, &QLineEdit::textEdited, line, [this] { m_fault.end(); });
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
    m_fault.end();
    const auto* line = static_cast<QLineEdit*>(editor);
    if (line->isModified()) take(line->text(), index);
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
        auto& line = *static_cast<QLineEdit*>(editor);
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: end(line); return true;
        case Qt::Key_Tab:
            if (end(line)) openNext(false);
            return true;
        case Qt::Key_Backtab:
            if (end(line)) openNext(true);
            return true;
        case Qt::Key_Escape: m_fault.end(); break;
        default: break;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

/// False while the line stays open.
bool CellEditors::end(QLineEdit& line)
{
    const QString text = line.text();
    const QPersistentModelIndex at = m_open;
    const bool isModified = line.isModified();
    if (isModified && !isFine(text, at, line)) return false;
    closeEditor(&line, NoHint);
    if (isModified) take(text, at);
    return true;
}

/// Says why not otherwise.
bool CellEditors::isFine(const QString& text, const QModelIndex& index, QLineEdit& line)
{
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<ListColumn>(index.column());
    const std::uint32_t time = m_view.rows().time(row);
    QString fault;
    if (column == ListColumn::place) {
        if (!m_view.cells().parseMove(text, time)) fault = m_text(TextId::badPlace);
    } else {
        const auto parsed = m_view.cells().parse(text, m_view.rows().event(row), time, column);
        if (const auto* refused = std::get_if<CellFault>(&parsed)) fault = refused->sentence;
    }
    m_fault.say(fault, line);
    return fault.isEmpty();
}

/// Those that an edit in a row works on: the selected ones, or the row alone.
std::vector<EvntRef> CellEditors::meant(std::size_t row) const
{
    const EvntRef ref = m_view.rows().ref(row);
    return m_view.selection().contains(ref) ? m_view.selection().inOrder() : std::vector{ref};
}

/// Nothing for what cannot be read.
void CellEditors::take(const QString& text, const QModelIndex& index) const
{
    if (!index.isValid() || m_view.isLocked() || m_view.isStale()) return;
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<ListColumn>(index.column());
    const std::uint32_t time = m_view.rows().time(row);
    m_view.keepInSight([&] {
        if (column == ListColumn::place) {
            if (const auto delta = m_view.cells().parseMove(text, time)) m_view.edits().move(meant(row), *delta);
            return;
        }
        const CEvnt& event = m_view.rows().event(row);
        const auto parsed = m_view.cells().parse(text, event, time, column);
        if (const auto* change = std::get_if<CellChange>(&parsed))
            m_view.edits().change(meant(row), column, *change, kindOf(event));
    });
}

/// The next cell of the row that can be typed into.
void CellEditors::openNext(bool backwards) const
{
    const QModelIndex current = m_view.currentIndex();
    const int step = backwards ? -1 : 1;
    for (int column = current.column() + step; column >= 0 && column < listColumns; column += step) {
        const QModelIndex at = current.siblingAtColumn(column);
        if (at.flags() & Qt::ItemIsEditable) return m_view.openCell(at);
    }
}

} // namespace tessaro
