// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <QString>

#include <string_view>

namespace tessaro {

/// The texts of the windows in the language in use, which is that of the table handed over.
class UiText {
public:
    /// Borrowed.
    explicit UiText(Strings& strings) : m_strings(strings) {}

    void setLanguage(Language language) { m_strings.setLanguage(language); }
    [[nodiscard]] Language language() const { return m_strings.language(); }
    [[nodiscard]] QString operator()(TextId id) const;
    /// The same without a menu's access key and ellipsis.
    [[nodiscard]] QString plain(TextId id) const;
    [[nodiscard]] const Strings& strings() const { return m_strings; }

private:
    Strings& m_strings;
};

/// A text of a song or a file, from the bytes as they stand there.
[[nodiscard]] QString songText(std::string_view bytes);
[[nodiscard]] inline QString utf8Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace tessaro
