// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/master_frame.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "core/ports/settings_store.h"
#include "views/editors/command_buttons.h"
#include "views/list/kind_filter.h"
#include "views/list/list_view.h"
#include "views/master/tempo_view.h"
#include "views/roll/grid.h"
#include "views/roll/grid_box.h"
#include "views/roll/grid_commands.h"
#include "views/text/ui_text.h"
#include "views/widgets/elided_label.h"
#include "views/widgets/folding_row.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace tessaro {
namespace {

constexpr double zoomStep = 1.5;
constexpr int curveHeight = 320;
constexpr int listHeight = 200;
constexpr const char* section = "View Condition";
constexpr const char* heightKey = "Master Interval";
constexpr const char* filterSection = "Track";
constexpr const char* filterKey = "Master Filter"; ///< a bit for each kind group that is shown

} // namespace

CMstrFrm::CMstrFrm(const ViewParts& parts)
    : m_parts(parts)
    , m_bar(new FoldingRow(this))
    , m_grid(new GridBox(parts))
    , m_kinds(new KindFilter(parts.text))
    , m_pointed(new ElidedLabel)
    , m_splitter(new QSplitter(Qt::Vertical, this))
    , m_list(new CListVw(parts, 0, nullptr))
    , m_curve(new TempoView(parts, *m_list, nullptr))
    , m_across(new QScrollBar(Qt::Horizontal))
{
    buildBar();
    auto* picture = new QWidget;
    auto* inPicture = new QVBoxLayout(picture);
    inPicture->setContentsMargins(0, 0, 0, 0);
    inPicture->setSpacing(0);
    inPicture->addWidget(m_curve, 1);
    inPicture->addWidget(m_across);
    m_splitter->addWidget(picture);
    m_splitter->addWidget(m_list);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setSizes({curveHeight, listHeight});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_splitter, 1);
    setFocusProxy(m_curve);

    const auto shown = static_cast<std::uint32_t>(m_parts.store.getInt(filterSection, filterKey, -1));
    m_list->setFilter({~shown, -1});
    m_list->onFilter = [this](const RowFilter& filter) {
        m_parts.store.setInt(filterSection, filterKey, static_cast<int>(~filter.hiddenGroups));
    };
    m_list->onChanged = [this] { showState(); };
    m_curve->onScaleChanged = [this] { showScale(); };
    m_curve->onPointed = [this](const QString& words) { m_pointed->setText(words); };
    connect(m_across, &QScrollBar::valueChanged, this,
            [this](int pixels) { m_curve->scrollTo(static_cast<std::uint32_t>(pixels * m_curve->scale().zoom())); });
    m_parts.editor.addObserver(this);
    retranslate();
    showScale();
}

CMstrFrm::~CMstrFrm() { m_parts.editor.removeObserver(this); }

void CMstrFrm::buildBar()
{
    m_bar->addGroup(commandButtons(m_parts, {{ViewCommand::toolSelect, "select"},
                                             {ViewCommand::toolPencil, "pencil"},
                                             {ViewCommand::toolLine, "line"},
                                             {ViewCommand::toolCurve, "curve"},
                                             {ViewCommand::toolEraser, "eraser"}}),
                    0);
    m_bar->addGroup(m_grid, 1);
    m_bar->addGroup(commandButtons(m_parts, {{ViewCommand::insertEvent, "plus"}, {ViewCommand::remove, "delete"}}), 2);
    m_bar->addGroup(commandButtons(m_parts, {{ViewCommand::zoomIn, "zoom-in"},
                                             {ViewCommand::zoomOut, "zoom-out"},
                                             {ViewCommand::zoomToSong, "zoom-fit"}}),
                    3);
    m_bar->addGroup(m_kinds, 4);
    m_bar->setFiller(m_pointed);
    m_pointed->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_kinds->onChosen = [this](std::uint32_t hidden) { m_list->setFilter({hidden, -1}); };
    m_grid->onChanged = [this] { showState(); };
}

QString CMstrFrm::title() const { return m_parts.text(TextId::masterTitle); }

void CMstrFrm::showScale()
{
    const QSignalBlocker quiet(m_across);
    const TempoScale& scale = m_curve->scale();
    const int page = std::max(scale.width() - TempoScale::left, 1);
    const auto end = static_cast<int>(std::max(m_curve->songEnd(), scale.start()) / scale.zoom());
    m_across->setRange(0, end);
    m_across->setPageStep(page);
    m_across->setSingleStep(page / 8);
    m_across->setValue(static_cast<int>(scale.start() / scale.zoom()));
}

void CMstrFrm::showState()
{
    m_curve->update();
    if (m_kinds->hidden() != m_list->filter().hiddenGroups)
        m_kinds->show(groupsOn(0, trktype::midi), m_list->filter().hiddenGroups);
    if (onChanged) onChanged();
}

bool CMstrFrm::can(ViewCommand command) const
{
    if (grid_commands::can(m_parts.grid, command)) return true;
    switch (command) {
    case ViewCommand::zoomIn:
    case ViewCommand::zoomOut:
    case ViewCommand::zoomToSong: return true;
    case ViewCommand::zoomToSelection: return !m_list->selection().empty();
    case ViewCommand::nudgeUp:
    case ViewCommand::nudgeDown:
    case ViewCommand::octaveUp:
    case ViewCommand::octaveDown: return m_list->commands().can(ViewCommand::remove);
    default: return m_list->commands().can(command);
    }
}

void CMstrFrm::run(ViewCommand command)
{
    if (grid_commands::run(m_parts.grid, command)) return;
    switch (command) {
    case ViewCommand::zoomIn: m_curve->zoom(zoomStep); break;
    case ViewCommand::zoomOut: m_curve->zoom(1 / zoomStep); break;
    case ViewCommand::zoomToSong: m_curve->fitSong(); break;
    case ViewCommand::zoomToSelection: m_curve->fitSelection(); break;
    case ViewCommand::nudgeUp: changeTempos(1); break;
    case ViewCommand::nudgeDown: changeTempos(-1); break;
    case ViewCommand::octaveUp: changeTempos(10); break;
    case ViewCommand::octaveDown: changeTempos(-10); break;
    case ViewCommand::properties:
    case ViewCommand::openEditor:
    case ViewCommand::editCell:
        if (m_curve->hasFocus() && m_curve->openSelected()) break;
        m_list->setFocus();
        [[fallthrough]];
    default: m_list->commands().run(command);
    }
}

void CMstrFrm::changeTempos(double beats)
{
    const std::vector<EvntRef> refs = m_list->selection().inOrder();
    if (!refs.empty() && can(ViewCommand::remove))
        MasterEdits(m_parts.editor, m_list->edits()).moveTempos(refs, 0, beats);
}

bool CMstrFrm::isOn(ViewCommand command) const { return grid_commands::isOn(m_parts.grid, command); }

std::vector<EvntRef> CMstrFrm::selectedEvnts() const { return m_list->selection().inOrder(); }
void CMstrFrm::selectEvnts(std::span<const EvntRef> refs) { m_list->select(refs); }

void CMstrFrm::setPosition(std::uint32_t tick, bool follow)
{
    m_list->setPosition(tick, follow);
    m_curve->setPosition(tick, follow);
}

void CMstrFrm::songReplaced()
{
    m_list->songReplaced();
    m_curve->markStale();
    m_curve->scrollTo(0);
}

void CMstrFrm::retranslate()
{
    m_list->retranslate();
    m_curve->retranslate();
    m_across->setAccessibleName(m_parts.text(TextId::scrollTime));
    m_grid->retranslate();
    m_kinds->show(groupsOn(0, trktype::midi), m_list->filter().hiddenGroups);
    showState();
}

void CMstrFrm::saveState()
{
    m_curve->scale().save(m_parts.store);
    m_parts.store.setInt(section, heightKey, m_splitter->sizes().value(0));
}

void CMstrFrm::restoreState()
{
    m_curve->scale().load(m_parts.store);
    const int height = m_parts.store.getInt(section, heightKey, 0);
    if (height > 0) m_splitter->setSizes({height, std::max(m_splitter->height() - height, listHeight)});
    showScale();
}

void CMstrFrm::showEvent(QShowEvent* event)
{
    m_list->catchUp();
    showScale();
    ChildFrame::showEvent(event);
}

/// The curve is drawn from the song again at the next painting.
void CMstrFrm::onHint(const HintObserver*, int code, CEditor* editor)
{
    switch (code) {
    case hint::dispReq:
        if (isVisible()) showScale();
        break;
    case hint::evntChng:
    case hint::tsChng:
    case hint::locationChng:
    case hint::delEvnt:
    case hint::insEvnt: {
        POSITION trk = nullptr;
        POSITION blk = nullptr;
        if (editor) editor->GetHint(trk, blk);
        if (!editor || trk == m_parts.editor.GetTrkPos(0)) m_curve->markStale();
        break;
    }
    case hint::measChng:
    case hint::trkArrange: m_curve->markStale(); break;
    default: break;
    }
}

} // namespace tessaro
