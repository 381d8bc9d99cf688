// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace tessaro {

/// A note that is held: `status` is 0x90 and the channel, 0 for none.
struct SlotNote {
    std::uint8_t status = 0;
    std::uint8_t key = 0;
};

/// Up to 128 notes. A new one takes the first free slot; of several with the same key the first slot is found.
template <class Note>
class NoteSlots {
public:
    /// Null when all slots are taken.
    Note* add(const Note& note) noexcept
    {
        Note* slot = find(0, 0);
        if (slot) *slot = note;
        return slot;
    }
    Note* find(std::uint8_t status, std::uint8_t key) noexcept
    {
        const auto at = std::find_if(m_slots.begin(), m_slots.end(),
                                     [=](const Note& n) { return n.status == status && n.key == key; });
        return at == m_slots.end() ? nullptr : &*at;
    }
    static void clear(Note& note) noexcept { note = {}; }
    void clear() noexcept { m_slots.fill({}); }
    /// In the order of the slots.
    template <class Do>
    void forEach(Do&& act)
    {
        for (Note& note : m_slots)
            if (note.status != 0) act(note);
    }

private:
    std::array<Note, 128> m_slots{};
};

} // namespace tessaro
