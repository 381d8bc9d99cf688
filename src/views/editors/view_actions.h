// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "views/editors/view_command.h"

#include <QAction>
#include <QActionGroup>

#include <array>
#include <functional>
#include <initializer_list>

namespace tessaro {

class ChildFrame;
class Icons;
class UiText;

/// The commands for child windows as actions: for the menus of the main window, the tool bars of the child windows and
/// their context menus. A command goes to the active child window. Keys of most commands work wherever the focus is;
/// those that would be missed by a text or a table (arrows, Delete) work only in the widgets that `listen` names.
/// The tools are one choice for all windows. User interface thread.
class ViewActions {
public:
    /// `window` is where keys work; it, icons and texts outlive this object.
    ViewActions(QWidget& window, const Icons& icons, const UiText& text);

    /// How a command stands in the list of all commands.
    struct Entry {
        const char* id; ///< for the settings, for ever
        TextId text;
    };
    [[nodiscard]] static const Entry& entry(ViewCommand command);

    [[nodiscard]] QAction& operator[](ViewCommand command) { return m_actions[static_cast<std::size_t>(command)]; }
    [[nodiscard]] EditTool tool() const;
    void setTool(EditTool tool);

    /// The keys of these commands work while the focus is in this widget.
    void listen(QWidget& widget, std::initializer_list<ViewCommand> commands);

    /// The window that gets the commands; null for none. Borrowed.
    void setActive(ChildFrame* child);
    [[nodiscard]] ChildFrame* active() const { return m_active; }
    /// Shows what the active window can do by now.
    void refresh();
    void retranslate();

private:
    std::array<QAction, viewCommands> m_actions;
    QActionGroup m_tools;
    const UiText& m_text;
    ChildFrame* m_active = nullptr;
};

} // namespace tessaro
