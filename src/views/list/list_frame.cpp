// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_frame.h"

#include "core/doc/list_settings.h"
#include "core/edit/editor.h"
#include "views/editors/command_buttons.h"
#include "views/editors/track_label.h"
#include "views/list/kind_filter.h"
#include "views/list/list_view.h"
#include "views/roll/grid_commands.h"
#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/widgets/elided_label.h"
#include "views/widgets/empty_hint.h"
#include "views/widgets/folding_row.h"
#include "views/widgets/keeps_key.h"

#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace tessaro {
namespace {

constexpr int midiChannels = 16;
constexpr int findWidth = 160;

} // namespace

CListFrm::CListFrm(const ViewParts& parts, int track)
    : m_parts(parts)
    , m_bar(new FoldingRow(this))
    , m_tracks(new ChoiceBox)
    , m_kinds(new KindFilter(parts.text))
    , m_channels(new ChoiceBox)
    , m_find(new QLineEdit)
    , m_count(new ElidedLabel)
    , m_pages(new QStackedWidget(this))
    , m_list(new CListVw(parts, track, nullptr))
    , m_empty(new EmptyHint(parts.icons.icon(QStringLiteral("list"))))
{
    buildBar();
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_empty);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_pages, 1);
    setFocusProxy(m_list);

    if (m_parts.listSettings)
        m_list->setFilter({static_cast<std::uint32_t>(m_parts.listSettings->monitorType),
                           std::clamp(m_parts.listSettings->monitor[0], 0, midiChannels) - 1});
    m_list->onFilter = [this](const RowFilter& filter) { keepFilter(filter); };
    m_list->onChanged = [this] { showState(); };
    connect(&m_empty->button(), &QPushButton::clicked, this, [this] {
        if (m_list->rows().total() != 0) {
            m_list->setFilter({});
            fillFilter();
        } else if (can(ViewCommand::insertEvent)) {
            const CTrk* trk = List<CTrk>::get(m_parts.editor.GetTrkPos(this->track()));
            const bool isWave = trk && trk->GetType() == trktype::wave;
            const EvntKind kind = this->track() == 0 ? EvntKind::marker : isWave ? EvntKind::wave : EvntKind::note;
            ListCommands& commands = m_list->commands();
            commands.insert(newEvnt(kind, commands.insertTime(), commands.channel()));
        }
    });
    m_parts.editor.addObserver(this);
    retranslate();
}

CListFrm::~CListFrm() { m_parts.editor.removeObserver(this); }

void CListFrm::buildBar()
{
    m_bar->setContentsMargins(8, 4, 8, 4);
    m_bar->addGroup(commandButtons(m_parts, {{ViewCommand::insertEvent, "plus"}, {ViewCommand::remove, "delete"}}), 0);
    m_bar->addGroup(
        commandButtons(m_parts,
                       {{ViewCommand::cut, "cut"}, {ViewCommand::copy, "copy"}, {ViewCommand::paste, "paste"}}),
        4);
    m_bar->addGroup(m_tracks, 2);
    QWidget* filter = commandButtons(m_parts, {});
    for (QWidget* part : std::initializer_list<QWidget*>{m_kinds, m_channels}) filter->layout()->addWidget(part);
    m_bar->addGroup(filter, 1);
    m_find->setFixedWidth(findWidth);
    m_find->setClearButtonEnabled(true);
    m_find->installEventFilter(this);
    m_bar->addGroup(m_find, 3);
    m_bar->setFiller(m_count);
    m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    connect(m_tracks, &QComboBox::activated, this, [this] { setTrack(m_tracks->chosen(track())); });
    connect(m_channels, &QComboBox::activated, this, [this] {
        m_list->setFilter({m_list->filter().hiddenGroups, m_channels->chosen(-1)});
    });
    m_kinds->onChosen = [this](std::uint32_t hidden) { m_list->setFilter({hidden, m_list->filter().channel}); };
}

QString CListFrm::title() const
{
    return m_parts.text(TextId::listTitleTrack).arg(trackLabel(m_parts.editor, track(), m_parts.text));
}
int CListFrm::track() const { return m_list->track(); }

void CListFrm::setTrack(int track)
{
    if (track == this->track()) return;
    m_list->setTrack(track);
    fillTracks();
    fillFilter();
    showState();
}

void CListFrm::fillTracks()
{
    m_tracks->clear();
    for (int track = 0; track < trackCount; ++track) {
        const CTrk* trk = List<CTrk>::get(m_parts.editor.GetTrkPos(track));
        if (trk && (track == 0 || track == this->track() || trk->GetType() != trktype::unused))
            m_tracks->add(trackLabel(m_parts.editor, track, m_parts.text), track);
    }
    m_tracks->choose(track());
}

void CListFrm::fillFilter()
{
    const CTrk* trk = List<CTrk>::get(m_parts.editor.GetTrkPos(track()));
    const std::uint8_t type = !trk || trk->GetType() == trktype::unused ? trktype::midi : trk->GetType();
    m_kinds->show(groupsOn(track(), type), m_list->filter().hiddenGroups);
    m_channels->choose(m_list->filter().channel);
    m_channels->setVisible(track() != 0);
}

void CListFrm::showState()
{
    const std::size_t shown = m_list->rows().count();
    const std::size_t total = m_list->rows().total();
    m_pages->setCurrentWidget(shown == 0 ? static_cast<QWidget*>(m_empty) : m_list);
    m_empty->setSentence(m_parts.text(total == 0 ? TextId::listEmpty : TextId::listFiltered));
    m_empty->button().setText(m_parts.text(total != 0     ? TextId::listShowAll
                                           : track() == 0 ? TextId::listInsertMarker
                                                          : TextId::listInsertNote));
    QString line = shown == total ? m_parts.text(TextId::listCount).arg(total)
                                  : m_parts.text(TextId::listCountOf).arg(shown).arg(total);
    if (const std::size_t selected = m_list->selection().count())
        line = m_parts.text(TextId::listSelected).arg(selected) + QStringLiteral("  ·  ") + line;
    m_count->setText(line);
    const RowFilter& filter = m_list->filter();
    if (filter != RowFilter{m_kinds->hidden(), m_channels->chosen(-1)}) fillFilter();
    if (onChanged) onChanged();
}

bool CListFrm::can(ViewCommand command) const
{
    return m_list->commands().can(command) || grid_commands::can(m_parts.grid, command);
}
bool CListFrm::isOn(ViewCommand command) const { return grid_commands::isOn(m_parts.grid, command); }
void CListFrm::run(ViewCommand command)
{
    if (!grid_commands::run(m_parts.grid, command)) m_list->commands().run(command);
}
std::vector<EvntRef> CListFrm::selectedEvnts() const { return m_list->selection().inOrder(); }
void CListFrm::selectEvnts(std::span<const EvntRef> refs) { m_list->select(refs); }
void CListFrm::setPosition(std::uint32_t tick, bool follow) { m_list->setPosition(tick, follow); }

void CListFrm::songReplaced()
{
    m_list->songReplaced();
    fillTracks();
    fillFilter();
    showState();
}

void CListFrm::retranslate()
{
    const UiText& text = m_parts.text;
    m_list->retranslate();
    m_channels->clear();
    m_channels->add(text(TextId::listAllChannels), -1);
    for (int channel = 0; channel < midiChannels; ++channel)
        m_channels->add(text(TextId::listChannelNumber).arg(channel + 1), channel);
    const auto describe = [&](QWidget& widget, TextId id) {
        widget.setToolTip(text(id));
        widget.setAccessibleName(text(id));
    };
    describe(*m_tracks, TextId::listTrackTip);
    describe(*m_channels, TextId::listChannelTip);
    describe(*m_find, TextId::listFindTip);
    m_find->setPlaceholderText(text(TextId::listFind));
    fillTracks();
    fillFilter();
    showState();
}

void CListFrm::keepFilter(const RowFilter& filter)
{
    if (!m_parts.listSettings) return;
    m_parts.listSettings->monitorType = static_cast<int>(filter.hiddenGroups);
    m_parts.listSettings->monitor[0] = filter.channel + 1;
}

/// Names, numbers and types of tracks, as far as they have changed.
void CListFrm::showTracks()
{
    if (!std::exchange(m_tracksStale, false)) return;
    fillTracks();
    fillFilter();
    if (onChanged) onChanged();
}

void CListFrm::onHint(const HintObserver*, int code, CEditor*)
{
    if (code == hint::trkArrange || code == hint::trkType) m_tracksStale = true;
    if (code != hint::dispReq || !m_tracksStale) return;
    if (isVisible())
        showTracks();
    else if (onChanged) // the title of a tab
        onChanged();
}

void CListFrm::showEvent(QShowEvent* event)
{
    m_list->catchUp();
    showTracks();
    ChildFrame::showEvent(event);
}

void CListFrm::find(bool backwards)
{
    if (!m_list->find(m_find->text(), backwards) && !m_find->text().isEmpty())
        m_parts.user.status(m_parts.text(TextId::listNotFound).arg(m_find->text()).toStdString());
}

bool CListFrm::eventFilter(QObject* watched, QEvent* event)
{
    if (keepsKey(event)) return true;
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            find(key->modifiers() & Qt::ShiftModifier);
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            m_list->setFocus();
            return true;
        }
    }
    return ChildFrame::eventFilter(watched, event);
}

} // namespace tessaro
