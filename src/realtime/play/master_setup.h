// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tessaro {

class CTrk;
class DirectSender;
class StyleCursor;
class TrackTable;

/// A time signature where it stands in the song.
struct SignatureAt {
    std::uint32_t tick = 0;
    std::uint8_t numerator = 4;
    std::uint8_t denominatorPower = 2;
};

/// Sends at once what the master track holds before `until`, notes and tempos left out, and takes the chords to the
/// styles. The result is the last signature found, 4/4 at the song's start without one. User interface thread, while
/// nothing plays.
SignatureAt sendMaster(const CTrk& master, std::uint32_t until, DirectSender& sender, const TrackTable& tracks,
                       StyleCursor& styles);

} // namespace tessaro
