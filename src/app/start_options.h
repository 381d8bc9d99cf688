// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/doc/command_line.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tessaro {

enum class Appearance;
enum class Language : std::uint8_t;

/// What the command line of the window program asks for.
struct StartOptions {
    CommandLine document;
    QString screenshot;  ///< picture file to write; empty to run as usual
    QStringList windows; ///< to be seen in the picture; empty for the usual ones
    std::optional<Appearance> appearance;
    std::optional<Language> language;
};

/// Reads the arguments of the application. Prints and ends the process on --help, --version and wrong usage.
[[nodiscard]] StartOptions readStartOptions();

} // namespace tessaro
