// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace tessaro {

class MessageTarget;

/// Asks the main loop to end all that the system's media player plays. Any thread; null is nobody.
void closeMedia(MessageTarget* mainWindow) noexcept;

/// The places where command strings wait between the feeder, which writes them, and the main loop, which hands them to
/// the player long after their record was queued. A slot is used again after 256 strings; text that does not fit is
/// cut off.
class MciStrings {
public:
    /// The command, a blank and the file's path, ending in a zero byte. The bytes hold for the next 255 calls.
    std::span<const char> add(std::string_view command, std::string_view path) noexcept
    {
        Slot& slot = m_slots[m_next];
        m_next = (m_next + 1) % m_slots.size();
        std::size_t length = 0;
        for (const std::string_view part : {command, std::string_view{" "}, path}) {
            const std::size_t taken = std::min(part.size(), slot.size() - 1 - length);
            std::copy_n(part.data(), taken, slot.data() + length);
            length += taken;
        }
        slot[length] = '\0';
        return {slot.data(), length + 1};
    }

private:
    using Slot = std::array<char, 272>;
    std::array<Slot, 256> m_slots{};
    std::size_t m_next = 0;
};

} // namespace tessaro
