// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace tessaro {

class CCnpWindow;
class CTR9App;
class CTR9Doc;
class Icons;
class RealtimeMessages;
class SettingsStore;
class Smc;
class Theme;
class UiText;
class WindowUser;

/// What the main window works with; everything outlives it.
struct FrameParts {
    CTR9App& app;
    CTR9Doc& document;
    CCnpWindow& panel;
    Smc& smc;
    RealtimeMessages& messages;
    SettingsStore& store;
    WindowUser& user;
    UiText& text;
    Theme& theme;
    const Icons& icons;
    std::function<QString()> deviceSentence; ///< which sound and MIDI ways are in use
};

} // namespace tessaro
