// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/strings.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

enum class FileError : std::uint8_t {
    none,
    notFound,
    isDirectory,
    notRegular, ///< a pipe, a device, a socket
    noPermission,
    tooLarge, ///< above the limit given, or more than memory holds
    diskFull,
    failed, ///< anything else that the system reports
};

/// The sentence for a user. Not for FileError::none.
[[nodiscard]] TESSARO_API TextId textOf(FileError error) noexcept;

struct FileContents {
    std::vector<std::uint8_t> bytes; // empty on an error
    FileError error = FileError::none;
};

/// The whole of a regular file of at most `limit` bytes. What is no such file is refused before anything
/// of it is read; a pipe is not waited for.
[[nodiscard]] TESSARO_API FileContents readFile(const std::string& path, std::uint64_t limit);

/// Puts a file in the place of the one of this name, or leaves that one untouched: the bytes go to a new
/// file in the same folder, onto the disk, are read back and compared, and only then take the name. A
/// symbolic link stays and its target is replaced. The new file keeps the old one's access rights.
[[nodiscard]] TESSARO_API FileError writeFileAtomic(const std::string& path, std::span<const std::uint8_t> bytes);

/// Makes a folder and those above it. True when it stands in the end.
TESSARO_API bool makeFolders(const std::string& path);
[[nodiscard]] TESSARO_API bool isWritableFolder(const std::string& path);

/// The user's folders as the desktop names them, without a slash at the end; they need not exist.
[[nodiscard]] TESSARO_API std::string homeFolder();
[[nodiscard]] TESSARO_API std::string configFolder();  ///< XDG_CONFIG_HOME, otherwise ~/.config
[[nodiscard]] TESSARO_API std::string dataFolder();    ///< XDG_DATA_HOME, otherwise ~/.local/share
[[nodiscard]] TESSARO_API std::string runtimeFolder(); ///< XDG_RUNTIME_DIR, otherwise that for temporary files
/// Where the running program's file lies; empty when the system does not tell.
[[nodiscard]] TESSARO_API std::string programFolder();

} // namespace tessaro
