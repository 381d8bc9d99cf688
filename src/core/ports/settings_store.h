// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

/// A place where values live under a section and a key, both compared without regard to case. Main
/// thread only. Reading never fails: a missing or unreadable value gives the default. Writing answers false
/// when the value could not be kept.
class TESSARO_API SettingsStore {
public:
    virtual ~SettingsStore();
    [[nodiscard]] virtual int getInt(std::string_view section, std::string_view key, int otherwise) const = 0;
    virtual bool setInt(std::string_view section, std::string_view key, int value) = 0;
    [[nodiscard]] virtual std::string getString(std::string_view section, std::string_view key,
                                                std::string_view otherwise) const = 0;
    virtual bool setString(std::string_view section, std::string_view key, std::string_view value) = 0;
    /// Empty when there is no such value.
    [[nodiscard]] virtual std::vector<std::uint8_t> getBinary(std::string_view section, std::string_view key) const = 0;
    virtual bool setBinary(std::string_view section, std::string_view key, std::span<const std::uint8_t> bytes) = 0;
};

} // namespace tessaro
