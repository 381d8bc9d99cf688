// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <span>

namespace tessaro {

/// Notes played on keys that are pressed and let go. Every key has a number of its own, and a note sounds as long as at
/// least one key holds it; a key that is pressed once more while it is down does nothing. Channel 1.
class TypedKeyboard {
public:
    static constexpr int lowestOctave = -1; ///< begins with note 0
    static constexpr int highestOctave = 7;

    /// Takes the messages.
    std::function<void(std::span<const std::uint8_t>)> onMessage;
    /// Other keys are held, or octave or velocity have changed.
    std::function<void()> onChanged;

    void press(int key, int semitone);
    void release(int key);
    /// Ends all that sounds.
    void releaseAll();

    /// The octave of semitone 0. A change ends all that sounds.
    void setOctave(int octave);
    [[nodiscard]] int octave() const { return m_octave; }
    /// 1 to 127.
    void setVelocity(int velocity);
    [[nodiscard]] int velocity() const { return m_velocity; }
    /// Whether the note of this semitone sounds.
    [[nodiscard]] bool sounds(int semitone) const;

private:
    static constexpr int notes = 128;

    [[nodiscard]] int noteOf(int semitone) const { return 12 * (m_octave + 1) + semitone; }
    void send(int status, int note, int velocity) const;
    void changed() const;

    std::map<int, int> m_held;          ///< key, note
    std::array<int, notes> m_holders{}; ///< keys that hold a note
    int m_octave = 3;
    int m_velocity = 100;
};

} // namespace tessaro
