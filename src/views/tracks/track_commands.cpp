// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_commands.h"

#include "base/text.h"
#include "core/edit/undo_scope.h"
#include "views/text/ui_text.h"
#include "views/tracks/transpose_box.h"

namespace tessaro {

void TrackCommands::setRecord(int track, bool on)
{
    m_editor.SetTrkRec(track, on);
    onChanged(); // no hint tells of it
}

void TrackCommands::setMute(int track, bool on)
{
    m_editor.SetTrkMute(track, on);
    m_editor.SetTrkSoloMute();
}

void TrackCommands::setSolo(int track, bool on)
{
    m_editor.SetTrkSolo(track, on);
    m_editor.SetTrkSoloMute();
}

void TrackCommands::setName(int track, const QString& name)
{
    m_editor.SetTrkName(track, fromUtf8(name.toStdString()));
    onChanged(); // no hint tells of it
}

void TrackCommands::setType(int track, int type)
{
    m_editor.SetTrkType(track, static_cast<std::uint8_t>(type));
    onChanged();
}

void TrackCommands::setSetting(int track, TrackColumn setting, int value)
{
    switch (setting) {
    case TrackColumn::port: m_editor.SetTrkPort(track, static_cast<std::uint8_t>(value)); break;
    case TrackColumn::channel: m_editor.SetTrkCh(track, static_cast<std::uint8_t>(value)); break;
    case TrackColumn::transpose:
        m_editor.SetTrkTransEnable(track, value != TransposeBox::off);
        if (value != TransposeBox::off) m_editor.SetTrkTranspose(track, value);
        break;
    default: return;
    }
    onChanged();
}

void TrackCommands::move(int track, int place)
{
    const int after = place < track ? place - 1 : place;
    {
        const UndoScope scope(m_editor, m_text.plain(TextId::undoTrackMove).toStdString());
        if (scope) m_editor.SetTrkArrange(track, after);
    }
    onChanged();
}

} // namespace tessaro
