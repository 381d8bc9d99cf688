// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/loom.h"

#include <cstdint>

namespace tessaro {

/// Puts a tempo, in microseconds a quarter note, in force in the engine at once.
inline void setTempo(Loom& loom, std::uint32_t tempo)
{
    loom.setLoomMidiTempo(static_cast<std::uint8_t>(tempo >> 16U), static_cast<std::uint16_t>(tempo & 0xFFFFU));
    loom.queTimeTic();
}

} // namespace tessaro
