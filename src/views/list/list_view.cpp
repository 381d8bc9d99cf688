// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_view.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "realtime/transport/cnp_window.h"
#include "realtime/transport/note_audition.h"
#include "views/editors/command_buttons.h"
#include "views/editors/view_actions.h"
#include "views/list/cell_editors.h"
#include "views/list/cell_find.h"
#include "views/text/ui_text.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tessaro {
namespace {

constexpr int heardMilliseconds = 300;
constexpr int lateMilliseconds = 100;

/// A key that begins to type a value.
bool beginsValue(const QKeyEvent& key)
{
    if (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
    const QString text = key.text();
    return text.size() == 1 && (text[0].isDigit() || text[0] == u'+' || text[0] == u'-');
}

} // namespace

CListVw::CListVw(const ViewParts& parts, int track, QWidget* parent)
    : ListTable(parts.listSettings, parts.text, parent)
    , m_parts(parts)
    , m_cells(parts.editor, parts.text)
    , m_edits(parts.editor, parts.notes, parts.text)
    , m_model(m_cells, parts.text)
    , m_choice(m_model.rows())
    , m_commands(parts, *this)
    , m_editors(new CellEditors(*this, parts.text))
    , m_track(track)
{
    begin(m_model);
    setItemDelegate(m_editors);
    showColumnsOf(track);
    for (QTimer* timer : {&m_late, &m_hush, &m_collapse}) timer->setSingleShot(true);
    QObject::connect(&m_late, &QTimer::timeout, this, [this] {
        catchUp();
        if (m_stale) m_late.start(lateMilliseconds);
    });
    QObject::connect(&m_hush, &QTimer::timeout, this, [this] { hush(); });
    QObject::connect(&m_collapse, &QTimer::timeout, this, [this] {
        if (const auto row = m_choice.current()) m_choice.choose(*row, {});
        tellChanged();
    });
    m_parts.actions.listen(*this, {ViewCommand::remove, ViewCommand::insertEvent, ViewCommand::tickLeft,
                                   ViewCommand::tickRight, ViewCommand::openEditor, ViewCommand::editCell});
    m_parts.editor.addObserver(this);
    retranslate();
    refresh();
}

CListVw::~CListVw()
{
    hush();
    m_parts.editor.removeObserver(this);
}

void CListVw::retranslate()
{
    ListTable::retranslate();
    setAccessibleName(m_parts.text(m_track == 0 ? TextId::masterTitle : TextId::listTitle));
    m_model.retranslate();
    viewport()->update();
}

void CListVw::paintEvent(QPaintEvent* event)
{
    if (m_parts.editor.IsPrgDlg() || m_stale) return; // the song may stand between two states: the last picture stays
    QPainter(viewport()).fillRect(event->rect(), palette().base());
    ListTable::paintEvent(event);
}

// Rows

void CListVw::setTrack(int track)
{
    m_track = track;
    showColumnsOf(track);
    m_choice.clear();
    m_playRow = -1;
    refresh();
    setPosition(m_position, true);
    tellChanged();
}

void CListVw::setFilter(const RowFilter& filter)
{
    m_filter = filter;
    if (onFilter) onFilter(filter);
    keepInSight([this] { refresh(); });
}

void CListVw::songReplaced()
{
    m_choice.clear();
    m_model.clear();
    m_playRow = -1;
    m_position = 0;
    refresh();
}

bool CListVw::isInSight() const { return isVisible() || (parentWidget() && parentWidget()->isVisible()); }

void CListVw::catchUp()
{
    if (m_stale && !m_parts.editor.IsPrgDlg()) refresh();
}

void CListVw::refresh()
{
    m_late.stop();
    m_stale = false;
    if (QWidget* line = state() == EditingState ? indexWidget(currentIndex()) : nullptr)
        closeEditor(line, QAbstractItemDelegate::NoHint);
    m_editors->endFault();
    m_model.build(m_parts.editor, m_track, m_filter);
    m_choice.rowsChanged();
    showCurrent();
    m_playRow = -1;
    setPosition(m_position, false);
    viewport()->update();
    if (onChanged) onChanged();
}

void CListVw::showCurrent()
{
    const auto row = m_choice.current();
    if (!row) return selectionModel()->clearCurrentIndex();
    const QModelIndex at = m_model.index(static_cast<int>(*row), std::max(currentIndex().column(), 0));
    if (at != currentIndex()) setCurrentIndex(at);
    if (m_follows) scrollTo(at);
}

void CListVw::onHint(const HintObserver*, int code, CEditor* editor)
{
    if (editor) {
        m_choice.follow(code, *editor);
        markStale(code, *editor);
    }
    if (!isInSight()) return;
    if (code == hint::dispReq) {
        catchUp();
        tellChanged();
    } else if (m_stale && !m_late.isActive()) {
        m_late.start(lateMilliseconds);
    }
}

void CListVw::markStale(int code, const CEditor& editor)
{
    POSITION trk = nullptr;
    POSITION blk = nullptr;
    switch (code) {
    case hint::evntChng:
        if (m_filter == RowFilter{}) return; // the row stands where it stood
        [[fallthrough]];
    case hint::tsChng:
    case hint::locationChng:
    case hint::delEvnt:
    case hint::insEvnt:
    case hint::insRest:
        editor.GetHint(trk, blk);
        m_stale = m_stale || !blk || rows().shows(List<CBlk>::get(blk)->GetRealBlk());
        return;
    case hint::blkNew:
    case hint::blkMove:
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkDiv:
    case hint::blkMerge:
    case hint::addBlk:
    case hint::blkReal:
    case hint::blkUpdate:
    case hint::trkArrange: m_stale = true; return;
    default: return;
    }
}

// The current row and the selection

void CListVw::tellChanged()
{
    viewport()->update();
    if (onChanged) onChanged();
}

/// A row was gone to by key or mouse.
void CListVw::choose(int row, Qt::KeyboardModifiers keys)
{
    if (row < 0 || static_cast<std::size_t>(row) >= rows().count()) return;
    m_choice.choose(static_cast<std::size_t>(row), keys);
    tellChanged();
    if (!(keys & Qt::ShiftModifier)) hearCurrent();
}

void CListVw::hearCurrent()
{
    const auto row = m_choice.current();
    if (!row || m_parts.panel.GetPlayBtn()) return;
    const CEvnt& event = rows().event(*row);
    const std::uint8_t kind = status::kind(event.GetStatus());
    if (kind != status::note && kind != status::syng) return;
    m_parts.audition.start(m_track, event.GetPost1(), event.GetPost2());
    m_hush.start(heardMilliseconds);
    m_isHeard = true;
}

void CListVw::hush()
{
    m_hush.stop();
    if (std::exchange(m_isHeard, false)) m_parts.audition.stop();
}

void CListVw::select(std::span<const EvntRef> refs)
{
    catchUp();
    std::vector<EvntRef> ofTrack(refs.begin(), refs.end());
    const POSITION trk = m_parts.editor.GetTrkPos(m_track);
    std::erase_if(ofTrack, [trk](const EvntRef& ref) { return ref.trk != trk; });
    m_choice.select(ofTrack);
    showCurrent();
    tellChanged();
}

void CListVw::selectAllRows()
{
    m_choice.selectRows(0, rows().count() - 1);
    tellChanged();
}

void CListVw::invertSelection()
{
    m_choice.invert();
    tellChanged();
}

void CListVw::goTo(const EvntRef& ref)
{
    catchUp();
    if (!rows().find(ref)) {
        RowFilter filter = m_filter;
        filter.hiddenGroups &= ~(1U << static_cast<unsigned>(groupOf(evntOf(ref))));
        filter.channel = -1;
        setFilter(filter);
    }
    select({&ref, 1});
    scrollTo(currentIndex());
}

bool CListVw::find(const QString& text, bool backwards)
{
    catchUp();
    const auto found = findCell(text, rows(), m_cells, m_parts.text, m_choice.current(), backwards);
    if (!found) return false;
    goTo(rows().ref(found->row));
    setCurrentIndex(m_model.index(static_cast<int>(found->row), static_cast<int>(found->column)));
    return true;
}

void CListVw::setPosition(std::uint32_t tick, bool follow)
{
    m_position = tick;
    if (m_stale) return;
    const std::size_t behind = tick == tick::latest ? rows().count() : rows().firstFrom(tick + 1);
    const int row = static_cast<int>(behind) - 1;
    if (row == m_playRow) return;
    for (const int changed : {m_playRow, row})
        if (changed >= 0) viewport()->update(0, rowViewportPosition(changed), viewport()->width(), rowHeight(changed));
    m_playRow = row;
    if (!follow || row < 0 || state() == EditingState) return;
    const int y = rowViewportPosition(row);
    if (y < 0 || y + rowHeight(row) > viewport()->height()) scrollTo(m_model.index(row, 0), PositionAtTop);
}

// Keys and mouse

bool CListVw::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide) hush();
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool isOurs = beginsValue(key) || (key.key() == Qt::Key_Escape && !selection().empty());
        if (isOurs) event->accept();
        if (isOurs) return true;
    }
    return ListTable::event(event);
}

void CListVw::keyPressEvent(QKeyEvent* event)
{
    catchUp();
    const QModelIndex index = currentIndex();
    if (event->key() == Qt::Key_Escape && !selection().empty()) {
        select({});
        return;
    }
    if (beginsValue(*event)) {
        openCell(index);
        if (auto* line = viewport()->findChild<QLineEdit*>()) QApplication::sendEvent(line, event);
        return;
    }
    if (event->text().size() == 1 && event->text()[0].isPrint()) { // a command of the window, or nobody's
        event->ignore();
        return;
    }
    ListTable::keyPressEvent(event);
    if (currentIndex().row() != index.row()) choose(currentIndex().row(), event->modifiers());
}

void CListVw::mousePressEvent(QMouseEvent* event)
{
    catchUp();
    m_collapse.stop();
    ListTable::mousePressEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid()) {
        if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) select({});
        return;
    }
    setCurrentIndex(index);
    const auto row = static_cast<std::size_t>(index.row());
    if (event->modifiers() != Qt::NoModifier || !m_choice.isSelected(row)) {
        choose(index.row(), event->modifiers());
        return;
    }
    m_choice.setCurrent(row);
    hearCurrent();
}

/// Along several rows it selects them.
void CListVw::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)) return;
    catchUp();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || index.row() == currentIndex().row()) return;
    setCurrentIndex(index);
    choose(index.row(), event->modifiers() | Qt::ShiftModifier);
}

void CListVw::mouseReleaseEvent(QMouseEvent* event)
{
    ListTable::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool isPlain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
    // Several stay selected until it is sure that the click opens none of their cells.
    if (isPlain && index.isValid() && selection().count() > 1 && static_cast<int>(m_choice.anchor()) == index.row())
        m_collapse.start(QApplication::doubleClickInterval());
}

void CListVw::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_collapse.stop();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) openCell(index);
}

void CListVw::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu;
    m_commands.fillInsertMenu(*menu.addMenu(m_parts.text(TextId::commandInsertEvent)));
    menu.addSeparator();
    using enum ViewCommand;
    addCommands(menu, m_parts.actions, {cut, copy, paste, remove, duplicate});
    addCommands(menu, m_parts.actions, {editCell});
    addCommands(menu, m_parts.actions, {selectAll, selectNone, invertSelection});
    addCommands(menu, m_parts.actions, {nudgeLeft, nudgeRight, tickLeft, tickRight});
    menu.exec(event->globalPos());
}

// Typing

void CListVw::openCell(const QModelIndex& index)
{
    if (isLocked() || !m_model.isEditable(index)) return;
    const EvntRef ref = rows().ref(static_cast<std::size_t>(index.row()));
    if (m_edits.notes().refuses({&ref, 1})) return;
    setCurrentIndex(index);
    edit(index);
}

void CListVw::openValue()
{
    const QModelIndex current = currentIndex();
    for (const ListColumn column : {ListColumn::value1, ListColumn::data, ListColumn::gate, ListColumn::place})
        if (const QModelIndex at = current.siblingAtColumn(static_cast<int>(column)); m_model.isEditable(at))
            return openCell(at);
}

} // namespace tessaro
