// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro::house {

/// The rooms of the source tree: which rooms' headers each of them may include.
struct RoomTable {
    std::map<std::string, std::set<std::string>> mayInclude;
    std::set<std::string> mayUseQt;
    std::vector<std::string> faults; ///< one sentence for each line that makes no sense

    /// Reads lines `room: room room ...`; `#` starts a comment. A room may name only rooms above it in the text.
    static RoomTable parse(std::string_view text);
};

/// Checks every source and header under `sources`, the folder whose folders are the rooms, against the table, and that
/// no two headers define the same type, which neither compiler nor linker would notice. Returns one sentence for each
/// fault, sorted; none means that all is well.
std::vector<std::string> checkIncludes(const std::filesystem::path& sources, const RoomTable& table);

} // namespace tessaro::house
