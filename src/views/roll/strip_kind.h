// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/evnt.h"

#include <cstdint>

namespace tessaro {

/// What a controller strip shows: one kind of value. Velocities belong to notes; all others are events of their own.
struct StripKind {
    enum class What : std::uint8_t { velocity, polyPressure, control, program, pressure, pitchBend };

    What what = What::velocity;
    std::uint8_t number = 0; ///< of the controller; of the key for polyPressure

    [[nodiscard]] bool isVelocity() const { return what == What::velocity; }
    [[nodiscard]] int least() const { return isVelocity() ? 1 : 0; }
    [[nodiscard]] int most() const { return what == What::pitchBend ? 16383 : 127; }
    /// The value without effect: the middle of the pitch bend, of panorama and balance, otherwise 0.
    [[nodiscard]] int rest() const;
    /// Whether an event is of this kind; for velocities whether it is a note.
    [[nodiscard]] bool isOf(const CEvnt& event) const;
    /// The value of a record of this kind.
    [[nodiscard]] int valueOf(const _EDT_EVNT& rec) const;
    /// A record of this kind; `channel` is 0 to 15. Not for velocities.
    [[nodiscard]] _EDT_EVNT record(std::uint32_t time, int value, std::uint8_t channel) const;
    /// The kind as a number, for settings and choices: one for the pressure of all keys.
    [[nodiscard]] int code() const;
    [[nodiscard]] static StripKind ofCode(int code);
    /// Writes a value into a record of this kind, a note's for velocities.
    void setValue(_EDT_EVNT& rec, int value) const;

    bool operator==(const StripKind&) const = default;

private:
    [[nodiscard]] std::uint8_t kindStatus() const;
};

} // namespace tessaro
