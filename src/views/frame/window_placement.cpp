// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/window_placement.h"

#include "core/ports/settings_store.h"

#include <algorithm>
#include <array>

namespace tessaro {
namespace {

constexpr const char* section = "Window Placement";
constexpr int absent = -3000;
constexpr int showNormal = 1;
constexpr int showMaximized = 3;

} // namespace

std::optional<WindowPlacement> loadPlacement(const SettingsStore& store, int screenWidth, int screenHeight)
{
    const auto value = [&](const char* key) { return store.getInt(section, key, absent); };
    if (value("DeskTop Size X") != screenWidth || value("DeskTop Size Y") != screenHeight) return std::nullopt;
    const std::array values{value("Main Flags"),    value("Main ShowCmd"),    value("Main Rect Left"),
                            value("Main Rect Top"), value("Main Rect Right"), value("Main Rect Bottom")};
    if (std::find(values.begin(), values.end(), absent) != values.end()) return std::nullopt;
    return WindowPlacement{.left = values[2],
                           .top = values[3],
                           .right = values[4],
                           .bottom = values[5],
                           .maximized = values[1] == showMaximized};
}

void savePlacement(SettingsStore& store, const WindowPlacement& placement, int screenWidth, int screenHeight)
{
    store.setInt(section, "DeskTop Size X", screenWidth);
    store.setInt(section, "DeskTop Size Y", screenHeight);
    store.setInt(section, "Main Flags", 0);
    store.setInt(section, "Main ShowCmd", placement.maximized ? showMaximized : showNormal);
    store.setInt(section, "Main Rect Left", placement.left);
    store.setInt(section, "Main Rect Top", placement.top);
    store.setInt(section, "Main Rect Right", placement.right);
    store.setInt(section, "Main Rect Bottom", placement.bottom);
}

} // namespace tessaro
