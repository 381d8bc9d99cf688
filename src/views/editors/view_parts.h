// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/child_frame.h"

#include <QStringList>

class QAction;

namespace tessaro {

class CCnpWindow;
class CEditor;
class Grid;
class Icons;
class NoteAudition;
class NoteTables;
enum class EverydayEdit;
struct ListSettings;
class SettingsStore;
class SongClipboard;
class UiText;
class UserPort;
class ViewActions;

/// What a child window works with; everything outlives it.
struct ViewParts {
    CEditor& editor;
    CCnpWindow& panel;
    SettingsStore& store;
    UserPort& user;
    UiText& text;
    const Icons& icons;
    ViewActions& actions;
    SongClipboard& clipboard;
    NoteAudition& audition;
    NoteTables& notes; ///< what is in sight of the song, for all windows
    Grid& grid;        ///< one choice for all windows
    /// Opens a window of this kind for a track, or raises the one that shows it, and brings the tick into sight.
    std::function<void(WindowKind kind, int track, std::uint32_t tick)> open;
    /// The names of the MIDI output ports.
    std::function<QStringList()> portNames;
    /// Whether the song must not be edited at the moment: a take runs, or long work.
    std::function<bool()> isLocked;
    /// Those of the event list; null for the defaults, which are not kept then.
    ListSettings* listSettings = nullptr;
    /// The command of an everyday edit; empty where there are none.
    std::function<QAction*(EverydayEdit edit)> edit = {};
};

} // namespace tessaro
