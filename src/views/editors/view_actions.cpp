// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/editors/view_actions.h"

#include "views/editors/child_frame.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"

#include <QKeySequence>

namespace tessaro {
namespace {

/// Where the keys of a command work.
enum class Keys { everywhere, listeners };

struct Row {
    ViewCommand command;
    ViewActions::Entry entry;
    const char* icon;
    QKeyCombination key;
    Keys where = Keys::everywhere;
};

// In the order of the commands.
constexpr Row rows[] = {
    {ViewCommand::cut, {"cut", TextId::commandCut}, "cut", Qt::CTRL | Qt::Key_X},
    {ViewCommand::copy, {"copy", TextId::commandCopy}, "copy", Qt::CTRL | Qt::Key_C},
    {ViewCommand::paste, {"paste", TextId::commandPaste}, "paste", Qt::CTRL | Qt::Key_V},
    {ViewCommand::remove, {"delete", TextId::commandDelete}, "delete", Qt::Key_Delete, Keys::listeners},
    {ViewCommand::duplicate, {"duplicate", TextId::commandDuplicate}, "duplicate", Qt::CTRL | Qt::Key_D},
    {ViewCommand::selectAll, {"select-all", TextId::commandSelectAll}, nullptr, Qt::CTRL | Qt::Key_A},
    {ViewCommand::selectNone, {"select-none", TextId::commandSelectNone}, nullptr, Qt::CTRL | Qt::SHIFT | Qt::Key_A},
    {ViewCommand::invertSelection,
     {"invert-selection", TextId::commandInvertSelection},
     nullptr,
     Qt::CTRL | Qt::SHIFT | Qt::Key_I},
    {ViewCommand::properties, {"properties", TextId::commandProperties}, nullptr, Qt::ALT | Qt::Key_Return},
    {ViewCommand::openEditor, {"open-editor", TextId::commandOpenEditor}, nullptr, Qt::Key_Return, Keys::listeners},
    {ViewCommand::editCell, {"edit-cell", TextId::commandEditCell}, nullptr, Qt::Key_F2, Keys::listeners},
    {ViewCommand::nudgeLeft, {"nudge-left", TextId::commandNudgeLeft}, nullptr, Qt::Key_Left, Keys::listeners},
    {ViewCommand::nudgeRight, {"nudge-right", TextId::commandNudgeRight}, nullptr, Qt::Key_Right, Keys::listeners},
    {ViewCommand::tickLeft, {"tick-left", TextId::commandTickLeft}, nullptr, Qt::ALT | Qt::Key_Left, Keys::listeners},
    {ViewCommand::tickRight,
     {"tick-right", TextId::commandTickRight},
     nullptr,
     Qt::ALT | Qt::Key_Right,
     Keys::listeners},
    {ViewCommand::nudgeUp, {"nudge-up", TextId::commandNudgeUp}, nullptr, Qt::Key_Up, Keys::listeners},
    {ViewCommand::nudgeDown, {"nudge-down", TextId::commandNudgeDown}, nullptr, Qt::Key_Down, Keys::listeners},
    {ViewCommand::octaveUp, {"octave-up", TextId::commandOctaveUp}, nullptr, Qt::SHIFT | Qt::Key_Up, Keys::listeners},
    {ViewCommand::octaveDown,
     {"octave-down", TextId::commandOctaveDown},
     nullptr,
     Qt::SHIFT | Qt::Key_Down,
     Keys::listeners},
    {ViewCommand::longer, {"longer", TextId::commandLonger}, nullptr, Qt::SHIFT | Qt::Key_Right, Keys::listeners},
    {ViewCommand::shorter, {"shorter", TextId::commandShorter}, nullptr, Qt::SHIFT | Qt::Key_Left, Keys::listeners},
    {ViewCommand::joinNotes, {"join-notes", TextId::commandJoinNotes}, "join", Qt::CTRL | Qt::Key_J},
    {ViewCommand::splitNotes, {"split-notes", TextId::commandSplitNotes}, "divide", Qt::CTRL | Qt::Key_E},
    {ViewCommand::armTrack, {"arm-track", TextId::commandArm}, nullptr, Qt::Key_A, Keys::listeners},
    {ViewCommand::muteTrack, {"mute-track", TextId::commandMute}, nullptr, Qt::Key_M, Keys::listeners},
    {ViewCommand::soloTrack, {"solo-track", TextId::commandSolo}, nullptr, Qt::Key_S, Keys::listeners},
    {ViewCommand::newBlock, {"new-block", TextId::commandNewBlock}, "block-new", Qt::CTRL | Qt::Key_B},
    {ViewCommand::duplicateLinked,
     {"duplicate-linked", TextId::commandDuplicateLinked},
     "link",
     Qt::CTRL | Qt::SHIFT | Qt::Key_D},
    {ViewCommand::divideBlocks,
     {"divide-blocks", TextId::commandDivideBlocks},
     "divide",
     Qt::CTRL | Qt::SHIFT | Qt::Key_E},
    {ViewCommand::linkBlocks, {"join-blocks", TextId::commandJoinBlocks}, "join", Qt::CTRL | Qt::SHIFT | Qt::Key_J},
    {ViewCommand::realiseBlock,
     {"realise-block", TextId::commandRealiseBlock},
     nullptr,
     Qt::CTRL | Qt::SHIFT | Qt::Key_R},
    {ViewCommand::showSource, {"show-source", TextId::commandShowSource}, nullptr, Qt::CTRL | Qt::Key_L},
    {ViewCommand::selectSiblings,
     {"select-siblings", TextId::commandSelectSiblings},
     nullptr,
     Qt::CTRL | Qt::SHIFT | Qt::Key_L},
    {ViewCommand::mergeBlocks, {"merge-blocks", TextId::commandMergeBlocks}, nullptr, Qt::CTRL | Qt::Key_M},
    {ViewCommand::insertEvent, {"insert-event", TextId::commandInsertEvent}, "plus", Qt::Key_Insert, Keys::listeners},
    {ViewCommand::zoomIn, {"zoom-in", TextId::commandZoomIn}, "zoom-in", Qt::CTRL | Qt::Key_Plus},
    {ViewCommand::zoomOut, {"zoom-out", TextId::commandZoomOut}, "zoom-out", Qt::CTRL | Qt::Key_Minus},
    {ViewCommand::zoomInRows, {"zoom-in-rows", TextId::commandZoomInRows}, nullptr, Qt::ALT | Qt::Key_Plus},
    {ViewCommand::zoomOutRows, {"zoom-out-rows", TextId::commandZoomOutRows}, nullptr, Qt::ALT | Qt::Key_Minus},
    {ViewCommand::zoomToSong, {"zoom-to-song", TextId::commandZoomToSong}, "zoom-fit", Qt::ALT | Qt::Key_0},
    {ViewCommand::zoomToSelection, {"zoom-to-selection", TextId::commandZoomToSelection}, nullptr, Qt::ALT | Qt::Key_9},
    {ViewCommand::shadows, {"shadows", TextId::commandShadows}, "shadows", Qt::Key_H},
    {ViewCommand::controlStrip, {"control-strip", TextId::commandControlStrip}, "strip", Qt::Key_J},
    {ViewCommand::audition, {"audition", TextId::rollAudition}, "speaker", Qt::Key_U},
    {ViewCommand::gridFree, {"grid-free", TextId::gridFree}, nullptr, Qt::Key_N},
    {ViewCommand::gridFiner, {"grid-finer", TextId::gridFiner}, nullptr, Qt::Key_BracketRight},
    {ViewCommand::gridCoarser, {"grid-coarser", TextId::gridCoarser}, nullptr, Qt::Key_BracketLeft},
    {ViewCommand::toolSelect, {"tool-select", TextId::toolSelect}, "select", Qt::Key_1},
    {ViewCommand::toolPencil, {"tool-pencil", TextId::toolPencil}, "pencil", Qt::Key_2},
    {ViewCommand::toolEraser, {"tool-eraser", TextId::toolEraser}, "eraser", Qt::Key_3},
    {ViewCommand::toolDivide, {"tool-divide", TextId::toolDivide}, "divide", Qt::Key_4},
    {ViewCommand::toolJoin, {"tool-join", TextId::toolJoin}, "join", Qt::Key_5},
    {ViewCommand::toolVelocity, {"tool-velocity", TextId::toolVelocity}, "velocity", Qt::Key_6},
    {ViewCommand::toolLine, {"tool-line", TextId::toolLine}, "line", Qt::Key_7},
    {ViewCommand::toolCurve, {"tool-curve", TextId::toolCurve}, "curve", Qt::Key_8},
};

constexpr bool inOrder()
{
    for (int i = 0; i < viewCommands; ++i)
        if (rows[i].command != static_cast<ViewCommand>(i)) return false;
    return true;
}
static_assert(std::size(rows) == viewCommands && inOrder());

constexpr int firstTool = static_cast<int>(ViewCommand::toolSelect);

} // namespace

ViewActions::ViewActions(QWidget& window, const Icons& icons, const UiText& text) : m_tools(&window), m_text(text)
{
    for (const Row& row : rows) {
        QAction& action = (*this)[row.command];
        if (row.icon) action.setIcon(icons.icon(QString::fromLatin1(row.icon)));
        action.setShortcut(QKeySequence(row.key));
        const bool everywhere = row.where == Keys::everywhere;
        action.setShortcutContext(everywhere ? Qt::ApplicationShortcut : Qt::WidgetWithChildrenShortcut);
        if (everywhere) window.addAction(&action);
        QObject::connect(&action, &QAction::triggered, &window, [this, command = row.command] {
            if (m_active && m_active->can(command)) m_active->run(command);
            refresh();
        });
    }
    (*this)[ViewCommand::openEditor].setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    for (const ViewCommand command :
         {ViewCommand::shadows, ViewCommand::controlStrip, ViewCommand::audition, ViewCommand::gridFree})
        (*this)[command].setCheckable(true);
    for (int tool = firstTool; tool < viewCommands; ++tool) {
        QAction& action = (*this)[static_cast<ViewCommand>(tool)];
        action.setCheckable(true);
        m_tools.addAction(&action);
    }
    setTool(EditTool::select);
    retranslate();
    refresh();
}

const ViewActions::Entry& ViewActions::entry(ViewCommand command)
{
    return rows[static_cast<std::size_t>(command)].entry;
}

EditTool ViewActions::tool() const
{
    const auto at = m_tools.actions().indexOf(m_tools.checkedAction());
    return static_cast<EditTool>(at);
}

void ViewActions::setTool(EditTool tool)
{
    (*this)[static_cast<ViewCommand>(firstTool + static_cast<int>(tool))].setChecked(true);
}

void ViewActions::listen(QWidget& widget, std::initializer_list<ViewCommand> commands)
{
    for (const ViewCommand command : commands) widget.addAction(&(*this)[command]);
}

void ViewActions::setActive(ChildFrame* child)
{
    m_active = child;
    refresh();
}

void ViewActions::refresh()
{
    for (const Row& row : rows) {
        QAction& action = (*this)[row.command];
        if (action.actionGroup()) continue; // a tool can always be taken
        action.setEnabled(m_active && m_active->can(row.command));
        if (action.isCheckable()) action.setChecked(m_active && m_active->isOn(row.command));
    }
}

void ViewActions::retranslate()
{
    for (const Row& row : rows) {
        (*this)[row.command].setText(m_text(row.entry.text));
        (*this)[row.command].setIconText(m_text.plain(row.entry.text));
    }
}

} // namespace tessaro
