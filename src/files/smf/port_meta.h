// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace tessaro {

/// The body of the meta event that names an output port: three fixed bytes and the port.
[[nodiscard]] constexpr bool isPort(std::span<const std::uint8_t> body) noexcept
{
    return body.size() == 4 && body[0] == 0x43 && body[1] == 0x00 && body[2] == 0x01;
}

} // namespace tessaro
