// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/console_user.h"

#include "base/strings.h"

#include <algorithm>
#include <cstdio>

namespace tessaro::cli {

void ConsoleUser::message(int stringId, MessageKind kind)
{
    const auto id = static_cast<TextId>(stringId);
    // The system's own text, and the English of it for whoever cannot read it.
    std::string line(text(id, Language::japanese));
    if (languageFromEnvironment() == Language::english)
        line.append(" (").append(text(id, Language::english)).append(")");
    sentence(line, kind);
}

void ConsoleUser::sentence(std::string_view text, MessageKind kind)
{
    m_failed = m_failed || kind == MessageKind::error;
    std::string line(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    std::fprintf(stderr, "tessaro-cli: %s: %s\n", m_file.c_str(), line.c_str());
}

} // namespace tessaro::cli
