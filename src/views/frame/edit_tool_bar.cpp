// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/edit_tool_bar.h"

#include "views/editors/view_actions.h"
#include "views/frame/frame_actions.h"
#include "views/widgets/folding_row.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>

namespace tessaro {
namespace {

struct Face {
    QAction* action;
    const char* icon;
};

QWidget* group(const Icons& icons, std::initializer_list<Face> faces)
{
    auto* widget = new QWidget;
    auto* layout = new QHBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const Face& face : faces) {
        auto* button = new ToolButton(icons, QString::fromLatin1(face.icon), *face.action);
        button->setSize({30, 28}, 16);
        layout->addWidget(button);
    }
    return widget;
}

} // namespace

EditToolBar::EditToolBar(const Icons& icons, FrameActions& frame, ViewActions& view)
{
    setObjectName(QStringLiteral("editTools"));
    setMovable(false);
    setFloatable(false);
    const auto of = [&view](ViewCommand command) { return &view[command]; };
    auto* row = new FoldingRow;
    row->addGroup(group(icons, {{of(ViewCommand::toolSelect), "select"},
                                {of(ViewCommand::toolPencil), "pencil"},
                                {of(ViewCommand::toolEraser), "eraser"},
                                {of(ViewCommand::toolDivide), "divide"},
                                {of(ViewCommand::toolJoin), "join"},
                                {of(ViewCommand::toolVelocity), "velocity"},
                                {of(ViewCommand::toolLine), "line"},
                                {of(ViewCommand::toolCurve), "curve"}}),
                  0);
    row->addGroup(group(icons, {{of(ViewCommand::cut), "cut"},
                                {of(ViewCommand::copy), "copy"},
                                {of(ViewCommand::paste), "paste"},
                                {of(ViewCommand::remove), "delete"}}),
                  2);
    row->addGroup(group(icons, {{of(ViewCommand::newBlock), "block-new"},
                                {of(ViewCommand::duplicate), "duplicate"},
                                {of(ViewCommand::duplicateLinked), "link"}}),
                  4);
    row->addGroup(group(icons, {{of(ViewCommand::zoomOut), "zoom-out"},
                                {of(ViewCommand::zoomIn), "zoom-in"},
                                {of(ViewCommand::zoomToSong), "zoom-fit"}}),
                  3);
    row->addGroup(group(icons, {{&frame.piano, "piano"},
                                {&frame.drum, "drum"},
                                {&frame.list, "list"},
                                {&frame.master, "master"},
                                {&frame.history, "history"}}),
                  1);
    row->setFiller(new QWidget);
    row->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    addWidget(row);
}

} // namespace tessaro
