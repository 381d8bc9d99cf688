// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/widgets/held_action.h"

#include <QAction>
#include <QActionGroup>

#include <optional>
#include <utility>
#include <vector>

class QMenu;
class QMenuBar;

namespace tessaro {

class Icons;
class UiText;
enum class TextId : int;

/// The commands of the main window with their icons and keys, and the menus that hold them. Keys work wherever the
/// focus is.
class FrameActions {
public:
    /// The window takes the actions, and outlives this object; so do icons and texts.
    FrameActions(QWidget& window, const Icons& icons, const UiText& text);

    QAction newSong;
    QAction open;
    QAction save;
    QAction saveAs;
    QAction quit;
    QAction undo;
    QAction redo;
    QAction trackUp; ///< of the row with the focus
    QAction trackDown;
    QAction top;
    HeldAction rewind; ///< by beats, with Shift by bars
    QAction play;      ///< checked while the song plays
    QAction stop;
    QAction record; ///< checked while a track waits or records
    HeldAction forward;
    HeldAction fastForward; ///< checked while it runs
    QAction end;
    QAction back;
    QAction goTo;
    QAction tempoUp;
    QAction tempoDown;
    QAction tempoReset;
    QAction transposeUp;
    QAction transposeDown;
    QAction loop;
    QAction loopTrack;
    QAction metronome;
    QAction midiChase;
    QAction viewChase;
    QAction midiSync;
    QAction stepStrip;
    QAction keyboard; ///< checked while the computer's keys play
    QAction systemSetup;
    QAction recordSettings;
    QAction metronomeSettings;
    QAction keys;
    QAction about;
    QActionGroup panelPlace; ///< the actions carry the number of a place
    QActionGroup appearance; ///< the actions carry the appearance's number
    QActionGroup language;   ///< the actions carry -1 for the desktop's, or the language's number

    /// Makes the menus once; the menu of recent files is the caller's to fill.
    void fillMenuBar(QMenuBar& bar);
    [[nodiscard]] QMenu& recentMenu() const { return *m_recentMenu; }
    void retranslate();
    /// Titles of the steps that can be undone and redone; none where there is no such step.
    void setHistory(std::optional<QString> undoTitle, std::optional<QString> redoTitle);
    /// While the song may not be edited, or not be replaced, what would do so is dimmed.
    void setEditing(bool possible);
    /// Checks the action of this number.
    static void choose(const QActionGroup& group, int number);
    /// A table of commands and keys, as rich text.
    [[nodiscard]] QString keyTable() const;

private:
    void addChoice(QActionGroup& group, TextId text, int number);
    void showHistory();

    const UiText& m_text;
    std::vector<std::pair<QAction*, TextId>> m_named; ///< every action with its text
    std::vector<std::pair<QMenu*, TextId>> m_menus;
    std::optional<QString> m_undoTitle;
    std::optional<QString> m_redoTitle;
    bool m_editing = true;
    QMenu* m_recentMenu = nullptr; ///< a child of the menu bar
};

} // namespace tessaro
