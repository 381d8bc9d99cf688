// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_ops.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace tessaro {

FileOps::~FileOps() = default;

std::string SystemFiles::resolve(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? real.get() : path;
}

int SystemFiles::stat(const std::string& path, struct stat& status) { return ::stat(path.c_str(), &status); }

int SystemFiles::mayWrite(const std::string& path) { return ::access(path.c_str(), W_OK); }

int SystemFiles::open(const std::string& path, int flags, mode_t mode) { return ::open(path.c_str(), flags, mode); }

int SystemFiles::chown(int file, uid_t owner, gid_t group) { return ::fchown(file, owner, group); }

int SystemFiles::chmod(int file, mode_t mode) { return ::fchmod(file, mode); }

ssize_t SystemFiles::write(int file, const void* bytes, std::size_t count) { return ::write(file, bytes, count); }

int SystemFiles::sync(int file) { return ::fsync(file); }

void SystemFiles::forgetCached(int file) { ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED); }

ssize_t SystemFiles::readAt(int file, void* bytes, std::size_t count, off_t offset)
{
    return ::pread(file, bytes, count, offset);
}

int SystemFiles::close(int file) { return ::close(file); }

int SystemFiles::rename(const std::string& from, const std::string& to) { return ::rename(from.c_str(), to.c_str()); }

int SystemFiles::remove(const std::string& path) { return ::unlink(path.c_str()); }

} // namespace tessaro
