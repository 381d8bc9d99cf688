// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>

namespace tessaro {

/// The mark that one instance of the program runs: a locked file in a folder that only this user can
/// write. The system takes the lock away when the process ends, however it ends.
class TESSARO_API InstanceLock {
public:
    InstanceLock() = default;
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;
    ~InstanceLock() { release(); }

    /// False when another instance holds the lock. Where no lock file can be made the program goes on
    /// without one, and the answer is true.
    bool take(const std::string& folder);
    void release() noexcept;

    /// XDG_RUNTIME_DIR; without it a private folder in the one for temporary files, empty when that is
    /// not ours alone.
    [[nodiscard]] static std::string defaultFolder();

private:
    int m_file = -1;
};

} // namespace tessaro
