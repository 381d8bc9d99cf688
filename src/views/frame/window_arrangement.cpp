// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/window_arrangement.h"

#include "core/ports/settings_store.h"
#include "views/editors/child_frame.h"

#include <QStringList>

#include <algorithm>

namespace tessaro {
namespace {

constexpr const char* section = "Window Placement";
constexpr const char* childrenKey = "Children";      ///< kind:number:track of each
constexpr const char* activeKey = "Children Active"; ///< the place in that list, from 1
constexpr const char* placesKey = "Children State";
constexpr const char* absent = "-";
constexpr int lastTrack = 100;

QString stored(const WindowArrangement::Window& window)
{
    return QStringLiteral("%1:%2:%3").arg(static_cast<int>(window.kind)).arg(window.number).arg(window.track);
}

std::optional<WindowArrangement::Window> fromStored(const QString& entry)
{
    const QStringList parts = entry.split(QLatin1Char(':'));
    if (parts.size() != 3) return std::nullopt;
    const WindowArrangement::Window window{static_cast<WindowKind>(parts[0].toInt()), parts[1].toInt(),
                                           std::clamp(parts[2].toInt(), 0, lastTrack)};
    if (window.kind == WindowKind::track || window.number < 1) return std::nullopt;
    return window;
}

} // namespace

std::optional<WindowArrangement> loadArrangement(const SettingsStore& store, const QSize& screen)
{
    const std::string list = store.getString(section, childrenKey, absent);
    if (list == absent) return std::nullopt;
    WindowArrangement found;
    for (const QString& entry : QString::fromStdString(list).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        if (const auto window = fromStored(entry)) found.windows.push_back(*window);
    found.active = std::clamp(store.getInt(section, activeKey, 0), 0, static_cast<int>(found.windows.size()));
    const auto tracks = loadPlacement(store, PlacedWindow::tracks, screen);
    if (!tracks) return found;
    found.tracks = *tracks;
    const std::vector<std::uint8_t> places = store.getBinary(section, placesKey);
    found.places = QByteArray(reinterpret_cast<const char*>(places.data()), static_cast<qsizetype>(places.size()));
    return found;
}

void saveArrangement(SettingsStore& store, const WindowArrangement& arrangement, const QSize& screen)
{
    QStringList list;
    for (const WindowArrangement::Window& window : arrangement.windows) list << stored(window);
    store.setString(section, childrenKey, list.join(QLatin1Char(' ')).toStdString());
    store.setInt(section, activeKey, arrangement.active);
    savePlacement(store, PlacedWindow::tracks, arrangement.tracks, screen);
    const QByteArray& places = arrangement.places;
    store.setBinary(
        section, placesKey,
        {reinterpret_cast<const std::uint8_t*>(places.constData()), static_cast<std::size_t>(places.size())});
}

} // namespace tessaro
