// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <tuple>

namespace tessaro::test {

/// A sound module on one channel, as far as messages leave a lasting state.
struct ModuleChannel {
    std::array<int, 128> controls;
    std::map<std::tuple<bool, int, int, int>, int> parameters; ///< registered, MSB, LSB, data entry number
    std::tuple<int, int, int> voice{-1, -1, -1};
    int bend = -1;
    int pressure = -1;
    int poly = -1; ///< key and value of the last
    bool registered = true;

    ModuleChannel() { controls.fill(-1); }
    bool operator==(const ModuleChannel&) const = default;

    void take(std::span<const std::uint8_t> m)
    {
        switch (m[0] & 0xF0U) {
        case 0xA0: poly = m[1] * 128 + m[2]; break;
        case 0xB0: control(m[1], m[2]); break;
        case 0xC0: voice = {controls[0], controls[32], m[1]}; break;
        case 0xD0: pressure = m[1]; break;
        case 0xE0: bend = m[1] * 128 + m[2]; break;
        default: break;
        }
    }

private:
    void control(int number, int value)
    {
        if (number >= 98 && number <= 101) registered = number >= 100;
        if (number == 6 || number == 38) {
            const int msb = controls[registered ? 101 : 99];
            const int lsb = controls[registered ? 100 : 98];
            parameters[{registered, msb, lsb, number}] = value;
        }
        controls[static_cast<std::size_t>(number)] = value;
    }
};

/// The channels of several ports; a system exclusive puts the port back to what it was when switched on.
struct Modules {
    std::map<int, std::array<ModuleChannel, 16>> ports;
    void take(int port, std::span<const std::uint8_t> message)
    {
        if (message[0] == 0xF0)
            ports[port] = {};
        else if (message[0] < 0xF0)
            ports[port][message[0] & 0x0FU].take(message);
    }
    bool operator==(const Modules&) const = default;
};

} // namespace tessaro::test
