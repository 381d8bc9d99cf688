// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tessaro {

class SettingsStore;

/// The settings of the event list, which live in ws.ini of the application's directory.
struct TESSARO_API ListSettings {
    static constexpr int defaultWidth = 120;

    std::array<int, 7> columnWidths{}; ///< pixels, at least 1
    std::vector<std::uint8_t> font;    ///< a font record of 60 bytes; empty for the default font
    std::array<int, 4> monitor{};
    int monitorType = 0;

    void read(const SettingsStore& ini);
    void write(SettingsStore& ini) const;
};

/// The name of the voice list file, at most 260 bytes.
[[nodiscard]] TESSARO_API std::string readVceFileName(const SettingsStore& ini);

} // namespace tessaro
