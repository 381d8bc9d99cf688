// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaro {

enum class SaveAnswer { save, discard, cancel };

/// Where a song is to be saved, and as what kind of file, 1 to 6 as the document numbers them.
struct SaveChoice {
    std::string path;
    std::uint8_t kind = 0;
};

/// The windows as the application's start and the document's load see them. Main thread only.
class TESSARO_API AppWindows {
public:
    virtual ~AppWindows();
    /// False when the main window cannot be made; that ends the start.
    virtual bool createMainFrame() = 0;
    virtual void createControlPanel() = 0;
    /// Closes all child windows but one and forgets which kinds stood open; before a song is replaced.
    virtual void closeChildFrames() = 0;
    /// Shows the panel the song that just came in.
    virtual void songReplaced() = 0;
    /// Asks whether the song of this name, UTF-8, is to be saved before it goes.
    virtual SaveAnswer askSaveChanges(std::string_view name) = 0;
    /// Asks for a name and kind of file to save to, beginning with those given; none when the user gives up.
    virtual std::optional<SaveChoice> askSaveName(const SaveChoice& proposed) = 0;
    /// Tells that the song's file name or its mark as modified has changed.
    virtual void titleChanged() = 0;
    /// Moves the song position, with its display, to the top.
    virtual void songToTop() = 0;
    /// Tells the panel the sync mode in force, 0 internal, 1 MIDI.
    virtual void setSyncMode(int mode) = 0;
    /// Puts the main window where it stood, or shows it in the usual way; the window knows the screen.
    virtual void showMainFrame() = 0;
};

/// No windows, as in the command.
class TESSARO_API NullAppWindows : public AppWindows {
public:
    bool createMainFrame() override { return true; }
    void createControlPanel() override {}
    void closeChildFrames() override {}
    void songReplaced() override {}
    SaveAnswer askSaveChanges(std::string_view) override { return SaveAnswer::discard; }
    std::optional<SaveChoice> askSaveName(const SaveChoice&) override { return std::nullopt; }
    void titleChanged() override {}
    void songToTop() override {}
    void setSyncMode(int) override {}
    void showMainFrame() override {}
};

} // namespace tessaro
