// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

#include <optional>

namespace tessaro {

class SettingsStore;

/// Where a window stands on the screen, in the pixels of the interface.
struct WindowPlacement {
    QRect place;
    bool maximised = false;
    bool operator==(const WindowPlacement&) const = default;
};

enum class PlacedWindow { main, panel, tracks };

/// The placement of a window, kept for one size of the screen; none when the size differs or a value is missing.
[[nodiscard]] std::optional<WindowPlacement> loadPlacement(const SettingsStore& store, PlacedWindow window,
                                                           const QSize& screen);
void savePlacement(SettingsStore& store, PlacedWindow window, const WindowPlacement& placement, const QSize& screen);

} // namespace tessaro
