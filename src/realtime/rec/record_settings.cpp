// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/record_settings.h"

#include "core/ports/settings_store.h"

namespace tessaro {

RecordSettings RecordSettings::read(const SettingsStore& profile)
{
    const auto value = [&](const char* key, int otherwise) { return profile.getInt("System", key, otherwise); };
    RecordSettings settings;
    if (value("Rec Mode", 0) == 1) settings.mode = RecMode::step;
    switch (value("Real Rec Mode", 0)) {
    case 1: settings.realMode = RealRecMode::replace; break;
    case 2: settings.realMode = RealRecMode::punch; break;
    default: break;
    }
    settings.newBlock = value("Real Rec Block Mode", 1) != 0;
    settings.punchIn = value("Real Rec Punch In Time", 0);
    settings.punchOut = value("Real Rec Punch Out Time", 0);
    return settings;
}

} // namespace tessaro
