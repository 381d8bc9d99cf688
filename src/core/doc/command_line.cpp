// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/command_line.h"

namespace tessaro {

CommandLine CommandLine::parse(std::span<const std::string> arguments)
{
    CommandLine line;
    bool optionsOver = false;
    for (const std::string& argument : arguments) {
        if (!optionsOver && argument == "--") {
            optionsOver = true;
        } else if ((!optionsOver && argument.size() > 1 && argument[0] == '-') || !line.file.empty()
                   || argument.empty()) {
            line.shell = Shell::unsupported;
        } else {
            line.file = argument;
            if (line.shell == Shell::fileNew) line.shell = Shell::fileOpen;
        }
    }
    return line;
}

} // namespace tessaro
