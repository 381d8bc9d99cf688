// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/commands/command_list.h"

#include <utility>
#include <vector>

class QMenu;
class QMenuBar;

namespace tessaro {

class EverydayEdits;
class FrameActions;
class UiText;
class ViewActions;

/// The menus of the main window with all commands. The recent files and the open windows are the
/// caller's to fill in.
class FrameMenus {
public:
    /// Everything outlives this object.
    struct Commands {
        FrameActions& frame;
        ViewActions& view;
        EverydayEdits& edits;
    };
    FrameMenus(QMenuBar& bar, const Commands& commands, const UiText& text);

    [[nodiscard]] QMenu& recent() const { return *m_recent; }
    [[nodiscard]] QMenu& windows() const { return *m_windows; }
    /// All commands, menu by menu.
    [[nodiscard]] CommandList commands() const;
    void retranslate();

private:
    template <class Parent>
    QMenu& add(Parent& parent, TextId name);
    void addFile(QMenuBar& bar);
    void addEdit(QMenuBar& bar);
    void addTracks(QMenuBar& bar);
    void addBlocks(QMenuBar& bar);
    void addNotes(QMenuBar& bar);
    void addTransport(QMenuBar& bar);
    void addView(QMenuBar& bar);
    void addSettings(QMenuBar& bar);
    void addWindow(QMenuBar& bar);

    const Commands m_commands;
    const UiText& m_text;
    std::vector<std::pair<QMenu*, TextId>> m_menus; ///< children of the menu bar
    QMenu* m_recent = nullptr;
    QMenu* m_windows = nullptr;
};

} // namespace tessaro
