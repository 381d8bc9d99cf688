// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_view.h"

#include "core/doc/list_settings.h"
#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "realtime/transport/cnp_window.h"
#include "realtime/transport/note_audition.h"
#include "views/clipboard/song_clipboard.h"
#include "views/editors/view_actions.h"
#include "views/list/cell_editors.h"
#include "views/list/insert_menu.h"
#include "views/list/list_font.h"
#include "views/list/list_header.h"
#include "views/roll/grid.h"
#include "views/text/ui_text.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>

#include <algorithm>
#include <array>
#include <utility>

namespace tessaro {
namespace {

constexpr int heardMilliseconds = 300;
constexpr int lateMilliseconds = 100;

constexpr ViewCommand commands[] = {
    ViewCommand::cut,        ViewCommand::copy,      ViewCommand::paste,      ViewCommand::remove,
    ViewCommand::duplicate,  ViewCommand::selectAll, ViewCommand::selectNone, ViewCommand::invertSelection,
    ViewCommand::properties, ViewCommand::nudgeLeft, ViewCommand::nudgeRight, ViewCommand::tickLeft,
    ViewCommand::tickRight,  ViewCommand::nudgeUp,   ViewCommand::nudgeDown,  ViewCommand::octaveUp,
    ViewCommand::octaveDown, ViewCommand::longer,    ViewCommand::shorter,    ViewCommand::insertEvent,
};

/// A key that begins to type a value.
bool beginsValue(const QKeyEvent& key)
{
    if (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
    const QString text = key.text();
    return text.size() == 1 && (text[0].isDigit() || text[0] == u'+' || text[0] == u'-');
}

} // namespace

CListVw::CListVw(const ViewParts& parts, int track, QWidget* parent)
    : QTableView(parent)
    , m_parts(parts)
    , m_cells(parts.editor, parts.text)
    , m_edits(parts.editor, parts.notes, parts.text)
    , m_model(m_cells, m_selection, parts.text)
    , m_track(track)
{
    setHorizontalHeader(new ListHeader(this));
    setModel(&m_model);
    setItemDelegate(new CellEditors(*this));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setFrameShape(NoFrame);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(40);
    readSettings();
    QObject::connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (m_parts.listSettings && column < listColumns - 1)
            m_parts.listSettings->columnWidths[static_cast<std::size_t>(column)] = width;
    });

    for (QTimer* timer : {&m_late, &m_hush, &m_collapse}) timer->setSingleShot(true);
    QObject::connect(&m_late, &QTimer::timeout, this, [this] { refresh(); });
    QObject::connect(&m_hush, &QTimer::timeout, this, [this] { hush(); });
    QObject::connect(&m_collapse, &QTimer::timeout, this, [this] {
        if (const auto row = currentRow()) selectRows(static_cast<int>(*row), static_cast<int>(*row), false);
    });
    m_parts.actions.listen(
        *this, {ViewCommand::remove, ViewCommand::insertEvent, ViewCommand::tickLeft, ViewCommand::tickRight});
    m_parts.editor.addObserver(this);
    retranslate();
    refresh();
}

CListVw::~CListVw()
{
    hush();
    m_parts.editor.removeObserver(this);
}

// Looks -----------------------------------------------------------------------------------------------------

void CListVw::readSettings()
{
    ListSettings settings;
    settings.columnWidths.fill(ListSettings::defaultWidth);
    if (m_parts.listSettings) settings = *m_parts.listSettings;
    for (int column = 0; column < listColumns; ++column)
        setColumnWidth(column, settings.columnWidths[static_cast<std::size_t>(column)]);
    m_filter.hiddenGroups = static_cast<std::uint32_t>(settings.monitorType);
    m_filter.channel = std::clamp(settings.monitor[0], 0, 16) - 1;
    if (const auto font = listFont(settings.font)) setFont(*font);
    sizeRows();
    hideColumns();
}

/// What no event of the master track has.
void CListVw::hideColumns()
{
    for (const ListColumn column : {ListColumn::channel, ListColumn::value2, ListColumn::gate})
        setColumnHidden(static_cast<int>(column), m_track == 0);
}

void CListVw::sizeRows() { verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8); }

void CListVw::retranslate()
{
    setAccessibleName(m_parts.text(m_track == 0 ? TextId::masterTitle : TextId::listTitle));
    m_model.retranslate();
    viewport()->update();
}

void CListVw::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) sizeRows();
}

void CListVw::paintEvent(QPaintEvent* event)
{
    if (!m_parts.editor.IsPrgDlg()) QTableView::paintEvent(event);
}

void CListVw::showEvent(QShowEvent* event)
{
    if (m_stale) refresh();
    QTableView::showEvent(event);
}

// Rows ------------------------------------------------------------------------------------------------------

void CListVw::setTrack(int track)
{
    m_track = track;
    hideColumns();
    m_selection.clear();
    m_current.clear();
    m_playRow = -1;
    refresh();
    setPosition(m_position, true);
    selectionChanged();
}

void CListVw::setFilter(const RowFilter& filter)
{
    m_filter = filter;
    if (m_parts.listSettings) {
        m_parts.listSettings->monitorType = static_cast<int>(filter.hiddenGroups);
        m_parts.listSettings->monitor[0] = filter.channel + 1;
    }
    m_follows = true;
    refresh();
}

void CListVw::songReplaced()
{
    m_selection.clear();
    m_current.clear();
    m_model.clear();
    m_playRow = -1;
    m_position = 0;
    refresh();
}

/// Rows of the song as it stands now.
void CListVw::refresh()
{
    m_late.stop();
    m_stale = false;
    QWidget* line = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (line) closeEditor(line, QAbstractItemDelegate::NoHint);
    m_fault.end();
    m_model.build(m_parts.editor, m_track, m_filter);
    restoreCurrent();
    m_playRow = -1;
    setPosition(m_position, false);
    if (onChanged) onChanged();
}

void CListVw::restoreCurrent()
{
    const std::vector<EvntRef> current = m_current.inOrder();
    const auto found = current.empty() ? std::nullopt : rows().find(current.front());
    const int row = found ? static_cast<int>(*found) : -1;
    m_restoring = true;
    const QModelIndex at = m_model.index(row, std::max(currentIndex().column(), 0));
    if (row < 0) {
        selectionModel()->clearCurrentIndex();
    } else {
        if (at != currentIndex()) setCurrentIndex(at);
        if (m_follows) scrollTo(at);
        m_anchor = row;
    }
    m_restoring = false;
    m_follows = false;
}

void CListVw::onHint(const HintObserver*, int code, CEditor* editor)
{
    if (editor) {
        m_current.follow(code, *editor);
        m_selection.follow(code, *editor);
        markStale(code, *editor);
    }
    if (code == hint::dispReq) {
        if (m_stale && isVisible()) refresh();
        viewport()->update();
        if (onChanged) onChanged();
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

// The current row and the selection -------------------------------------------------------------------------

std::optional<std::size_t> CListVw::currentRow() const
{
    const int row = currentIndex().row();
    return row < 0 || static_cast<std::size_t>(row) >= rows().count() ? std::nullopt : std::optional<std::size_t>(row);
}

void CListVw::setCurrent(int row, int column)
{
    const QModelIndex index = m_model.index(row, std::max(column, 0));
    if (!index.isValid()) return;
    setCurrentIndex(index);
    m_current.clear();
    m_current.add(rows().ref(static_cast<std::size_t>(row)));
}

void CListVw::selectRows(int from, int to, bool keep)
{
    if (!keep) m_selection.clear();
    for (int row = std::min(from, to); row <= std::max(from, to); ++row)
        m_selection.add(rows().ref(static_cast<std::size_t>(row)));
    selectionChanged();
}

void CListVw::selectionChanged()
{
    viewport()->update();
    if (onChanged) onChanged();
}

/// A row was gone to by key or mouse.
void CListVw::choose(int row, Qt::KeyboardModifiers keys)
{
    if (row < 0 || static_cast<std::size_t>(row) >= rows().count()) return;
    const EvntRef ref = rows().ref(static_cast<std::size_t>(row));
    m_current.clear();
    m_current.add(ref);
    if (keys & Qt::ShiftModifier) {
        m_anchor = std::min(m_anchor, static_cast<int>(rows().count()) - 1);
        selectRows(m_anchor, row, keys & Qt::ControlModifier);
        return;
    }
    m_anchor = row;
    if (keys & Qt::ControlModifier) {
        m_selection.toggle(ref);
        selectionChanged();
    } else {
        selectRows(row, row, false);
    }
    hearCurrent();
}

void CListVw::hearCurrent()
{
    const auto row = currentRow();
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
    if (m_stale) refresh();
    m_selection.clear();
    for (const EvntRef& ref : refs)
        if (ref.trk == m_parts.editor.GetTrkPos(m_track)) m_selection.add(ref);
    if (!refs.empty())
        if (const auto row = rows().find(refs.front())) {
            setCurrent(static_cast<int>(*row), currentIndex().column());
            m_anchor = static_cast<int>(*row);
        }
    selectionChanged();
}

void CListVw::goTo(const EvntRef& ref)
{
    const EvntRef one[] = {ref};
    select(one);
    scrollTo(currentIndex());
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

// Keys and mouse --------------------------------------------------------------------------------------------

bool CListVw::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide) hush();
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool isOurs = beginsValue(key) || (key.key() == Qt::Key_Escape && !m_selection.empty());
        if (isOurs) event->accept();
        if (isOurs) return true;
    }
    return QTableView::event(event);
}

void CListVw::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const QModelIndex index = currentIndex();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2) {
        openCell(index);
        return;
    }
    if (key == Qt::Key_Escape && !m_selection.empty()) {
        m_selection.clear();
        selectionChanged();
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
    QTableView::keyPressEvent(event);
    if (currentIndex().row() != index.row()) choose(currentIndex().row(), event->modifiers());
}

void CListVw::mousePressEvent(QMouseEvent* event)
{
    m_collapse.stop();
    QTableView::mousePressEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid()) {
        if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
            m_selection.clear();
            selectionChanged();
        }
        return;
    }
    setCurrentIndex(index);
    const bool isSelected = m_selection.contains(rows().ref(static_cast<std::size_t>(index.row())));
    if (isSelected && event->modifiers() == Qt::NoModifier) {
        m_current.clear();
        m_current.add(rows().ref(static_cast<std::size_t>(index.row())));
        m_anchor = index.row();
        hearCurrent();
        return;
    }
    choose(index.row(), event->modifiers());
}

/// Along several rows it selects them.
void CListVw::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || index.row() == currentIndex().row()) return;
    setCurrentIndex(index);
    choose(index.row(), event->modifiers() | Qt::ShiftModifier);
}

void CListVw::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool isPlain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
    // Several stay selected until it is sure that the click opens none of their cells.
    if (isPlain && index.isValid() && m_selection.count() > 1 && m_anchor == index.row())
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
    const auto add = [&](std::initializer_list<ViewCommand> group) {
        for (const ViewCommand command : group) menu.addAction(&m_parts.actions[command]);
        menu.addSeparator();
    };
    QMenu* inserts = menu.addMenu(m_parts.text(TextId::commandInsertEvent));
    fillInsertMenu(*inserts);
    menu.addSeparator();
    add({ViewCommand::cut, ViewCommand::copy, ViewCommand::paste, ViewCommand::remove, ViewCommand::duplicate});
    add({ViewCommand::selectAll, ViewCommand::selectNone, ViewCommand::invertSelection});
    add({ViewCommand::nudgeLeft, ViewCommand::nudgeRight, ViewCommand::tickLeft, ViewCommand::tickRight});
    menu.exec(event->globalPos());
}

// Typing ----------------------------------------------------------------------------------------------------

void CListVw::openCell(const QModelIndex& index)
{
    if (isLocked() || !m_model.isEditable(index)) return;
    const EvntRef one[] = {rows().ref(static_cast<std::size_t>(index.row()))};
    if (m_edits.notes().refuses(one)) return;
    setCurrentIndex(index);
    edit(index);
}

void CListVw::openNext(bool backwards)
{
    const auto row = currentRow();
    if (!row) return;
    const int step = backwards ? -1 : 1;
    for (int column = currentIndex().column() + step; column >= 0 && column < listColumns; column += step) {
        const QModelIndex index = m_model.index(static_cast<int>(*row), column);
        if (!m_model.isEditable(index)) continue;
        openCell(index);
        return;
    }
}

bool CListVw::isFine(const QString& text, const QModelIndex& index, QLineEdit& line)
{
    const auto column = static_cast<ListColumn>(index.column());
    QString fault;
    if (column == ListColumn::place) {
        if (!m_cells.parseMove(text, rows().time(static_cast<std::size_t>(index.row()))))
            fault = m_parts.text(TextId::badPlace);
    } else {
        const auto parsed = m_cells.parse(text, rows().event(static_cast<std::size_t>(index.row())), column);
        if (const auto* refused = std::get_if<CellFault>(&parsed)) fault = refused->sentence;
    }
    m_fault.say(fault, line);
    return fault.isEmpty();
}

/// Those that an edit in a row works on: the selected ones, or the row alone.
std::vector<EvntRef> CListVw::meant(std::size_t row) const
{
    const EvntRef ref = rows().ref(row);
    return m_selection.contains(ref) ? m_selection.inOrder() : std::vector{ref};
}

void CListVw::take(const QString& text, const QModelIndex& index)
{
    if (!index.isValid() || isLocked() || m_stale) return;
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<ListColumn>(index.column());
    m_follows = true;
    if (column == ListColumn::place) {
        if (const auto delta = m_cells.parseMove(text, rows().time(row))) m_edits.move(meant(row), *delta);
    } else {
        const CEvnt& event = rows().event(row);
        const auto parsed = m_cells.parse(text, event, column);
        if (const auto* change = std::get_if<CellChange>(&parsed))
            m_edits.change(meant(row), column, *change, kindOf(event));
    }
    m_follows = false;
}

// Commands --------------------------------------------------------------------------------------------------

bool CListVw::can(ViewCommand command) const
{
    if (std::find(std::begin(commands), std::end(commands), command) == std::end(commands)) return false;
    if (m_parts.editor.IsPrgDlg()) return false;
    const auto format = m_track == 0 ? SongClipboard::Format::mstrEvnts : SongClipboard::Format::evnts;
    switch (command) {
    case ViewCommand::selectAll:
    case ViewCommand::invertSelection: return rows().count() != 0;
    case ViewCommand::insertEvent: return !isLocked();
    case ViewCommand::paste: return !isLocked() && m_parts.clipboard.holds(format);
    case ViewCommand::copy:
    case ViewCommand::selectNone: return !m_selection.empty();
    case ViewCommand::properties: return !isLocked() && currentRow().has_value();
    case ViewCommand::nudgeUp:
    case ViewCommand::nudgeDown:
    case ViewCommand::octaveUp:
    case ViewCommand::octaveDown:
    case ViewCommand::longer:
    case ViewCommand::shorter: return m_track != 0 && !isLocked() && !m_selection.empty();
    default: return !isLocked() && !m_selection.empty();
    }
}

void CListVw::run(ViewCommand command)
{
    if (m_stale) refresh();
    if (!can(command)) return;
    switch (command) {
    case ViewCommand::cut:
        if (m_parts.clipboard.copyEvnts(m_selection.inOrder()))
            m_edits.remove(m_selection.inOrder(), TextId::undoEventCut);
        break;
    case ViewCommand::copy: m_parts.clipboard.copyEvnts(m_selection.inOrder()); break;
    case ViewCommand::paste: paste(); break;
    case ViewCommand::remove: m_edits.remove(m_selection.inOrder()); break;
    case ViewCommand::duplicate: select(m_edits.notes().duplicate(m_selection.inOrder(), m_parts.grid)); break;
    case ViewCommand::selectAll: selectRows(0, static_cast<int>(rows().count()) - 1, false); break;
    case ViewCommand::selectNone:
        m_selection.clear();
        selectionChanged();
        break;
    case ViewCommand::invertSelection:
        for (std::size_t row = 0; row < rows().count(); ++row) m_selection.toggle(rows().ref(row));
        selectionChanged();
        break;
    case ViewCommand::properties:
        openCell(m_model.index(currentIndex().row(), firstValueColumn(rows().event(*currentRow()))));
        break;
    case ViewCommand::insertEvent: {
        QMenu menu;
        fillInsertMenu(menu);
        menu.exec(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
        break;
    }
    default: nudge(command);
    }
}

void CListVw::nudge(ViewCommand command)
{
    const std::vector<EvntRef> refs = m_selection.inOrder();
    const auto step = static_cast<std::int64_t>(m_parts.grid.step(m_parts.editor, timeOf(refs.front())));
    NoteCommands& notes = m_edits.notes();
    m_follows = true;
    switch (command) {
    case ViewCommand::nudgeLeft: m_edits.move(refs, -step); break;
    case ViewCommand::nudgeRight: m_edits.move(refs, step); break;
    case ViewCommand::tickLeft: m_edits.move(refs, -1); break;
    case ViewCommand::tickRight: m_edits.move(refs, 1); break;
    case ViewCommand::nudgeUp: notes.transpose(refs, 1); break;
    case ViewCommand::nudgeDown: notes.transpose(refs, -1); break;
    case ViewCommand::octaveUp: notes.transpose(refs, 12); break;
    case ViewCommand::octaveDown: notes.transpose(refs, -12); break;
    case ViewCommand::longer: notes.stretch(refs, step); break;
    case ViewCommand::shorter: notes.stretch(refs, -step); break;
    default: break;
    }
    m_follows = false;
}

void CListVw::paste()
{
    const std::uint32_t time = m_parts.panel.GetLocation();
    const auto target = [&] { return m_edits.blkFor(m_track, time); };
    const std::vector<EvntRef> pasted = m_parts.clipboard.pasteEvnts(m_track, time, target);
    if (m_stale) refresh();
    if (pasted.empty()) return;
    select(pasted);
    scrollTo(currentIndex());
}

// Inserting -------------------------------------------------------------------------------------------------

std::uint32_t CListVw::insertTime() const
{
    const auto row = currentRow();
    return row ? rows().time(*row) : m_parts.panel.GetLocation();
}

std::uint8_t CListVw::channel() const
{
    const CTrk* trk = List<CTrk>::get(m_parts.editor.GetTrkPos(m_track));
    return trk ? trk->GetCh() : std::uint8_t{0};
}

void CListVw::fillInsertMenu(QMenu& menu)
{
    const CTrk* trk = List<CTrk>::get(m_parts.editor.GetTrkPos(m_track));
    const bool isUnused = !trk || trk->GetType() == trktype::unused;
    fillKinds(menu, kindsToInsert(m_track, isUnused ? trktype::midi : trk->GetType()), m_parts.text,
              [this](EvntKind kind, std::optional<std::uint8_t> controller) {
                  EvntDraft draft = newEvnt(kind, insertTime(), channel());
                  if (controller) draft.rec.post1 = *controller;
                  insert(std::move(draft));
              });
}

int CListVw::firstValueColumn(const CEvnt& event) const
{
    for (const ListColumn column : {ListColumn::value1, ListColumn::data, ListColumn::gate})
        if (m_cells.isEditable(event, column)) return static_cast<int>(column);
    return 0;
}

void CListVw::insert(EvntDraft draft)
{
    if (isLocked()) return;
    const auto made = m_edits.insert(m_track, std::move(draft));
    if (m_stale) refresh();
    if (!made) return;
    if (!rows().find(*made)) { // of a kind that is left out
        RowFilter filter = m_filter;
        filter.hiddenGroups &= ~(1U << static_cast<unsigned>(groupOf(*List<CEvnt>::get(made->evnt))));
        filter.channel = -1;
        setFilter(filter);
    }
    goTo(*made);
    if (const auto row = rows().find(*made))
        openCell(m_model.index(static_cast<int>(*row), firstValueColumn(rows().event(*row))));
}

bool CListVw::find(const QString& text, bool backwards)
{
    if (m_stale) refresh();
    const auto count = static_cast<std::ptrdiff_t>(rows().count());
    if (text.isEmpty() || count == 0) return false;
    std::array<bool, evntKinds> isMeant{};
    for (std::size_t kind = 0; kind < isMeant.size(); ++kind)
        isMeant[kind] = kindName(static_cast<EvntKind>(kind), m_parts.text).contains(text, Qt::CaseInsensitive);
    const std::ptrdiff_t from = currentRow() ? currentIndex().row() : backwards ? 0 : count - 1;
    for (std::ptrdiff_t step = 1; step <= count; ++step) {
        const auto row = static_cast<std::size_t>((from + (backwards ? count - step : step)) % count);
        for (int column = static_cast<int>(ListColumn::kind); column < listColumns; ++column) {
            const bool isFound = static_cast<ListColumn>(column) == ListColumn::kind
                                   ? isMeant[static_cast<std::size_t>(kindOf(rows().event(row)))]
                                   : cellText(row, static_cast<ListColumn>(column)).contains(text, Qt::CaseInsensitive);
            if (!isFound) continue;
            goTo(rows().ref(row));
            setCurrentIndex(m_model.index(static_cast<int>(row), column));
            return true;
        }
    }
    return false;
}

} // namespace tessaro
