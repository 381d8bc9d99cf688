// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace tessaro {

/// The lowest key of the drums that General MIDI knows of. Below it older drum maps have more, the metronome's clicks
/// among it, and most SoundFonts have nothing.
inline constexpr int lowestDrumKey = 27;

/// The keys that mean the same as a key below, or nearly so, the best one first. Empty for a key without such.
[[nodiscard]] inline std::span<const std::uint8_t> drumKeysLike(int key) noexcept
{
    struct Likeness {
        int key;
        std::array<std::uint8_t, 3> likes; ///< 0 for none
    };
    static constexpr Likeness table[] = {
        {13, {86}},         // mute surdo
        {14, {87}},         // open surdo
        {15, {27}},         // high Q
        {16, {28}},         // slap
        {17, {29}},         // scratch push
        {18, {30}},         // scratch pull
        {20, {32}},         // click noise: square click
        {21, {33, 77, 37}}, // metronome click: or low wood block, side stick
        {22, {34, 76, 37}}, // metronome bell: or high wood block, side stick
        {23, {32, 77, 37}}, // low click
        {24, {32, 76, 37}}, // high click
    };
    const auto* at = std::find_if(std::begin(table), std::end(table), [&](const Likeness& l) { return l.key == key; });
    if (at == std::end(table)) return {};
    return {at->likes.begin(), std::find(at->likes.begin(), at->likes.end(), std::uint8_t{0})};
}

} // namespace tessaro
