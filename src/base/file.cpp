// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file.h"

#include "base/replacing_file.h"

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

private:
    int m_fd;
};

/// Whether the first `wanted` bytes can be read into memory.
FileError check(const struct stat& status, std::uint64_t limit, std::uint64_t wanted) noexcept
{
    if (S_ISDIR(status.st_mode)) return FileError::isDirectory;
    if (!S_ISREG(status.st_mode)) return FileError::notRegular;
    return std::min(static_cast<std::uint64_t>(status.st_size), wanted) > limit ? FileError::tooLarge : FileError::none;
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
    case FileError::notFound:
    case FileError::badPath: return TextId::fileNotFound;
    case FileError::isDirectory: return TextId::fileIsDirectory;
    case FileError::notRegular: return TextId::fileNotRegular;
    case FileError::noPermission: return TextId::fileNoPermission;
    case FileError::tooLarge: return TextId::fileTooLarge;
    case FileError::diskFull: return TextId::fileDiskFull;
    default: return TextId::fileFailed;
    }
}

TextId causeOf(FileError error) noexcept
{
    switch (error) {
    case FileError::notFound: return TextId::fileCauseFileNotDefined;
    case FileError::badPath: return TextId::fileCauseBadPath;
    case FileError::isDirectory:
    case FileError::notRegular:
    case FileError::noPermission: return TextId::fileCauseAccessDenied;
    case FileError::tooManyOpen: return TextId::fileCauseTooManyOpen;
    case FileError::tooLarge:
    case FileError::diskFull: return TextId::fileCauseDiskFull;
    case FileError::hardware: return TextId::fileCauseHardware;
    case FileError::endsEarly: return TextId::fileCauseEndOfFile;
    default: return TextId::fileCauseUndefined;
    }
}

FileError fileErrorOf(int code) noexcept
{
    switch (code) {
    case ENOENT:
    case ENOTDIR: return FileError::notFound;
    case ENAMETOOLONG:
    case ELOOP: return FileError::badPath;
    case EISDIR: return FileError::isDirectory;
    case EACCES:
    case EPERM:
    case EROFS: return FileError::noPermission;
    case EMFILE:
    case ENFILE: return FileError::tooManyOpen;
    case EFBIG: return FileError::tooLarge;
    case ENOSPC:
    case EDQUOT: return FileError::diskFull;
    case EIO: return FileError::hardware;
    default: return FileError::failed;
    }
}

FileContents readFile(const std::string& path, std::uint64_t limit, std::uint64_t wanted)
{
    const auto failure = [](FileError error) { return FileContents{.bytes = {}, .error = error, .goesOn = false}; };

    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return failure(fileErrorOf(errno));
    if (const FileError error = check(status, limit, wanted); error != FileError::none) return failure(error);
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file || ::fstat(file.get(), &status) != 0) return failure(fileErrorOf(errno));
    // Once more, since another file may have taken the name meanwhile.
    if (const FileError error = check(status, limit, wanted); error != FileError::none) return failure(error);

    FileContents contents;
    try {
        const auto size = static_cast<std::uint64_t>(status.st_size);
        contents.bytes.resize(static_cast<std::size_t>(std::min(size, wanted)));
        contents.goesOn = size > wanted;
    } catch (const std::bad_alloc&) {
        return failure(FileError::tooLarge);
    }
    const auto count = readFully(file.get(), contents.bytes);
    if (!count) return failure(fileErrorOf(errno));
    contents.bytes.resize(*count);
    return contents;
}

FileError writeFileAtomic(const std::string& path, std::span<const std::uint8_t> bytes)
{
    SystemFiles files;
    ReplacingFile file(path, files);
    return file.write(bytes) ? file.commit() : file.error();
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
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

std::string stateFolder() { return folderFrom("XDG_STATE_HOME", homeFolder() + "/.local/state"); }

std::string runtimeFolder() { return folderFrom("XDG_RUNTIME_DIR", folderFrom("TMPDIR", "/tmp")); }

std::string programFolder()
{
    const std::string program = SystemFiles().resolve("/proc/self/exe");
    return program.starts_with("/proc/") ? "" : folderOf(program);
}

} // namespace tessaro
