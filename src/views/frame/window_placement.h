// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

namespace tessaro {

class SettingsStore;

/// Where a window stands on the screen, in the pixels of the interface; right and bottom lie outside.
struct WindowPlacement {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool maximized = false;
    bool operator==(const WindowPlacement&) const = default;
};

enum class PlacedWindow { main, panel };

/// The placement of a window, kept for one size of the screen; none when the size differs or a value is missing.
[[nodiscard]] std::optional<WindowPlacement> loadPlacement(const SettingsStore& store, PlacedWindow window,
                                                           int screenWidth, int screenHeight);
void savePlacement(SettingsStore& store, PlacedWindow window, const WindowPlacement& placement, int screenWidth,
                   int screenHeight);

} // namespace tessaro
