// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_tool_bar.h"

#include "core/edit/editor.h"
#include "views/editors/command_buttons.h"
#include "views/editors/track_label.h"
#include "views/edits/everyday_edits.h"
#include "views/roll/grid_box.h"
#include "views/roll/note_text.h"
#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/widgets/tool_button.h"

#include <QLayout>
#include <QSignalBlocker>

namespace tessaro {
namespace {

constexpr int usualTracks = 16;
constexpr QSize buttonSize(28, 28);
constexpr int iconSize = 16;
constexpr int shortestName = 12; ///< letters that a box has room for

ChoiceBox* makeBox(QWidget* parent)
{
    auto* box = new ChoiceBox(parent);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(shortestName);
    return box;
}

} // namespace

RollToolBar::RollToolBar(const ViewParts& parts, QWidget* parent)
    : FoldingRow(parent)
    , m_parts(parts)
    , m_tracks(makeBox(this))
    , m_grid(new GridBox(parts, this))
    , m_kinds(makeBox(this))
{
    setContentsMargins(8, 4, 8, 4);
    connect(m_tracks, &QComboBox::activated, this, [this] {
        if (onTrack && m_tracks->currentIndex() >= 0) onTrack(m_tracks->currentData().toInt());
    });
    connect(m_kinds, &QComboBox::activated, this, [this] {
        if (onKind) onKind();
    });
    addGroup(m_tracks, 0);
    addGroup(commandButtons(parts, {{ViewCommand::toolSelect, "select"},
                                    {ViewCommand::toolPencil, "pencil"},
                                    {ViewCommand::toolEraser, "eraser"},
                                    {ViewCommand::toolDivide, "divide"},
                                    {ViewCommand::toolJoin, "join"},
                                    {ViewCommand::toolVelocity, "velocity"},
                                    {ViewCommand::toolLine, "line"},
                                    {ViewCommand::toolCurve, "curve"}}),
             4);
    addGroup(m_grid, 1);
    QWidget* strip = commandButtons(parts, {{ViewCommand::controlStrip, "strip"}});
    strip->layout()->addWidget(m_kinds);
    addGroup(strip, 2);
    addGroup(commandButtons(parts, {{ViewCommand::shadows, "shadows"}, {ViewCommand::audition, "speaker"}}), 3);
    if (!m_parts.edit) return;
    auto* quantise = new ToolButton(m_parts.icons, QStringLiteral("quantise"), *m_parts.edit(EverydayEdit::quantise));
    quantise->setSize(buttonSize, iconSize);
    addGroup(quantise, 2);
}

void RollToolBar::fillTracks(int shown)
{
    const QSignalBlocker quiet(m_tracks);
    m_tracks->clear();
    for (int number = 1; number < trackCount; ++number) {
        const CTrk& trk = *m_parts.editor.song().trk(number);
        const bool isUsed = trk.blocks().head() || number <= usualTracks || number == shown;
        if (!isUsed || trk.GetType() == trktype::wave) continue;
        m_tracks->add(trackLabel(m_parts.editor, number, m_parts.text), number);
    }
    m_tracks->choose(shown);
}

StripKind RollToolBar::kind() const { return StripKind::ofCode(m_kinds->chosen(0)); }

QString RollToolBar::kindName() const { return m_kinds->currentText(); }

void RollToolBar::chooseKind(int code)
{
    m_kinds->choose(code);
    if (m_kinds->currentIndex() < 0) m_kinds->choose(StripKind{}.code());
}

void RollToolBar::fillKinds()
{
    const UiText& text = m_parts.text;
    const int chosen = kind().code();
    using What = StripKind::What;
    const QSignalBlocker quiet(m_kinds);
    m_kinds->clear();
    for (const auto& [what, name] : {std::pair(What::velocity, TextId::stripVelocity),
                                     {What::pitchBend, TextId::stripBend},
                                     {What::pressure, TextId::stripPressure},
                                     {What::polyPressure, TextId::stripPolyPressure},
                                     {What::program, TextId::stripProgram}})
        m_kinds->add(text(name), StripKind{what, 0}.code());
    m_kinds->insertSeparator(m_kinds->count());
    for (int control = 0; control < 128; ++control)
        m_kinds->add(controllerName(control, text),
                     StripKind{What::control, static_cast<std::uint8_t>(control)}.code());
    chooseKind(chosen);
}

void RollToolBar::retranslate()
{
    const UiText& text = m_parts.text;
    m_tracks->setToolTip(text(TextId::rollTrack));
    m_tracks->setAccessibleName(text(TextId::rollTrack));
    m_kinds->setToolTip(text(TextId::stripChoice));
    m_kinds->setAccessibleName(text(TextId::stripChoice));
    fillKinds();
    m_grid->retranslate();
}

} // namespace tessaro
