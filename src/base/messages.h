// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>

namespace tessaro {

/// Numbers of the messages that carry real-time news.
namespace msg {
inline constexpr std::uint32_t playPosition = 0x415;   ///< to views; wParam tick
inline constexpr std::uint32_t locationJumped = 0x416; ///< to views; wParam tick
inline constexpr std::uint32_t playStopped = 0x417;    ///< to the main frame
inline constexpr std::uint32_t data = 0x432;           ///< wParam code, lParam address of a ring entry
inline constexpr std::uint32_t realtime = 0x433;       ///< wParam code, lParam position
inline constexpr std::uint32_t recordError = 0x434;
inline constexpr std::uint32_t mciCommand = 0x435;  ///< lParam address of a zero-terminated string
inline constexpr std::uint32_t allSoundOff = 0x436; ///< sent, not posted
inline constexpr std::uint32_t waveRecordError = 0x464;
inline constexpr std::uint32_t devicesChanged = 0x219; ///< wParam 0x8000 arrival, 0x8004 removal
} // namespace msg

struct Message {
    std::uint32_t id = 0;
    std::uint64_t wParam = 0;
    std::intptr_t lParam = 0;
};

/// Something that takes messages: a window, or the plain loop of the command. Stands for what a rule
/// calls a window handle; null means none.
class TESSARO_API MessageTarget {
public:
    virtual ~MessageTarget();
    /// Puts the message in line and returns. Any thread, the engine's included: no allocation, no lock.
    /// False when the line is full and the message is dropped.
    virtual bool post(const Message& message) noexcept = 0;
    /// Handles the message before it returns. On the thread of the receiver's loop only.
    virtual void send(const Message& message) = 0;
};

} // namespace tessaro
