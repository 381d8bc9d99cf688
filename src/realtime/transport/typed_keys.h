// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <span>
#include <string>

namespace tessaro {

/// A MIDI input driver that the program plays itself, from the computer's keyboard. It stands in the list of inputs
/// under its name; what is sent while nobody has it open is lost. User interface thread.
class TESSARO_API TypedKeys {
public:
    virtual ~TypedKeys();
    [[nodiscard]] virtual std::string driverName() const = 0;
    /// One whole channel message, at once.
    virtual void send(std::span<const std::uint8_t> message) = 0;
};

} // namespace tessaro
