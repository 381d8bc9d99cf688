// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/app_windows.h"
#include "views/frame/frame_parts.h"

#include <QString>

#include <functional>
#include <optional>
#include <string_view>

class QMenu;
class QWidget;

namespace tessaro {

class RecoveryList;

/// The commands on files of the main window. Those that replace the song ask first whether to save the one at hand.
/// While long work runs they do nothing.
class FileCommands {
public:
    /// `window` owns the dialogs; it and the parts outlive this object.
    FileCommands(QWidget& window, const FrameParts& parts) : m_window(window), m_parts(parts) {}

    /// Whether long work runs.
    std::function<bool()> isBusy;
    /// Comes before a command looks at the song, so that what is half typed gets into it.
    std::function<void()> onBefore;
    /// A song came in.
    std::function<void()> onOpened;
    /// The song was saved to this file.
    std::function<void(const QString& path)> onSaved;
    std::function<void(const QString& path)> onExported;

    void newSong();
    bool open(const QString& path);
    void askAndOpen();
    bool recover(RecoveryList& songs, std::size_t index);
    bool save();
    bool saveAs();
    /// Asks for a name, and writes a standard MIDI file of format 1; the song keeps its own name and kind.
    void exportMidi();
    /// Before the song goes; false when it has to stay.
    bool leaveSong();
    void fillRecentMenu(QMenu& menu);

    /// What the document asks.
    std::optional<SaveChoice> askSaveName(const SaveChoice& proposed);
    SaveAnswer askSaveChanges(std::string_view name);

private:
    void openRecent(std::size_t index);
    bool tellSaved(bool saved);
    /// Where dialogs start for a song without a file.
    [[nodiscard]] QString usualFolder() const;

    QWidget& m_window;
    const FrameParts& m_parts;
};

} // namespace tessaro
