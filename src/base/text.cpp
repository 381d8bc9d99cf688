// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text.h"

#include <iconv.h>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace tessaro {

namespace {

bool isAscii(std::string_view bytes) noexcept
{
    return std::ranges::all_of(bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The length of the UTF-8 sequence at the start of some bytes, 0 when there is none.
std::size_t sequenceLength(std::string_view bytes) noexcept
{
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned lead = at(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead < 0xC2 ? 0U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : lead < 0xF5 ? 4U : 0U;
    if (length == 0 || bytes.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((at(i) & 0xC0U) != 0x80) return 0;

    const unsigned second = at(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool tooHigh = lead == 0xF4 && second >= 0x90;
    return overlong || surrogate || tooHigh ? 0 : length;
}

/// The whole text in another encoding; nothing when a part of it has no place there.
std::optional<std::string> convert(std::string_view bytes, const char* from, const char* to)
{
    const iconv_t converter = iconv_open(to, from);
    if (converter == iconv_t(-1)) return std::nullopt;

    std::string result(bytes.size() * 3, '\0'); // one byte becomes three at most: half-width kana
    char* in = const_cast<char*>(bytes.data()); // iconv does not write there
    char* out = result.data();
    std::size_t inLeft = bytes.size();
    std::size_t outLeft = result.size();
    const std::size_t replaced = iconv(converter, &in, &inLeft, &out, &outLeft);
    iconv_close(converter);
    if (replaced != 0) return std::nullopt; // an error, or characters that were only approximated

    result.resize(result.size() - outLeft);
    return result;
}

std::string latin1ToUtf8(std::string_view bytes)
{
    std::string result;
    result.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x80) {
            result += c;
        } else {
            result += static_cast<char>(0xC0U | code >> 6);
            result += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
    return result;
}

constexpr const char* codePage932 = "CP932";

} // namespace

bool isUtf8(std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        const std::size_t length = sequenceLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string toUtf8(std::string_view bytes)
{
    if (isUtf8(bytes)) return std::string(bytes);
    if (auto text = convert(bytes, codePage932, "UTF-8")) return *std::move(text);
    return latin1ToUtf8(bytes);
}

std::string fromUtf8(std::string_view utf8)
{
    if (isAscii(utf8)) return std::string(utf8);
    const auto narrow = convert(utf8, "UTF-8", codePage932);
    return narrow && toUtf8(*narrow) == utf8 ? *narrow : std::string(utf8);
}

} // namespace tessaro
