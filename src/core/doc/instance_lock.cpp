// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace tessaro {

namespace {

constexpr const char* lockName = "TessaroInstance";

bool isPrivateFolder(const std::string& path)
{
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) return false;
    return info.st_uid == ::getuid() && (info.st_mode & 077U) == 0;
}

} // namespace

bool InstanceLock::take(const std::string& folder)
{
    release();
    if (folder.empty()) return true;
    const int file = ::open((folder + "/" + lockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) return true;
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        m_file = file;
        return true;
    }
    const bool heldElsewhere = errno == EWOULDBLOCK;
    ::close(file);
    return !heldElsewhere;
}

void InstanceLock::release() noexcept
{
    if (m_file >= 0) ::close(m_file);
    m_file = -1;
}

std::string InstanceLock::defaultFolder()
{
    if (const char* runtime = std::getenv("XDG_RUNTIME_DIR"); runtime && *runtime) return runtime;
    const std::string folder = "/tmp/tessaro-" + std::to_string(::getuid());
    ::mkdir(folder.c_str(), 0700);
    return isPrivateFolder(folder) ? folder : std::string();
}

} // namespace tessaro
