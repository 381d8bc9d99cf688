// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/edits/everyday_edits.h"

#include "core/edit/undo_scope.h"
#include "views/editors/view_actions.h"
#include "views/editors/view_parts.h"
#include "views/edits/edit_panel.h"
#include "views/edits/plan_text.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"

#include <QKeySequence>

namespace tessaro {
namespace {

struct Row {
    EverydayEdit edit;
    EverydayEdits::Entry entry;
    const char* icon;
    QKeyCombination key;
};

// In the order of the edits.
constexpr Row rows[] = {
    {EverydayEdit::quantise, {"quantise", TextId::editQuantise}, "quantise", Qt::Key_Q},
    {EverydayEdit::quantiseAgain, {"quantise-again", TextId::editQuantiseAgain}, nullptr, Qt::SHIFT | Qt::Key_Q},
    {EverydayEdit::humanise, {"humanise", TextId::editHumanise}, nullptr, Qt::SHIFT | Qt::Key_H},
    {EverydayEdit::transpose, {"transpose", TextId::editTranspose}, nullptr, Qt::Key_T},
    {EverydayEdit::velocity, {"velocity", TextId::editVelocity}, nullptr, Qt::SHIFT | Qt::Key_V},
    {EverydayEdit::gateTime, {"gate-time", TextId::editGateTime}, nullptr, Qt::Key_G},
    {EverydayEdit::setLength, {"set-length", TextId::editSetLength}, nullptr, Qt::SHIFT | Qt::Key_G},
    {EverydayEdit::legato, {"legato", TextId::editLegato}, nullptr, Qt::SHIFT | Qt::Key_J},
    {EverydayEdit::shift, {"shift", TextId::editShift}, nullptr, Qt::SHIFT | Qt::Key_T},
    {EverydayEdit::thin, {"thin-out", TextId::editThin}, nullptr, Qt::SHIFT | Qt::Key_C},
    {EverydayEdit::splitPitch, {"split-pitch", TextId::editSplitPitch}, nullptr, Qt::SHIFT | Qt::Key_P},
    {EverydayEdit::splitChannel, {"split-channel", TextId::editSplitChannel}, nullptr, Qt::SHIFT | Qt::Key_O},
    {EverydayEdit::chordSort, {"chord-sort", TextId::editChordSort}, nullptr, Qt::SHIFT | Qt::Key_S},
    {EverydayEdit::chordSeparate, {"chord-separate", TextId::editChordSeparate}, nullptr, Qt::SHIFT | Qt::Key_D},
    {EverydayEdit::removeDoubles, {"delete-doubles", TextId::editRemoveDoubles}, nullptr, Qt::SHIFT | Qt::Key_X},
};

constexpr bool inOrder()
{
    for (int i = 0; i < everydayEdits; ++i)
        if (rows[i].edit != static_cast<EverydayEdit>(i)) return false;
    return true;
}
static_assert(std::size(rows) == everydayEdits && inOrder());

constexpr int beside = 28; ///< pixels from a panel that is open, so that its title stays in sight

} // namespace

EverydayEdits::EverydayEdits(QWidget& window, const ViewParts& parts) : m_window(window), m_parts(parts)
{
    for (const Row& row : rows) {
        QAction& action = (*this)[row.edit];
        if (row.icon) action.setIcon(parts.icons.icon(QString::fromLatin1(row.icon)));
        action.setShortcut(QKeySequence(row.key));
        action.setShortcutContext(Qt::ApplicationShortcut);
        window.addAction(&action);
        QObject::connect(&action, &QAction::triggered, &window, [this, edit = row.edit] { run(edit); });
    }
    retranslate();
    parts.editor.addObserver(this);
}

EverydayEdits::~EverydayEdits() { m_parts.editor.removeObserver(this); }

const EverydayEdits::Entry& EverydayEdits::entry(EverydayEdit edit)
{
    return rows[static_cast<std::size_t>(edit)].entry;
}

void EverydayEdits::run(EverydayEdit edit)
{
    if (m_parts.isLocked()) return;
    if (edit == EverydayEdit::quantiseAgain || editKind(edit).fields.empty())
        apply(edit);
    else
        openPanel(edit);
}

std::vector<EvntRef> EverydayEdits::selection() const
{
    const ChildFrame* child = m_parts.actions.active();
    return child ? child->selectedEvnts() : std::vector<EvntRef>();
}

/// The panel holds the settings, seen or not.
EditPanel& EverydayEdits::makePanel(EverydayEdit edit)
{
    std::unique_ptr<EditPanel>& panel = m_panels[static_cast<std::size_t>(edit)];
    if (!panel) {
        panel = std::make_unique<EditPanel>(editKind(edit), entry(edit).text, m_parts, &m_window);
        panel->selection = [this] { return selection(); };
        panel->onApply = [this, edit] { apply(edit); };
    }
    return *panel;
}

void EverydayEdits::openPanel(EverydayEdit edit)
{
    const bool isNew = !this->panel(edit);
    EditPanel& panel = makePanel(edit);
    for (const auto& other : m_panels)
        if (isNew && other && other->isVisible()) panel.move(other->pos() + QPoint(beside, beside));
    panel.show();
    panel.raise();
    panel.activateWindow();
}

void EverydayEdits::apply(EverydayEdit edit)
{
    if (m_parts.isLocked()) return;
    EditPanel& panel = makePanel(edit == EverydayEdit::quantiseAgain ? EverydayEdit::quantise : edit);
    const std::vector<EvntRef> selected = selection();
    const EditPlan plan = panel.plan(selected);
    if (plan.count() == 0 && !plan.hasLinked) {
        m_parts.user.status(planText(plan, selected.size(), m_parts.text).toStdString());
        return;
    }
    std::vector<EvntRef> made;
    if (const UndoScope step(m_parts.editor, std::string(m_parts.text.strings()(editKind(edit).step))); step)
        made = tessaro::apply(m_parts.editor, plan);
    if (!made.empty()) m_parts.actions.active()->selectEvnts(made);
    panel.used();
}

void EverydayEdits::refresh()
{
    for (const auto& panel : m_panels)
        if (panel) panel->refresh();
}

void EverydayEdits::onHint(const HintObserver*, int code, CEditor*)
{
    if (code == hint::dispReq || code == hint::trkType || code == hint::trkArrange) refresh();
}

void EverydayEdits::retranslate()
{
    for (const Row& row : rows) {
        (*this)[row.edit].setText(m_parts.text(row.entry.text));
        (*this)[row.edit].setIconText(m_parts.text.plain(row.entry.text));
    }
    for (const auto& panel : m_panels)
        if (panel) panel->retranslate();
}

} // namespace tessaro
