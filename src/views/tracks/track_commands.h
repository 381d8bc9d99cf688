// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/track_list_model.h"

#include <QString>

#include <functional>

namespace tessaro {

class CEditor;
class UiText;

/// What the track list does to the tracks of the song. All of it works while the song plays.
class TrackCommands {
public:
    /// Both outlive this object.
    TrackCommands(CEditor& editor, const UiText& text) : m_editor(editor), m_text(text) {}

    /// The rows of the list are to be read anew.
    std::function<void()> onChanged;

    void setRecord(int track, bool on);
    void setMute(int track, bool on);
    void setSolo(int track, bool on);
    void setName(int track, const QString& name);
    /// Only while the track holds no block.
    void setType(int track, int type);
    /// Port, channel or transposition, which may be off.
    void setSetting(int track, TrackColumn setting, int value);
    /// Puts a track to the place of another one, as a step that can be undone.
    void move(int track, int place);

private:
    CEditor& m_editor;
    const UiText& m_text;
};

} // namespace tessaro
