// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>

namespace tessaro {

/// The calls to the system by which a file is replaced, so that another disk can stand in. Results are the system's:
/// below 0 for a failure, whose reason is in errno. Any thread.
class TESSARO_API FileOps {
public:
    virtual ~FileOps();

    /// Where a path leads when links are followed; the path itself when nothing stands there.
    virtual std::string resolve(const std::string& path) = 0;
    virtual int stat(const std::string& path, struct stat& status) = 0;
    /// 0 when this user may write the file.
    virtual int mayWrite(const std::string& path) = 0;
    virtual int open(const std::string& path, int flags, mode_t mode) = 0;
    virtual int chown(int file, uid_t owner, gid_t group) = 0;
    virtual int chmod(int file, mode_t mode) = 0;
    virtual ssize_t write(int file, const void* bytes, std::size_t count) = 0;
    virtual int sync(int file) = 0;
    /// Asks that the next reading comes from the disk and not from memory.
    virtual void forgetCached(int file) = 0;
    virtual ssize_t readAt(int file, void* bytes, std::size_t count, off_t offset) = 0;
    virtual int close(int file) = 0;
    virtual int rename(const std::string& from, const std::string& to) = 0;
    virtual int remove(const std::string& path) = 0;
};

/// The machine's files.
class TESSARO_API SystemFiles final : public FileOps {
public:
    std::string resolve(const std::string& path) override;
    int stat(const std::string& path, struct stat& status) override;
    int mayWrite(const std::string& path) override;
    int open(const std::string& path, int flags, mode_t mode) override;
    int chown(int file, uid_t owner, gid_t group) override;
    int chmod(int file, mode_t mode) override;
    ssize_t write(int file, const void* bytes, std::size_t count) override;
    int sync(int file) override;
    void forgetCached(int file) override;
    ssize_t readAt(int file, void* bytes, std::size_t count, off_t offset) override;
    int close(int file) override;
    int rename(const std::string& from, const std::string& to) override;
    int remove(const std::string& path) override;
};

} // namespace tessaro
