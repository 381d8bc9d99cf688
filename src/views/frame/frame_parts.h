// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace tessaro {

class CCnpWindow;
class CTR9App;
class CTR9Doc;
class DevicePort;
class Icons;
class NoteAudition;
class RealtimeMessages;
class SettingsStore;
class Smc;
class SongClipboard;
class Theme;
class TypedKeys;
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
    DevicePort& devices;
    SongClipboard& clipboard;
    NoteAudition& audition;
    TypedKeys* typedKeys = nullptr; ///< what the computer's keyboard plays; null for none
};

} // namespace tessaro
