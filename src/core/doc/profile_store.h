// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/profile.h"
#include "core/ports/settings_store.h"

#include <string>

namespace tessaro {

/// A settings store in an ini file. It is read once, when the store is made; what was set reaches the disk
/// at `flush` and at the latest when the store goes. A file that cannot be read gives an empty store and is not
/// overwritten.
class TESSARO_API ProfileStore final : public SettingsStore {
public:
    explicit ProfileStore(std::string path);
    ProfileStore(const ProfileStore&) = delete;
    ProfileStore& operator=(const ProfileStore&) = delete;
    ~ProfileStore() override;

    [[nodiscard]] int getInt(std::string_view section, std::string_view key, int otherwise) const override;
    bool setInt(std::string_view section, std::string_view key, int value) override;
    [[nodiscard]] std::string getString(std::string_view section, std::string_view key,
                                        std::string_view otherwise) const override;
    bool setString(std::string_view section, std::string_view key, std::string_view value) override;
    [[nodiscard]] std::vector<std::uint8_t> getBinary(std::string_view section, std::string_view key) const override;
    bool setBinary(std::string_view section, std::string_view key, std::span<const std::uint8_t> bytes) override;

    void remove(std::string_view section, std::string_view key);
    /// Makes the file's folder where it is missing. False when the file could not be written.
    bool flush();
    [[nodiscard]] const std::string& path() const noexcept { return m_path; }

private:
    std::string m_path;
    Profile m_profile;
    bool m_readable = true;
    bool m_dirty = false;
};

/// The file of the per-user store: tessaro/tessaro.ini in the user's folder of settings.
[[nodiscard]] TESSARO_API std::string userSettingsPath();

} // namespace tessaro
