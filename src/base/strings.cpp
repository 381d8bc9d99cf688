// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/strings.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace tessaro {

namespace {

struct Row {
    TextId id;
    std::string_view japanese;
    std::string_view english;
};

constexpr Row table[] = {
#define TESSARO_TEXT(name, number, japanese, english) {TextId::name, japanese, english},
#include "base/strings_table.h"
#undef TESSARO_TEXT
};

static_assert(std::ranges::adjacent_find(table, std::ranges::greater_equal(), &Row::id) == std::ranges::end(table),
              "the rows of strings_table.h stand in rising order of their numbers");

} // namespace

std::string_view text(TextId id, Language language) noexcept
{
    const Row* row = std::ranges::lower_bound(table, id, {}, &Row::id);
    if (row == std::ranges::end(table) || row->id != id) return {};
    return language == Language::japanese ? row->japanese : row->english;
}

Language languageFromEnvironment() noexcept
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value) return std::string_view(value).starts_with("ja") ? Language::japanese : Language::english;
    }
    return Language::english;
}

} // namespace tessaro
