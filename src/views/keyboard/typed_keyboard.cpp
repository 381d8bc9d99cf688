// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/typed_keyboard.h"

#include <algorithm>

namespace tessaro {
namespace {

constexpr int noteOn = 0x90;
constexpr int noteOff = 0x80;
constexpr int releaseVelocity = 64;

} // namespace

void TypedKeyboard::send(int status, int note, int velocity) const
{
    const std::array message{static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(note),
                             static_cast<std::uint8_t>(velocity)};
    if (onMessage) onMessage(message);
}

void TypedKeyboard::changed() const
{
    if (onChanged) onChanged();
}

void TypedKeyboard::press(int key, int semitone)
{
    const int note = noteOf(semitone);
    if (note < 0 || note >= notes || !m_held.emplace(key, note).second) return;
    if (m_holders[static_cast<std::size_t>(note)]++ == 0) send(noteOn, note, m_velocity);
    changed();
}

void TypedKeyboard::release(int key)
{
    const auto held = m_held.find(key);
    if (held == m_held.end()) return;
    const int note = held->second;
    m_held.erase(held);
    if (--m_holders[static_cast<std::size_t>(note)] == 0) send(noteOff, note, releaseVelocity);
    changed();
}

void TypedKeyboard::releaseAll()
{
    while (!m_held.empty()) release(m_held.begin()->first);
}

void TypedKeyboard::setOctave(int octave)
{
    octave = std::clamp(octave, lowestOctave, highestOctave);
    if (octave == m_octave) return;
    releaseAll();
    m_octave = octave;
    changed();
}

void TypedKeyboard::setVelocity(int velocity)
{
    m_velocity = std::clamp(velocity, 1, 127);
    changed();
}

bool TypedKeyboard::sounds(int semitone) const
{
    const int note = noteOf(semitone);
    return note >= 0 && note < notes && m_holders[static_cast<std::size_t>(note)] > 0;
}

} // namespace tessaro
