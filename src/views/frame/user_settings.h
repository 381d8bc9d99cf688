// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/ports/settings_store.h"
#include "views/theme/theme.h"

namespace tessaro {

/// What the person chose for the windows: appearance, language and what the start opens, kept in the store.
class UserSettings {
public:
    explicit UserSettings(SettingsStore& store) : m_store(store) {}

    [[nodiscard]] Appearance appearance() const
    {
        const int number = m_store.getInt(section, "Appearance", 0);
        return number == 1 ? Appearance::light : number == 2 ? Appearance::dark : Appearance::desktop;
    }
    void setAppearance(Appearance appearance) { m_store.setInt(section, "Appearance", static_cast<int>(appearance)); }

    /// -1 for the desktop's, otherwise the number of a language.
    [[nodiscard]] int languageNumber() const { return m_store.getInt(section, "Language", -1); }
    void setLanguageNumber(int number) { m_store.setInt(section, "Language", number); }
    [[nodiscard]] Language language() const
    {
        const int number = languageNumber();
        return number == 0 ? Language::japanese : number == 1 ? Language::english : languageFromEnvironment();
    }

    /// Whether the start opens the child windows of the last time.
    [[nodiscard]] bool opensLastWindows() const { return m_store.getInt("Track", "Open Default View", 1) != 0; }
    void setOpensLastWindows(bool opens) { m_store.setInt("Track", "Open Default View", opens ? 1 : 0); }

private:
    static constexpr const char* section = "User Settings";
    SettingsStore& m_store;
};

} // namespace tessaro
