// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_frame.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "core/ports/settings_store.h"
#include "views/editors/track_label.h"
#include "views/editors/view_actions.h"
#include "views/edits/everyday_edits.h"
#include "views/roll/grid.h"
#include "views/roll/grid_box.h"
#include "views/roll/note_prop_page.h"
#include "views/roll/note_status.h"
#include "views/roll/note_text.h"
#include "views/roll/roll_commands.h"
#include "views/roll/roll_view.h"
#include "views/roll/strip_splitter.h"
#include "views/roll/strip_view.h"
#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/widgets/folding_row.h"
#include "views/widgets/tool_button.h"

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
constexpr int scrollUnit = 4;          ///< ticks of a step of the scroll bar, so that all ticks fit into its numbers
constexpr std::uint32_t beyond = 7680; ///< ticks behind the song's end that are always in reach
constexpr int usualTracks = 16;
constexpr QSize buttonSize(28, 28);
constexpr int iconSize = 18;

/// A kind of strip as the number of a row, and back.
int codeOf(const StripKind& kind)
{
    const bool isOfAKey = kind.what == StripKind::What::polyPressure; // one row for all keys
    return static_cast<int>(kind.what) << 8 | (isOfAKey ? 0 : kind.number);
}
StripKind kindOf(int code) { return {static_cast<StripKind::What>(code >> 8), static_cast<std::uint8_t>(code & 0x7F)}; }

} // namespace

RollFrame::RollFrame(const ViewParts& parts, CRollView* view)
    : m_parts(parts)
    , m_view(view)
    , m_strip(new StripView(parts, *view))
    , m_commands(std::make_unique<RollCommands>(parts, *m_view, *m_strip))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    buildToolBar();
    buildArea();
    connectView();
    setFocusProxy(m_view);
    m_view->setFocus();
    m_parts.editor.addObserver(this);
}

RollFrame::~RollFrame()
{
    m_parts.editor.removeObserver(this);
    // They borrow from one another, so they go here, in order, rather than as children do.
    delete m_strip;
    delete m_view;
}

// Building

void RollFrame::showStrip(bool on)
{
    m_stripArea->setVisible(on);
    m_splitter->setWanted(m_splitter->wanted());
}

QWidget* RollFrame::makeButtons(std::initializer_list<std::pair<ViewCommand, const char*>> commands)
{
    auto* group = new QWidget;
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (const auto& [command, icon] : commands) {
        auto* button = new ToolButton(m_parts.icons, QString::fromLatin1(icon), m_parts.actions[command], group);
        button->setSize(buttonSize, iconSize);
        row->addWidget(button);
    }
    return group;
}

void RollFrame::buildToolBar()
{
    m_toolBar = new FoldingRow(this);
    m_toolBar->setContentsMargins(8, 4, 8, 4);
    layout()->addWidget(m_toolBar);

    m_tracks = new ChoiceBox;
    m_tracks->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_tracks->setMinimumContentsLength(12);
    connect(m_tracks, &QComboBox::activated, this, [this] { setTrack(m_tracks->chosen(track())); });
    addToToolBar(m_tracks, 0);

    addToToolBar(makeButtons({{ViewCommand::toolSelect, "select"},
                              {ViewCommand::toolPencil, "pencil"},
                              {ViewCommand::toolEraser, "eraser"},
                              {ViewCommand::toolDivide, "divide"},
                              {ViewCommand::toolJoin, "join"},
                              {ViewCommand::toolVelocity, "velocity"},
                              {ViewCommand::toolLine, "line"},
                              {ViewCommand::toolCurve, "curve"}}),
                 4);

    m_grid = new GridBox(m_parts.icons, m_parts.text);
    m_grid->onChosen = [this](int index, bool free) {
        m_parts.grid.setIndex(index);
        m_parts.grid.setFree(free);
        m_view->update();
    };
    addToToolBar(m_grid, 1);

    m_kinds = new ChoiceBox;
    m_kinds->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_kinds->setMinimumContentsLength(12);
    connect(m_kinds, &QComboBox::activated, this, [this] { chooseKind(m_kinds->chosen(0)); });
    QWidget* strip = makeButtons({{ViewCommand::controlStrip, "strip"}});
    strip->layout()->addWidget(m_kinds);
    addToToolBar(strip, 2);

    m_audition.setCheckable(true);
    m_audition.setChecked(true);
    connect(&m_audition, &QAction::toggled, this, [this](bool on) { m_view->setAudition(on); });
    auto* audition = new ToolButton(m_parts.icons, QStringLiteral("speaker"), m_audition);
    audition->setSize(buttonSize, iconSize);
    QWidget* switches = makeButtons({{ViewCommand::shadows, "shadows"}});
    switches->layout()->addWidget(audition);
    addToToolBar(switches, 3);

    if (!m_parts.edit) return;
    auto* quantise = new ToolButton(m_parts.icons, QStringLiteral("quantise"), *m_parts.edit(EverydayEdit::quantise));
    quantise->setSize(buttonSize, iconSize);
    addToToolBar(quantise, 2);
}

void RollFrame::addToToolBar(QWidget* group, int rank) { m_toolBar->addGroup(group, rank); }

void RollFrame::buildArea()
{
    m_across = new QScrollBar(Qt::Horizontal);
    m_down = new QScrollBar(Qt::Vertical);
    m_status = new NoteStatus(m_parts.text);
    const auto beside = [](QWidget* left, QWidget* right) {
        auto* area = new QWidget;
        auto* row = new QHBoxLayout(area);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(0);
        row->addWidget(left, 1);
        row->addWidget(right);
        return area;
    };
    QWidget* notes = beside(m_view, m_down);
    auto* corner = new QWidget; // as wide as the scroll bar above
    corner->setFixedWidth(m_down->sizeHint().width());
    m_stripArea = beside(m_strip, corner);
    m_splitter = new StripSplitter(notes, m_stripArea);

    auto* column = static_cast<QVBoxLayout*>(layout());
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

void RollFrame::connectView()
{
    m_view->onScale = [this] { showScale(); };
    m_view->onSelection = [this] { followSelection(); };
    m_view->onProperties = [this] { showProperties(); };
    m_view->onMenu = m_strip->onMenu = [this](const QPoint& place) { showMenu(place); };
    m_view->onPointed = m_strip->onPointed = [this](const NoteStatus::Values& values) { m_status->show(values); };
}

void RollFrame::fillTracks()
{
    m_tracksStale = false;
    const QSignalBlocker quiet(m_tracks);
    m_tracks->clear();
    for (int number = 1; number < trackCount; ++number) {
        const CTrk& trk = *m_parts.editor.song().trk(number);
        const bool isUsed = trk.blocks().head() || number <= usualTracks || number == track();
        if (!isUsed || trk.GetType() == trktype::wave) continue;
        m_tracks->add(trackLabel(m_parts.editor, number, m_parts.text), number);
    }
    m_tracks->choose(track());
}

void RollFrame::fillKinds()
{
    const UiText& text = m_parts.text;
    using What = StripKind::What;
    const QSignalBlocker quiet(m_kinds);
    m_kinds->clear();
    m_kinds->add(text(TextId::stripVelocity), codeOf({What::velocity, 0}));
    m_kinds->add(text(TextId::stripBend), codeOf({What::pitchBend, 0}));
    m_kinds->add(text(TextId::stripPressure), codeOf({What::pressure, 0}));
    m_kinds->add(text(TextId::stripPolyPressure), codeOf({What::polyPressure, 0}));
    m_kinds->add(text(TextId::stripProgram), codeOf({What::program, 0}));
    m_kinds->insertSeparator(m_kinds->count());
    for (int control = 0; control < 128; ++control)
        m_kinds->add(controllerName(control, text), codeOf({What::control, static_cast<std::uint8_t>(control)}));
    m_kinds->choose(codeOf(m_strip->kind()));
    m_strip->setName(m_kinds->currentText());
}

/// The pressure of single keys is that of the selected note.
void RollFrame::chooseKind(int code)
{
    StripKind kind = kindOf(code);
    if (kind.what == StripKind::What::polyPressure) {
        constexpr std::uint8_t middleC = 60;
        const std::vector<EvntRef> refs = selectedEvnts();
        const auto note = refs.empty() ? std::nullopt : NoteTables::noteOf(refs.front());
        kind.number = note ? note->key : middleC;
    }
    m_strip->setKind(kind);
    m_strip->setName(m_kinds->currentText());
}

void RollFrame::retranslate()
{
    const UiText& text = m_parts.text;
    m_tracks->setToolTip(text(TextId::rollTrack));
    m_tracks->setAccessibleName(text(TextId::rollTrack));
    m_kinds->setToolTip(text(TextId::stripChoice));
    m_kinds->setAccessibleName(text(TextId::stripChoice));
    m_audition.setIconText(text(TextId::rollAudition));
    fillTracks();
    fillKinds();
    m_grid->retranslate();
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
    m_parts.store.setInt(section, name + stripKindKey, codeOf(m_strip->kind()));
    m_parts.grid.save(m_parts.store);
}

void RollFrame::restoreState()
{
    m_view->rescale([this](RollScale& scale) { scale.load(m_parts.store, settingsName()); });
    m_splitter->setWanted(m_parts.store.getInt(section, stripHeightKey, m_splitter->wanted()));
    const std::string name = settingsName();
    showStrip(m_parts.store.getInt(section, name + stripKey, true));
    m_kinds->choose(m_parts.store.getInt(section, name + stripKindKey, 0));
    if (m_kinds->currentIndex() < 0) m_kinds->choose(0);
    chooseKind(m_kinds->chosen(0));
    m_grid->show(m_parts.grid.index(), m_parts.grid.isFree());
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
    return command == ViewCommand::shadows && m_view->shadows();
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
    if (!m_properties) m_properties = new CPnoNotePropPage(m_parts, this);
    m_properties->show();
    followSelection();
    m_properties->raise();
    m_properties->activateWindow();
}

void RollFrame::showMenu(const QPoint& place)
{
    using enum ViewCommand;
    constexpr ViewCommand groups[][6] = {
        {cut, copy, paste, remove, duplicate, properties},
        {joinNotes, splitNotes, longer, shorter, octaveUp, octaveDown},
        {selectAll, selectNone, invertSelection, zoomToSelection, shadows, controlStrip},
    };
    m_parts.actions.refresh();
    QMenu menu(this);
    for (const auto& group : groups) {
        for (const ViewCommand command : group) menu.addAction(&m_parts.actions[command]);
        menu.addSeparator();
    }
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

void RollFrame::showSelectedNotes()
{
    std::vector<EvntRef> refs = selectedEvnts();
    std::erase_if(refs, [](const EvntRef& ref) { return !NoteTables::noteOf(ref); });
    m_properties->setNotes(std::move(refs));
}

void RollFrame::followSelection()
{
    m_status->setSelected(m_view->selection().count());
    m_strip->update();
    if (m_properties && m_properties->isVisible()) showSelectedNotes();
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
    if (code == hint::trkArrange || code == hint::trkType) fillTracks();
    if (code != hint::dispReq) return;
    m_songEnd = m_view->songEnd();
    if (m_tracksStale) fillTracks();
    showScale();
    m_strip->update();
    if (m_properties && m_properties->isVisible()) showSelectedNotes();
}

} // namespace tessaro
