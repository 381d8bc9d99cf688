// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/list_settings.h"

#include "core/ports/settings_store.h"

namespace tessaro {

namespace {
constexpr std::size_t fontSize = 60;
constexpr std::size_t longestName = 260;
} // namespace

void ListSettings::read(const SettingsStore& ini)
{
    for (std::size_t i = 0; i < columnWidths.size(); ++i) {
        const int width = ini.getInt("List Hdr", std::to_string(i), defaultWidth);
        columnWidths[i] = width < 1 ? defaultWidth : width;
    }
    font = ini.getBinary("List", "Font");
    if (font.size() != fontSize) font.clear();
    for (std::size_t i = 0; i < monitor.size(); ++i) monitor[i] = ini.getInt("List Mon", std::to_string(i), 0);
    monitorType = ini.getInt("List Mon", "Type", 0);
}

void ListSettings::write(SettingsStore& ini) const
{
    for (std::size_t i = 0; i < columnWidths.size(); ++i) ini.setInt("List Hdr", std::to_string(i), columnWidths[i]);
    if (!font.empty()) ini.setBinary("List", "Font", font);
    for (std::size_t i = 0; i < monitor.size(); ++i) ini.setInt("List Mon", std::to_string(i), monitor[i]);
    ini.setInt("List Mon", "Type", monitorType);
}

std::string readVceFileName(const SettingsStore& ini)
{
    return ini.getString("VceFileName", "0", "ZRVoiceListExtension5.ini").substr(0, longestName);
}

} // namespace tessaro
