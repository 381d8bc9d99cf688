// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_font.h"

#include "views/text/ui_text.h"

#include <algorithm>
#include <cstdlib>

namespace tessaro {
namespace {

constexpr std::size_t recordSize = 60;
constexpr std::size_t nameAt = 28;
constexpr int leastHeight = 6;
constexpr int mostHeight = 64;

int number(std::span<const std::uint8_t> record, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8U | record[at + i];
    return static_cast<int>(value);
}

} // namespace

std::optional<QFont> listFont(std::span<const std::uint8_t> record)
{
    if (record.size() != recordSize) return std::nullopt;
    const auto name = record.subspan(nameAt);
    const std::string family(name.begin(), std::find(name.begin(), name.end(), 0));
    const long long height = std::llabs(number(record, 0));
    if (family.empty() || height < leastHeight || height > mostHeight) return std::nullopt;
    QFont font(songText(family));
    font.setPixelSize(static_cast<int>(height));
    font.setBold(number(record, 16) >= QFont::Bold);
    font.setItalic(record[20] != 0);
    return font;
}

} // namespace tessaro
