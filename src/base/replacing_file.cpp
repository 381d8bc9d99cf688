// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/replacing_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <utility>

namespace tessaro {

namespace {

constexpr std::size_t bufferSize = 1U << 16U;

/// A sum over buffers of bytes. Writing and reading back cut the file into the same buffers.
std::uint64_t addUp(std::uint64_t sum, std::span<const std::uint8_t> bytes) noexcept
{
    while (!bytes.empty()) {
        std::uint64_t word = 0;
        const std::size_t count = std::min(bytes.size(), sizeof word);
        std::memcpy(&word, bytes.data(), count);
        sum = (std::rotl(sum, 23) ^ word) * 0x9E3779B97F4A7C15U + count;
        bytes = bytes.subspan(count);
    }
    return sum;
}

/// Why no file can be made in its folder.
FileError placeError(int code) noexcept
{
    return code == ENOENT || code == ENOTDIR ? FileError::badPath : fileErrorOf(code);
}

} // namespace

ReplacingFile::ReplacingFile(const std::string& path, FileOps& files) : m_files(files), m_target(files.resolve(path))
{
    m_buffer.reserve(bufferSize);
    create();
}

ReplacingFile::~ReplacingFile()
{
    if (m_file >= 0) m_files.close(m_file);
    if (!m_temporary.empty()) m_files.remove(m_temporary);
}

bool ReplacingFile::fail(FileError error) noexcept
{
    if (m_error == FileError::none) m_error = error;
    return false;
}

bool ReplacingFile::failWithErrno() noexcept { return fail(fileErrorOf(errno)); }

void ReplacingFile::create()
{
    struct stat old {};
    const bool exists = m_files.stat(m_target, old) == 0;
    if (!exists && errno != ENOENT) {
        fail(placeError(errno));
        return;
    }
    if (exists && !S_ISREG(old.st_mode)) {
        fail(S_ISDIR(old.st_mode) ? FileError::isDirectory : FileError::notRegular);
        return;
    }
    if (exists && m_files.mayWrite(m_target) != 0) {
        failWithErrno();
        return;
    }
    const std::string stem = folderOf(m_target) + "/.tessaro-" + std::to_string(::getpid()) + '-';
    for (unsigned i = 0; m_file < 0; ++i) {
        const std::string name = stem + std::to_string(i);
        m_file = m_files.open(name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_file >= 0) {
            m_temporary = name;
        } else if (errno != EEXIST) {
            fail(placeError(errno));
            return;
        }
    }
    if (exists) takeRights(old);
}

/// Where the file system knows no rights, or gives none away, the new file does without. A group that it could not
/// keep gets no more than everybody.
void ReplacingFile::takeRights(const struct stat& old)
{
    mode_t mode = old.st_mode & 0777U;
    const bool kept = m_files.chown(m_file, old.st_uid, old.st_gid) == 0
                   || m_files.chown(m_file, static_cast<uid_t>(-1), old.st_gid) == 0;
    if (!kept) mode = (mode & 0707U) | (mode & ((mode & 0007U) << 3U));
    m_files.chmod(m_file, mode);
}

bool ReplacingFile::write(std::span<const std::uint8_t> bytes)
{
    while (m_error == FileError::none && !bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), bufferSize - m_buffer.size());
        m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
        bytes = bytes.subspan(count);
        if (m_buffer.size() == bufferSize) flush();
    }
    return m_error == FileError::none;
}

bool ReplacingFile::flush()
{
    m_sum = addUp(m_sum, m_buffer);
    m_length += m_buffer.size();
    std::span<const std::uint8_t> rest(m_buffer);
    while (!rest.empty()) {
        const ssize_t count = m_files.write(m_file, rest.data(), rest.size());
        if (count == 0) return fail(FileError::diskFull);
        if (count > 0)
            rest = rest.subspan(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return failWithErrno();
    }
    m_buffer.clear();
    return true;
}

FileError ReplacingFile::commit()
{
    if (m_error == FileError::none) static_cast<void>(flush() && bringToDisk() && readBack() && takeName());
    return m_error;
}

bool ReplacingFile::bringToDisk()
{
    // A file system without a disk below it answers EINVAL.
    if (m_files.sync(m_file) != 0 && errno != EINVAL) return failWithErrno();
    m_files.forgetCached(m_file);
    return true;
}

bool ReplacingFile::readBack()
{
    m_buffer.resize(bufferSize);
    std::uint64_t sum = 0;
    std::uint64_t done = 0;
    std::size_t filled = 0;
    for (;;) {
        const ssize_t count =
            m_files.readAt(m_file, m_buffer.data() + filled, bufferSize - filled, static_cast<off_t>(done + filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failWithErrno();
        filled += static_cast<std::size_t>(count);
        if (count != 0 && filled < bufferSize) continue;
        sum = addUp(sum, std::span(m_buffer).first(filled));
        done += filled;
        if (filled < bufferSize) break;
        filled = 0;
    }
    if (done < m_length) return fail(FileError::endsEarly);
    return done == m_length && sum == m_sum ? true : fail(FileError::hardware);
}

bool ReplacingFile::takeName()
{
    if (m_files.close(std::exchange(m_file, -1)) != 0) return failWithErrno();
    if (m_files.rename(m_temporary, m_target) != 0) return fail(placeError(errno));
    m_temporary.clear();
    // The name is in place; that it also outlives a power cut is worth the try, not an error.
    const int folder = m_files.open(folderOf(m_target), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (folder >= 0) {
        m_files.sync(folder);
        m_files.close(folder);
    }
    return true;
}

} // namespace tessaro
