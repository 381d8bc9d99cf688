// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/typed_layout.h"

#include <algorithm>
#include <iterator>

namespace tessaro {
namespace {

struct TypedKey {
    char face;
    std::uint8_t scanCode; ///< of the usual keyboard with 105 keys
};

constexpr int upperRow = 12; ///< semitone of the Q
constexpr TypedKey lower[] = {{'Z', 52}, {'S', 39}, {'X', 53}, {'D', 40}, {'C', 54}, {'V', 55},
                              {'G', 42}, {'B', 56}, {'H', 43}, {'N', 57}, {'J', 44}, {'M', 58},
                              {',', 59}, {'L', 46}, {'.', 60}, {';', 47}, {'/', 61}};
constexpr TypedKey upper[] = {{'Q', 24}, {'2', 11}, {'W', 25}, {'3', 12}, {'E', 26}, {'R', 27},
                              {'5', 14}, {'T', 28}, {'6', 15}, {'Y', 29}, {'7', 16}, {'U', 30},
                              {'I', 31}, {'9', 18}, {'O', 32}, {'0', 19}, {'P', 33}};
constexpr std::uint32_t firstScanCode = 10; ///< of the rows with digits and letters
constexpr std::uint32_t lastScanCode = 61;

static_assert(upperRow + std::size(upper) == typedSemitones);

template <class Matches>
std::optional<int> find(Matches matches)
{
    if (const auto* key = std::find_if(std::begin(lower), std::end(lower), matches); key != std::end(lower))
        return static_cast<int>(key - lower);
    if (const auto* key = std::find_if(std::begin(upper), std::end(upper), matches); key != std::end(upper))
        return upperRow + static_cast<int>(key - upper);
    return std::nullopt;
}

} // namespace

std::optional<int> semitoneOfKey(std::uint32_t scanCode, int key)
{
    if (scanCode >= firstScanCode && scanCode <= lastScanCode)
        return find([scanCode](const TypedKey& k) { return k.scanCode == scanCode; });
    return find([key](const TypedKey& k) { return k.face == key; });
}

QString keysOfSemitone(int semitone)
{
    QString faces;
    if (const int place = semitone - upperRow; place >= 0 && place < static_cast<int>(std::size(upper)))
        faces += QLatin1Char(upper[place].face);
    if (semitone >= 0 && semitone < static_cast<int>(std::size(lower))) faces += QLatin1Char(lower[semitone].face);
    return faces;
}

} // namespace tessaro
