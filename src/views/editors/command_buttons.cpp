// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/editors/command_buttons.h"

#include "views/editors/view_actions.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>
#include <QMenu>

namespace tessaro {
namespace {

constexpr QSize buttonSize{28, 28};
constexpr int iconSize = 16;

} // namespace

QWidget* commandButtons(const ViewParts& parts, std::initializer_list<CommandButton> buttons)
{
    auto* group = new QWidget;
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (const auto& [command, icon] : buttons) {
        auto* button = new ToolButton(parts.icons, QString::fromLatin1(icon), parts.actions[command]);
        button->setSize(buttonSize, iconSize);
        row->addWidget(button);
    }
    return group;
}

void addCommands(QMenu& menu, ViewActions& actions, std::initializer_list<ViewCommand> commands)
{
    for (const ViewCommand command : commands) menu.addAction(&actions[command]);
    menu.addSeparator();
}

} // namespace tessaro
