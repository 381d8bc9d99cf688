// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/app_directory.h"

#include "base/file.h"

#include <filesystem>

namespace tessaro {

std::string prepareAppDirectory(const InstalledFolders& folders)
{
    namespace fs = std::filesystem;
    std::string directory = folders.program;
    if (directory.empty() || !isWritableFolder(directory)) {
        directory = folders.userData + "/tessaro";
        makeFolders(directory);
    }
    std::error_code error;
    fs::copy(folders.data, directory, fs::copy_options::recursive | fs::copy_options::skip_existing, error);
    return directory + "/";
}

} // namespace tessaro
