// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/strings.h"

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

enum class FileError : std::uint8_t {
    none,
    notFound,
    badPath, ///< a folder on the way is missing
    isDirectory,
    notRegular, ///< a pipe, a device, a socket
    noPermission,
    tooManyOpen,
    tooLarge, ///< above the limit given, or more than memory holds
    diskFull,
    hardware, ///< what was written does not come back as it went
    endsEarly,
    failed, ///< anything else that the system reports
};

/// The sentence for a user. Not for FileError::none.
[[nodiscard]] TESSARO_API TextId textOf(FileError error) noexcept;
/// The short name of the cause, one of the fourteen that the system of file errors knows. Not for FileError::none.
[[nodiscard]] TESSARO_API TextId causeOf(FileError error) noexcept;
/// What a value of errno stands for.
[[nodiscard]] TESSARO_API FileError fileErrorOf(int code) noexcept;

struct FileContents {
    std::vector<std::uint8_t> bytes; // empty on an error
    FileError error = FileError::none;
    bool goesOn = false; ///< the file is longer than what was asked for
};

/// The first `wanted` bytes of a regular file, usually the whole of it. More than `limit` bytes, and what is no such
/// file, is refused before anything is read; a pipe is not waited for.
[[nodiscard]] TESSARO_API FileContents readFile(const std::string& path, std::uint64_t limit,
                                                std::uint64_t wanted = std::numeric_limits<std::uint64_t>::max());

/// Puts a file in the place of the one of this name, or leaves that one untouched, see ReplacingFile.
[[nodiscard]] TESSARO_API FileError writeFileAtomic(const std::string& path, std::span<const std::uint8_t> bytes);

/// The folder that a path's last part stands in.
[[nodiscard]] TESSARO_API std::string folderOf(const std::string& path);
/// Makes a folder and those above it. True when it stands in the end.
TESSARO_API bool makeFolders(const std::string& path);
[[nodiscard]] TESSARO_API bool isWritableFolder(const std::string& path);

/// The user's folders as the desktop names them, without a slash at the end; they need not exist.
[[nodiscard]] TESSARO_API std::string homeFolder();
[[nodiscard]] TESSARO_API std::string configFolder();  ///< XDG_CONFIG_HOME, otherwise ~/.config
[[nodiscard]] TESSARO_API std::string dataFolder();    ///< XDG_DATA_HOME, otherwise ~/.local/share
[[nodiscard]] TESSARO_API std::string stateFolder();   ///< XDG_STATE_HOME, otherwise ~/.local/state
[[nodiscard]] TESSARO_API std::string runtimeFolder(); ///< XDG_RUNTIME_DIR, otherwise that for temporary files
/// Where the running program's file lies; empty when the system does not tell.
[[nodiscard]] TESSARO_API std::string programFolder();

} // namespace tessaro
