// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <string_view>

namespace tessaro {

enum class Language : std::uint8_t { japanese, english };

/// The numbers of the interface texts, under the names that base/strings_table.h gives them.
enum class TextId : int {
#define TESSARO_TEXT(name, number, japanese, english) name = number,
#include "base/strings_table.h"
#undef TESSARO_TEXT
};

/// The text of a number, UTF-8, valid for ever. Empty for a number without a text.
[[nodiscard]] TESSARO_API std::string_view text(TextId id, Language language) noexcept;

/// The language of the desktop: Japanese when the first that is set of LC_ALL, LC_MESSAGES and LANG
/// says so, otherwise English.
[[nodiscard]] TESSARO_API Language languageFromEnvironment() noexcept;

/// The interface texts in the language in use.
class Strings {
public:
    explicit Strings(Language language) noexcept : m_language(language) {}

    [[nodiscard]] Language language() const noexcept { return m_language; }
    void setLanguage(Language language) noexcept { m_language = language; }

    [[nodiscard]] std::string_view operator()(TextId id) const noexcept { return text(id, m_language); }

private:
    Language m_language;
};

} // namespace tessaro
