// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/widgets/held_action.h"

#include <QAction>
#include <QActionGroup>

#include <optional>
#include <vector>

namespace tessaro {

class CommandList;
class Icons;
class UiText;
enum class TextId : int;

/// The commands of the main window with their icons and keys. Keys work wherever the focus is.
class FrameActions {
public:
    /// The window takes the actions, and outlives this object; so do icons and texts.
    FrameActions(QWidget& window, const Icons& icons, const UiText& text);

    QAction newSong;
    QAction open;
    QAction save;
    QAction saveAs;
    QAction exportMidi;
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
    QAction openLastWindows; ///< checked while the start does so
    QAction tracks;          ///< brings the track window to the front
    QAction piano;           ///< opens a window for the current track, like the next ones
    QAction drum;
    QAction list;
    QAction master;
    QAction history;   ///< checked while the panel shows
    QAction editTools; ///< checked while the tool bar shows
    QAction tile;
    QAction tabs;
    QAction floating;
    QAction maximise; ///< checked while one window fills the area
    QAction nextWindow;
    QAction previousWindow;
    QAction closeWindow;
    QAction keys;
    QAction about;
    QActionGroup panelPlace; ///< the actions carry the number of a place
    QActionGroup appearance; ///< the actions carry the appearance's number
    QActionGroup language;   ///< the actions carry -1 for the desktop's, or the language's number

    /// Adds all of them, with the keys that they have by now.
    void listIn(CommandList& commands);
    void retranslate();
    /// Titles of the steps that can be undone and redone; none where there is no such step.
    void setHistory(std::optional<QString> undoTitle, std::optional<QString> redoTitle);
    /// While the song may not be edited, or not be replaced, what would do so is dimmed.
    void setEditing(bool possible);
    /// Checks the action of this number.
    static void choose(const QActionGroup& group, int number);

private:
    /// An action as it stands in the list of all commands.
    struct Named {
        QAction* action;
        const char* id;
        TextId name;
    };

    void addChoice(QActionGroup& group, const char* id, TextId text, int number);
    void showHistory();

    const UiText& m_text;
    std::vector<Named> m_named;
    std::optional<QString> m_undoTitle;
    std::optional<QString> m_redoTitle;
    bool m_editing = true;
};

} // namespace tessaro
