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

/// All but the main window have more keys. What they hold says nothing here, but one that is missing ends the restoring
/// as well.
std::vector<std::string> furtherKeys(PlacedWindow window)
{
    if (window == PlacedWindow::main) return {};
    return {"MinPos x", "MinPos y", "MaxPos x", "MaxPos y"};
}

std::string keyOf(PlacedWindow window, std::string_view name)
{
    constexpr const char* prefixes[] = {"Main ", "Cnp ", "Trk "};
    return std::string(prefixes[static_cast<std::size_t>(window)]).append(name);
}

} // namespace

std::optional<WindowPlacement> loadPlacement(const SettingsStore& store, PlacedWindow window, const QSize& screen)
{
    const auto value = [&](const std::string& key) { return store.getInt(section, key, absent); };
    if (QSize(value("DeskTop Size X"), value("DeskTop Size Y")) != screen) return std::nullopt;
    bool whole = true;
    const auto part = [&](std::string_view name) {
        const int found = value(keyOf(window, name));
        whole = whole && found != absent;
        return found;
    };
    part("Flags");
    for (const std::string& key : furtherKeys(window)) part(key);
    const QPoint corner(part("Rect Left"), part("Rect Top"));
    const QPoint end(part("Rect Right"), part("Rect Bottom")); // outside
    const WindowPlacement placement{QRect(corner, end - QPoint(1, 1)), part("ShowCmd") == showMaximized};
    return whole ? std::optional(placement) : std::nullopt;
}

void savePlacement(SettingsStore& store, PlacedWindow window, const WindowPlacement& placement, const QSize& screen)
{
    store.setInt(section, "DeskTop Size X", screen.width());
    store.setInt(section, "DeskTop Size Y", screen.height());
    const auto keep = [&](std::string_view name, int value) { store.setInt(section, keyOf(window, name), value); };
    keep("Flags", 0);
    keep("ShowCmd", placement.maximised ? showMaximized : showNormal);
    for (const std::string& key : furtherKeys(window)) keep(key, -1);
    keep("Rect Left", placement.place.left());
    keep("Rect Top", placement.place.top());
    keep("Rect Right", placement.place.right() + 1);
    keep("Rect Bottom", placement.place.bottom() + 1);
}

} // namespace tessaro
