// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/position.h"

#include "core/edit/editor.h"

#include <array>
#include <charconv>

namespace tessaro::cli {

namespace {

struct Numbers {
    std::array<std::uint32_t, 3> values{};
    std::size_t count = 0;
};

/// One or three decimal numbers with colons between.
std::optional<Numbers> numbersOf(std::string_view text)
{
    Numbers numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (numbers.count < numbers.values.size()) {
        const auto [next, error] = std::from_chars(at, end, numbers.values[numbers.count]);
        if (error != std::errc()) return std::nullopt;
        ++numbers.count;
        if (next == end) {
            if (numbers.count == 2) return std::nullopt;
            return numbers;
        }
        if (*next != ':') return std::nullopt;
        at = next + 1;
    }
    return std::nullopt;
}

} // namespace

bool isPosition(std::string_view text) { return numbersOf(text).has_value(); }

std::optional<std::uint32_t> tickOf(std::string_view text, const CEditor& editor)
{
    const std::optional<Numbers> numbers = numbersOf(text);
    if (!numbers) return std::nullopt;
    const auto& [first, second, third] = numbers->values;
    if (numbers->count == 1) return first;
    if (first == 0 || second == 0) return std::nullopt;
    return editor.MeasToTime({first - 1, second - 1, third});
}

} // namespace tessaro::cli
