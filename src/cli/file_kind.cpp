// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/file_kind.h"

#include "files/recognise.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace tessaro::cli {

namespace {

/// In the order of the kinds' numbers, from 1.
constexpr std::array<const char*, 6> names{"smf0", "smf1", "zp", "tqm", "tqmwave", "vb"};

} // namespace

std::vector<std::string> fileKindNames() { return {names.begin(), names.end()}; }

std::optional<std::uint8_t> fileKindOf(const std::string& name, const std::string& path)
{
    if (!name.empty()) {
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end()) return std::nullopt;
        return static_cast<std::uint8_t>(found - names.begin() + 1);
    }
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    if (ending == ".TQM") return filekind::native;
    if (ending == ".MID") return filekind::smf1;
    return std::nullopt;
}

} // namespace tessaro::cli
