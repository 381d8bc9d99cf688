// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>
#include <vector>

class QMenu;
class QMenuBar;

namespace tessaro {

class EverydayEdits;
class FrameActions;
class UiText;
class ViewActions;
enum class TextId : int;

/// The menus of the main window with all commands. Those of recent files and of open windows are the caller's to fill.
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
    void retranslate();

private:
    template <class Parent>
    QMenu& add(Parent& parent, TextId name);
    void addFile(QMenuBar& bar, FrameActions& actions);
    void addEdit(QMenuBar& bar, const Commands& commands);
    void addBlocks(QMenuBar& bar, const Commands& commands);
    void addNotes(QMenuBar& bar, const Commands& commands);
    void addTransport(QMenuBar& bar, FrameActions& actions);
    void addView(QMenuBar& bar, const Commands& commands);

    const UiText& m_text;
    std::vector<std::pair<QMenu*, TextId>> m_menus; ///< children of the menu bar
    QMenu* m_recent = nullptr;
    QMenu* m_windows = nullptr;
};

} // namespace tessaro
