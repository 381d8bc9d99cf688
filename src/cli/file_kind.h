// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessaro::cli {

/// The names of the kinds of file that can be written: smf0, smf1, zp, tqm, tqmwave, vb.
[[nodiscard]] std::vector<std::string> fileKindNames();
/// The kind, as the document numbers them, of a name; of a file's ending when the name is empty. None when neither
/// tells.
[[nodiscard]] std::optional<std::uint8_t> fileKindOf(const std::string& name, const std::string& path);

} // namespace tessaro::cli
