// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/evnt.h"

#include <cstdint>

namespace tessaro {

/// What follows the delta of an event in a native song file, by its status. The status itself comes first in all.
/// Gate times take four bytes, lengths are variable-length quantities.
enum class EventForm : std::uint8_t {
    none,  ///< such an event is never in a file
    sys,   ///< length, data
    meta,  ///< type, length, data
    post4, ///< the posts 1 to 4
    post3,
    post2,
    post1,
    wave, ///< gate time, file name
    mci,  ///< file name, command
    syng, ///< posts 1 and 2, gate time, length, data
    note, ///< posts 1 and 2, gate time
};

[[nodiscard]] constexpr EventForm formOf(std::uint8_t st) noexcept
{
    if (st == status::sysex || st == status::sysexPart) return EventForm::sys;
    if (st == status::metaEvent) return EventForm::meta;
    switch (status::kind(st)) {
    case status::nrpn:
    case status::rpn: return EventForm::post4;
    case status::voice: return EventForm::post3;
    case status::wave: return EventForm::wave;
    case status::mci: return EventForm::mci;
    case status::syng: return EventForm::syng;
    case status::note: return EventForm::note;
    case status::polyPressure:
    case status::control:
    case status::pitchBend: return EventForm::post2;
    case status::program:
    case status::pressure: return EventForm::post1;
    default: return EventForm::none;
    }
}

} // namespace tessaro
