// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/file_ops.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tessaro::test {

/// A disk in memory that knows what a power cut would leave of it: bytes and names count as kept only when they were
/// synced. Any call can be made to fail, and from any call on the power can be gone.
class MemoryDisk final : public FileOps {
public:
    struct File {
        std::string seen; ///< by programs
        std::string kept; ///< by the disk
        mode_t mode = 0644;
        uid_t owner = 1;
        gid_t group = 1;
    };
    using Names = std::map<std::string, std::shared_ptr<File>>;

    Names seen;
    Names kept;
    int calls = 0;
    int failingCall = 0; ///< counted from 1
    int failure = EIO;
    int lastCall = -1;                        ///< after so many the power is gone; below 0 never
    std::size_t mostWritten = ~std::size_t{}; ///< in one call
    bool mayChown = true;
    bool readOnly = false;
    std::function<void(std::string&)> spoilRead; ///< changes what comes back from the disk

    void put(const std::string& path, const std::string& text)
    {
        seen[path] = kept[path] = std::make_shared<File>(File{text, text});
    }

    std::string resolve(const std::string& path) override { return path; }
    int stat(const std::string& path, struct stat& status) override
    {
        if (!works()) return -1;
        const auto at = seen.find(path);
        if (at == seen.end()) return fail(ENOENT);
        status = {};
        status.st_mode = S_IFREG | at->second->mode;
        status.st_uid = at->second->owner;
        status.st_gid = at->second->group;
        return 0;
    }
    int mayWrite(const std::string&) override { return !works() ? -1 : readOnly ? fail(EACCES) : 0; }
    int open(const std::string& path, int flags, mode_t mode) override
    {
        if (!works()) return -1;
        if ((flags & O_CREAT) != 0 && seen.contains(path)) return fail(EEXIST);
        if ((flags & O_CREAT) != 0) (seen[path] = std::make_shared<File>())->mode = mode;
        m_open.push_back((flags & O_CREAT) != 0 ? seen[path] : nullptr); // null for the folder
        return static_cast<int>(m_open.size()) - 1;
    }
    int chown(int file, uid_t owner, gid_t group) override
    {
        if (!works()) return -1;
        if (!mayChown) return fail(EPERM);
        m_open[at(file)]->owner = owner;
        m_open[at(file)]->group = group;
        return 0;
    }
    int chmod(int file, mode_t mode) override
    {
        if (!works()) return -1;
        m_open[at(file)]->mode = mode;
        return 0;
    }
    ssize_t write(int file, const void* bytes, std::size_t count) override
    {
        if (!works()) return -1;
        count = std::min(count, mostWritten);
        m_open[at(file)]->seen.append(static_cast<const char*>(bytes), count);
        return static_cast<ssize_t>(count);
    }
    int sync(int file) override
    {
        if (!works()) return -1;
        if (File* f = m_open[at(file)].get())
            f->kept = f->seen;
        else
            kept = seen;
        return 0;
    }
    void forgetCached(int) override { static_cast<void>(works()); }
    ssize_t readAt(int file, void* bytes, std::size_t count, off_t offset) override
    {
        if (!works()) return -1;
        std::string text = m_open[at(file)]->kept;
        if (spoilRead) spoilRead(text);
        const auto from = static_cast<std::size_t>(offset);
        return from >= text.size() ? 0 : static_cast<ssize_t>(text.copy(static_cast<char*>(bytes), count, from));
    }
    int close(int) override { return works() ? 0 : -1; }
    int rename(const std::string& from, const std::string& to) override
    {
        if (!works()) return -1;
        const auto node = seen.extract(from);
        if (node.empty()) return fail(ENOENT);
        seen[to] = node.mapped();
        return 0;
    }
    int remove(const std::string& path) override
    {
        if (!works()) return -1;
        return seen.erase(path) != 0 ? 0 : fail(ENOENT);
    }

private:
    static int fail(int code)
    {
        errno = code;
        return -1;
    }
    static std::size_t at(int file) { return static_cast<std::size_t>(file); }
    bool works()
    {
        ++calls;
        if (calls == failingCall) errno = failure;
        const bool cut = lastCall >= 0 && calls > lastCall;
        if (cut) errno = EIO;
        return !cut && calls != failingCall;
    }

    std::vector<std::shared_ptr<File>> m_open;
};

} // namespace tessaro::test
