// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/frame/window_placement.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace tessaro {

class SettingsStore;
enum class WindowKind;

/// The child windows as they are kept for the next start: which are open, where they stand, which one is active.
struct WindowArrangement {
    struct Window {
        WindowKind kind;
        int number; ///< from 1, among those of its kind
        int track;  ///< 0 to 100
    };
    std::vector<Window> windows; ///< without the track window
    int active = 0;              ///< of `windows`, counted from 1; 0 for the track window
    WindowPlacement tracks;      ///< of the track window; maximised where the active one fills the area
    QByteArray places;           ///< of the docks; empty when they were on another screen
};

/// What makes no sense in the store is left out. None when nothing was ever kept.
[[nodiscard]] std::optional<WindowArrangement> loadArrangement(const SettingsStore& store, const QSize& screen);
void saveArrangement(SettingsStore& store, const WindowArrangement& arrangement, const QSize& screen);

} // namespace tessaro
