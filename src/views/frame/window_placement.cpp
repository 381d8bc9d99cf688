// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/window_placement.h"

#include "core/ports/settings_store.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessaro {
namespace {

constexpr const char* section = "Window Placement";
constexpr int absent = -3000;
constexpr int showNormal = 1;
constexpr int showMaximized = 3;

/// The panel's has more keys. What they hold says nothing here, but one that is missing ends the restoring as well.
std::vector<std::string> furtherKeys(PlacedWindow window)
{
    if (window == PlacedWindow::main) return {};
    return {"MinPos x", "MinPos y", "MaxPos x", "MaxPos y"};
}

std::string keyOf(PlacedWindow window, std::string_view name)
{
    return std::string(window == PlacedWindow::main ? "Main " : "Cnp ").append(name);
}

} // namespace

std::optional<WindowPlacement> loadPlacement(const SettingsStore& store, PlacedWindow window, int screenWidth,
                                             int screenHeight)
{
    const auto value = [&](const std::string& key) { return store.getInt(section, key, absent); };
    if (value("DeskTop Size X") != screenWidth || value("DeskTop Size Y") != screenHeight) return std::nullopt;
    bool whole = true;
    const auto part = [&](std::string_view name) {
        const int found = value(keyOf(window, name));
        whole = whole && found != absent;
        return found;
    };
    part("Flags");
    for (const std::string& key : furtherKeys(window)) part(key);
    const WindowPlacement placement{.left = part("Rect Left"),
                                    .top = part("Rect Top"),
                                    .right = part("Rect Right"),
                                    .bottom = part("Rect Bottom"),
                                    .maximized = part("ShowCmd") == showMaximized};
    return whole ? std::optional(placement) : std::nullopt;
}

void savePlacement(SettingsStore& store, PlacedWindow window, const WindowPlacement& placement, int screenWidth,
                   int screenHeight)
{
    store.setInt(section, "DeskTop Size X", screenWidth);
    store.setInt(section, "DeskTop Size Y", screenHeight);
    const auto keep = [&](std::string_view name, int value) { store.setInt(section, keyOf(window, name), value); };
    keep("Flags", 0);
    keep("ShowCmd", placement.maximized ? showMaximized : showNormal);
    for (const std::string& key : furtherKeys(window)) keep(key, -1);
    keep("Rect Left", placement.left);
    keep("Rect Top", placement.top);
    keep("Rect Right", placement.right);
    keep("Rect Bottom", placement.bottom);
}

} // namespace tessaro
