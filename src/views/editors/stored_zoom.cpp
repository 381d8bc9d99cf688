// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/editors/stored_zoom.h"

#include "core/ports/settings_store.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tessaro {
namespace {

constexpr const char* section = "View Condition";
constexpr int absent = -1;
constexpr int thousand = 1000;

std::string wholeKey(const char* name) { return std::string(name) + " Zoom"; }
std::string partKey(const char* name) { return wholeKey(name) + " Part"; }

} // namespace

std::optional<double> loadZoom(const SettingsStore& store, const char* name)
{
    const int whole = store.getInt(section, wholeKey(name), absent);
    if (whole == absent) return std::nullopt;
    const int part = std::clamp(store.getInt(section, partKey(name), 0), -thousand / 2, thousand / 2);
    return whole + part / double{thousand};
}

void saveZoom(SettingsStore& store, const char* name, double zoom)
{
    const auto whole = static_cast<int>(std::lround(zoom));
    store.setInt(section, wholeKey(name), whole);
    store.setInt(section, partKey(name), static_cast<int>(std::lround((zoom - whole) * thousand)));
}

} // namespace tessaro
