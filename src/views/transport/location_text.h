// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/records.h"

#include <cstdint>
#include <string>

namespace tessaro {

/// "12:03:240": measure and beat from 1 as the measure map gives them, ticks inside the beat.
[[nodiscard]] std::string locationText(const _EDT_MEAS& place);
/// "3:07.4" or "1:02:07.4": hours where there are any, tenths of a second cut off.
[[nodiscard]] std::string clockText(std::uint32_t milliseconds);
/// Beats a minute with two places, from microseconds a quarter note; "-" for 0.
[[nodiscard]] std::string tempoText(std::uint32_t microseconds);
/// "6/8"; `denominatorPower` is the exponent of 2.
[[nodiscard]] std::string signatureText(unsigned numerator, unsigned denominatorPower);

} // namespace tessaro
