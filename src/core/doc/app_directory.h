// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>

namespace tessaro {

/// Where the program finds what it was installed with. Folders without a slash at the end.
struct TESSARO_API InstalledFolders {
    std::string program;  ///< of the program's file
    std::string data;     ///< read-only originals of the data files; may not exist
    std::string userData; ///< the user's folder of data
};

/// The application's directory, with a slash at its end: the program's own when it can be written, otherwise the
/// user's. Installed data files that are missing there are copied; files that exist stay.
[[nodiscard]] TESSARO_API std::string prepareAppDirectory(const InstalledFolders& folders);

} // namespace tessaro
