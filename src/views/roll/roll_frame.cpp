// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_frame.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "core/ports/settings_store.h"
#include "views/editors/command_buttons.h"
#include "views/editors/evnt_kinds.h"
#include "views/editors/track_label.h"
#include "views/editors/view_actions.h"
#include "views/roll/grid_box.h"
#include "views/roll/note_prop_page.h"
#include "views/roll/note_status.h"
#include "views/roll/roll_commands.h"
#include "views/roll/roll_tool_bar.h"
#include "views/roll/roll_view.h"
#include "views/roll/strip_splitter.h"
#include "views/roll/strip_view.h"
#include "views/text/ui_text.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace tessaro {
namespace {

constexpr const char* section = "View Condition";
constexpr const char* stripHeightKey = "Piano Interval";
constexpr const char* stripKey = " Strip"; ///< behind the window's own name, as the next
constexpr const char* stripKindKey = " Strip Kind";
constexpr const char* auditionKey = " Audition";
constexpr int scrollUnit = 4;          ///< ticks of a step of the scroll bar, so that all ticks fit into its numbers
constexpr std::uint32_t beyond = 7680; ///< ticks behind the song's end that are always in reach

/// The left one takes the room.
QWidget* beside(QWidget* left, QWidget* right)
{
    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(left, 1);
    row->addWidget(right);
    return area;
}

} // namespace

RollFrame::RollFrame(const ViewParts& parts, CRollView* view)
    : m_parts(parts)
    , m_view(view)
    , m_strip(new StripView(parts, *view))
    , m_toolBar(new RollToolBar(parts))
    , m_commands(std::make_unique<RollCommands>(parts, *m_view, *m_strip))
{
    buildArea();
    connectToolBar();
    connectView();
    setFocusPolicy(Qt::ClickFocus); // a click on what does not take the keys goes to the window all the same
    setFocusProxy(m_view);
    m_view->setFocus();
    m_parts.editor.addObserver(this);
}

RollFrame::~RollFrame()
{
    m_parts.editor.removeObserver(this);
    // They borrow from one another, so they go here, in order, rather than as children do.
    delete m_properties;
    delete m_strip;
    delete m_view;
}

// Building

void RollFrame::showStrip(bool on)
{
    m_stripArea->setVisible(on);
    m_splitter->setWanted(m_splitter->wanted());
}

void RollFrame::buildArea()
{
    m_across = new QScrollBar(Qt::Horizontal);
    m_down = new QScrollBar(Qt::Vertical);
    m_status = new NoteStatus(m_parts.text);
    auto* corner = new QWidget; // as wide as the scroll bar above
    corner->setFixedWidth(m_down->sizeHint().width());
    m_stripArea = beside(m_strip, corner);
    m_splitter = new StripSplitter(beside(m_view, m_down), m_stripArea);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_toolBar);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_across);
    column->addWidget(m_status);
    connect(m_across, &QScrollBar::valueChanged, this, [this](int value) {
        m_view->rescale([value](RollScale& scale) {
            scale.setStart(static_cast<std::uint32_t>(value) * static_cast<std::uint32_t>(scrollUnit));
        });
    });
    connect(m_down, &QScrollBar::valueChanged, this,
            [this](int value) { m_view->rescale([value](RollScale& scale) { scale.setScroll(value); }); });
}

void RollFrame::connectToolBar()
{
    m_toolBar->onTrack = [this](int track) { setTrack(track); };
    m_toolBar->onKind = [this] { showKind(); };
    gridBox().onChanged = [this] {
        m_view->update();
        m_strip->update();
        if (onChanged) onChanged();
    };
}

void RollFrame::connectView()
{
    m_view->onScale = [this] { showScale(); };
    m_view->onSelection = [this] { followSelection(); };
    m_view->onProperties = [this] { showProperties(); };
    m_view->onMenu = m_strip->onMenu = [this](const QPoint& place) { showMenu(place); };
    m_view->onPointed = m_strip->onPointed = [this](const NoteStatus::Values& values) { m_status->show(values); };
}

GridBox& RollFrame::gridBox() const { return m_toolBar->gridBox(); }

void RollFrame::addToToolBar(QWidget* group, int rank) { m_toolBar->addGroup(group, rank); }

void RollFrame::fillTracks()
{
    m_tracksStale = false;
    m_toolBar->fillTracks(track());
}

/// The pressure of single keys is that of the selected note.
void RollFrame::showKind()
{
    constexpr std::uint8_t middleC = 60;
    StripKind kind = m_toolBar->kind();
    if (kind.what == StripKind::What::polyPressure) {
        const std::vector<EvntRef> notes = selectedNotes();
        kind.number = notes.empty() ? middleC : evntOf(notes.front()).GetPost1();
    }
    m_strip->setKind(kind);
    m_strip->setName(m_toolBar->kindName());
}

void RollFrame::retranslate()
{
    const UiText& text = m_parts.text;
    m_across->setAccessibleName(text(TextId::scrollTime));
    m_down->setAccessibleName(text(TextId::scrollKeys));
    m_toolBar->retranslate();
    m_strip->setName(m_toolBar->kindName());
    fillTracks();
    m_view->retranslate();
    m_strip->retranslate();
    m_status->retranslate();
    if (m_properties) m_properties->retranslate();
}

// The window among others

QString RollFrame::title() const
{
    return QStringLiteral("%1 – %2").arg(m_parts.text.plain(windowName()),
                                         trackLabel(m_parts.editor, track(), m_parts.text));
}

int RollFrame::track() const { return m_view->track(); }

void RollFrame::setTrack(int track)
{
    m_view->setTrack(track);
    m_strip->setTrack(track);
    m_songEnd = m_view->songEnd();
    fillTracks();
    showScale();
    if (onChanged) onChanged();
}

std::vector<EvntRef> RollFrame::selectedEvnts() const { return m_view->selection().inOrder(); }

void RollFrame::selectEvnts(std::span<const EvntRef> refs)
{
    m_view->selection().clear();
    const POSITION trk = m_parts.editor.GetTrkPos(track());
    for (const EvntRef& ref : refs)
        if (ref.trk == trk) m_view->selection().add(ref);
    m_view->selectionChanged();
}

void RollFrame::setPosition(std::uint32_t tick, bool follow)
{
    m_view->setPosition(tick, follow);
    m_strip->setPosition(tick);
}

void RollFrame::reveal(std::uint32_t tick) { m_view->reveal(tick); }

void RollFrame::songReplaced()
{
    delete std::exchange(m_properties, nullptr);
    m_view->songReplaced();
    setTrack(track());
    setPosition(0, false);
}

void RollFrame::saveState()
{
    const std::string name = settingsName();
    m_view->scale().save(m_parts.store, settingsName());
    m_parts.store.setInt(section, stripHeightKey, m_splitter->wanted());
    m_parts.store.setInt(section, name + stripKey, m_stripArea->isVisibleTo(this));
    m_parts.store.setInt(section, name + stripKindKey, m_strip->kind().code());
    m_parts.store.setInt(section, name + auditionKey, m_view->audition());
}

void RollFrame::restoreState()
{
    m_view->rescale([this](RollScale& scale) { scale.load(m_parts.store, settingsName()); });
    m_splitter->setWanted(m_parts.store.getInt(section, stripHeightKey, m_splitter->wanted()));
    const std::string name = settingsName();
    showStrip(m_parts.store.getInt(section, name + stripKey, true));
    m_toolBar->chooseKind(m_parts.store.getInt(section, name + stripKindKey, 0));
    showKind();
    m_view->setAudition(m_parts.store.getInt(section, name + auditionKey, true) != 0);
}

// Commands

bool RollFrame::can(ViewCommand command) const
{
    if (m_parts.editor.IsPrgDlg()) return false;
    switch (command) {
    case ViewCommand::controlStrip: return true;
    case ViewCommand::properties: return !m_view->selection().empty();
    default: return m_commands->can(command);
    }
}

bool RollFrame::isOn(ViewCommand command) const
{
    if (command == ViewCommand::controlStrip) return m_stripArea->isVisibleTo(this);
    return m_commands->isOn(command);
}

void RollFrame::run(ViewCommand command)
{
    switch (command) {
    case ViewCommand::controlStrip: showStrip(!m_stripArea->isVisibleTo(this)); break;
    case ViewCommand::properties: showProperties(); break;
    default: m_commands->run(command);
    }
    if (onChanged) onChanged();
}

void RollFrame::showProperties()
{
    if (!m_properties)
        m_properties = new CPnoNotePropPage(
            m_parts, m_view->commands(), [this] { return selectedNotes(); }, this);
    m_properties->show();
    m_properties->raise();
    m_properties->activateWindow();
}

void RollFrame::showMenu(const QPoint& place)
{
    using enum ViewCommand;
    m_parts.actions.refresh();
    QMenu menu(this);
    addCommands(menu, m_parts.actions, {cut, copy, paste, remove, duplicate, properties});
    addCommands(menu, m_parts.actions, {joinNotes, splitNotes, longer, shorter, octaveUp, octaveDown});
    addCommands(menu, m_parts.actions,
                {selectAll, selectNone, invertSelection, zoomToSelection, shadows, controlStrip, audition});
    menu.exec(place);
}

// What changes

void RollFrame::showScale()
{
    const RollScale& scale = m_view->scale();
    const TickRange seen = scale.span();
    const std::uint32_t page = seen.to - seen.from;
    const std::uint32_t end = std::max(tick::later(m_songEnd, beyond), tick::later(seen.to, page / 4));
    const auto units = [](std::uint32_t ticks) { return static_cast<int>(ticks / scrollUnit); };
    const QSignalBlocker quietAcross(m_across);
    const QSignalBlocker quietDown(m_down);
    m_across->setRange(0, units(end - std::min(end, page)));
    m_across->setPageStep(units(page));
    m_across->setSingleStep(units(static_cast<std::uint32_t>(40 * scale.zoom())));
    m_across->setValue(units(scale.start()));
    m_down->setRange(0, scale.mostScroll());
    m_down->setPageStep(std::max(scale.height() - RollScale::ruler, 1));
    m_down->setSingleStep(scale.rowHeight());
    m_down->setValue(scale.scroll());
    m_strip->update();
}

std::vector<EvntRef> RollFrame::selectedNotes() const
{
    std::vector<EvntRef> refs = selectedEvnts();
    std::erase_if(refs, [](const EvntRef& ref) { return !isNote(evntOf(ref)); });
    return refs;
}

void RollFrame::followSelection()
{
    m_status->setSelected(m_view->selection().count());
    m_strip->update();
    if (m_properties) m_properties->refresh();
    if (onChanged) onChanged();
}

void RollFrame::onHint(const HintObserver*, int code, CEditor* editor)
{
    if (!editor) return;
    m_strip->endGesture();
    m_view->followHint(code, *editor);
    const bool isOfTracks = code == hint::trkType || code == hint::trkArrange || code == hint::blkNew
                         || code == hint::blkDel || code == hint::addBlk || code == hint::blkMove;
    m_tracksStale = m_tracksStale || isOfTracks;
    m_isStale = m_isStale || code == hint::dispReq || code == hint::trkType; // which comes once, after the step
    if (m_isStale && isVisible()) refresh();
}

void RollFrame::refresh()
{
    m_isStale = false;
    m_view->refresh();
    m_songEnd = m_view->songEnd();
    if (m_tracksStale) fillTracks();
    showScale();
    m_strip->update();
    if (m_properties) m_properties->refresh();
}

void RollFrame::showEvent(QShowEvent* event)
{
    if (m_isStale) refresh();
    ChildFrame::showEvent(event);
}

} // namespace tessaro
