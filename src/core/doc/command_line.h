// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <span>
#include <string>

namespace tessaro {

/// What the program was asked to do at its start.
struct TESSARO_API CommandLine {
    enum class Shell { fileNew, fileOpen, unsupported };

    Shell shell = Shell::fileNew;
    std::string file; ///< to open

    /// Takes the arguments behind the program's name: nothing for a new song, or one file. `--` ends the
    /// options, of which there is none.
    [[nodiscard]] static CommandLine parse(std::span<const std::string> arguments);
};

} // namespace tessaro
