// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>
#include <vector>

namespace tessaro {

class ProfileStore;

/// The files opened or saved last, the latest first, each once.
class TESSARO_API RecentFiles {
public:
    static constexpr std::size_t most = 10;

    void read(const ProfileStore& store);
    void write(ProfileStore& store) const;
    /// Puts a file in front, by its absolute path.
    void add(const std::string& path);
    void remove(const std::string& path);
    [[nodiscard]] const std::vector<std::string>& paths() const noexcept { return m_paths; }

private:
    std::vector<std::string> m_paths;
};

} // namespace tessaro
