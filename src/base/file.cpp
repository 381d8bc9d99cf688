// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <optional>
#include <utility>

namespace tessaro {

namespace {

FileError errorOf(int code) noexcept
{
    switch (code) {
    case ENOENT:
    case ENOTDIR: return FileError::notFound;
    case EISDIR: return FileError::isDirectory;
    case EACCES:
    case EPERM:
    case EROFS: return FileError::noPermission;
    case EFBIG: return FileError::tooLarge;
    case ENOSPC:
    case EDQUOT: return FileError::diskFull;
    default: return FileError::failed;
    }
}

/// A file descriptor that is closed at the end.
class Descriptor {
public:
    explicit Descriptor(int fd) noexcept : m_fd(fd) {}
    ~Descriptor()
    {
        if (m_fd >= 0) ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const noexcept { return m_fd >= 0; }
    [[nodiscard]] int get() const noexcept { return m_fd; }
    /// Closes now, to hear of errors that come as late as this.
    bool close() noexcept { return ::close(std::exchange(m_fd, -1)) == 0; }

private:
    int m_fd;
};

FileError check(const struct stat& status, std::uint64_t limit) noexcept
{
    if (S_ISDIR(status.st_mode)) return FileError::isDirectory;
    if (!S_ISREG(status.st_mode)) return FileError::notRegular;
    return static_cast<std::uint64_t>(status.st_size) > limit ? FileError::tooLarge : FileError::none;
}

/// Fills the buffer as far as the file goes; the count of bytes, nothing on an error.
std::optional<std::size_t> readFully(int fd, std::span<std::uint8_t> buffer) noexcept
{
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t n = ::read(fd, buffer.data() + done, buffer.size() - done);
        if (n == 0) break;
        if (n > 0) {
            done += static_cast<std::size_t>(n);
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return done;
}

bool writeFully(int fd, std::span<const std::uint8_t> bytes) noexcept
{
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n >= 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(n));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool holds(int fd, std::span<const std::uint8_t> bytes) noexcept
{
    if (::lseek(fd, 0, SEEK_SET) != 0) return false;
    std::array<std::uint8_t, 65536> buffer;
    for (;;) {
        const auto count = readFully(fd, buffer);
        if (!count || *count > bytes.size()) return false;
        if (*count == 0) return bytes.empty();
        if (!std::equal(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(*count), bytes.begin()))
            return false;
        bytes = bytes.subspan(*count);
    }
}

/// Where a path leads when links are followed; the path itself when nothing stands there yet.
std::string resolved(const std::string& path)
{
    char* real = ::realpath(path.c_str(), nullptr);
    if (!real) return path;
    std::string result = real;
    std::free(real);
    return result;
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

struct NewFile {
    std::string path;
    Descriptor file;
};

/// An empty file under a name of its own, open for reading and writing.
NewFile createIn(const std::string& folder)
{
    for (int i = 0;; ++i) {
        std::string path = folder + "/.tessaro-" + std::to_string(::getpid()) + '-' + std::to_string(i);
        const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) return {.path = std::move(path), .file = Descriptor(fd)};
    }
}

FileError fill(Descriptor& file, std::span<const std::uint8_t> bytes) noexcept
{
    if (!writeFully(file.get(), bytes)) return errorOf(errno);
    if (::fsync(file.get()) != 0 && errno != EINVAL) return errorOf(errno); // EINVAL: no disk below
    if (!holds(file.get(), bytes)) return FileError::failed;
    return file.close() ? FileError::none : errorOf(errno);
}

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// A folder that a variable names; only absolute paths count.
std::string folderFrom(const char* variable, const std::string& otherwise)
{
    std::string value = environment(variable);
    while (value.size() > 1 && value.back() == '/') value.pop_back();
    return value.starts_with('/') ? value : otherwise;
}

} // namespace

TextId textOf(FileError error) noexcept
{
    switch (error) {
    case FileError::notFound: return TextId::fileNotFound;
    case FileError::isDirectory: return TextId::fileIsDirectory;
    case FileError::notRegular: return TextId::fileNotRegular;
    case FileError::noPermission: return TextId::fileNoPermission;
    case FileError::tooLarge: return TextId::fileTooLarge;
    case FileError::diskFull: return TextId::fileDiskFull;
    case FileError::none:
    case FileError::failed: break;
    }
    return TextId::fileFailed;
}

FileContents readFile(const std::string& path, std::uint64_t limit)
{
    const auto failure = [](FileError error) { return FileContents{.bytes = {}, .error = error}; };

    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return failure(errorOf(errno));
    if (const FileError error = check(status, limit); error != FileError::none) return failure(error);
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file || ::fstat(file.get(), &status) != 0) return failure(errorOf(errno));
    // Once more, since another file may have taken the name meanwhile.
    if (const FileError error = check(status, limit); error != FileError::none) return failure(error);

    FileContents contents;
    try {
        contents.bytes.resize(static_cast<std::size_t>(status.st_size));
    } catch (const std::bad_alloc&) {
        return failure(FileError::tooLarge);
    }
    const auto count = readFully(file.get(), contents.bytes);
    if (!count) return failure(errorOf(errno));
    contents.bytes.resize(*count);
    return contents;
}

FileError writeFileAtomic(const std::string& path, std::span<const std::uint8_t> bytes)
{
    const std::string target = resolved(path);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) return S_ISDIR(old.st_mode) ? FileError::isDirectory : FileError::notRegular;

    NewFile fresh = createIn(folderOf(target));
    if (!fresh.file) return errorOf(errno);
    // Where the file system knows no rights, the new file goes without.
    if (exists) static_cast<void>(::fchmod(fresh.file.get(), old.st_mode & 0777));
    FileError error = fill(fresh.file, bytes);
    if (error == FileError::none && ::rename(fresh.path.c_str(), target.c_str()) != 0) error = errorOf(errno);
    if (error != FileError::none) {
        ::unlink(fresh.path.c_str());
        return error;
    }
    // The name is in place; that it also survives a power cut is worth the try, not an error.
    const Descriptor folder(::open(folderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) ::fsync(folder.get());
    return FileError::none;
}

bool makeFolders(const std::string& path)
{
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        ::mkdir(path.substr(0, end).c_str(), 0777);
    ::mkdir(path.c_str(), 0777);
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isWritableFolder(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && ::access(path.c_str(), W_OK | X_OK) == 0;
}

std::string homeFolder()
{
    std::string home = environment("HOME");
    if (home.empty())
        if (const passwd* entry = ::getpwuid(::getuid())) home = entry->pw_dir;
    while (home.size() > 1 && home.back() == '/') home.pop_back();
    return home;
}

std::string configFolder() { return folderFrom("XDG_CONFIG_HOME", homeFolder() + "/.config"); }

std::string dataFolder() { return folderFrom("XDG_DATA_HOME", homeFolder() + "/.local/share"); }

std::string runtimeFolder() { return folderFrom("XDG_RUNTIME_DIR", folderFrom("TMPDIR", "/tmp")); }

std::string programFolder()
{
    const std::string program = resolved("/proc/self/exe");
    return program.starts_with("/proc/") ? "" : folderOf(program);
}

} // namespace tessaro
