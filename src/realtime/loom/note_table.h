// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/que_rec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace tessaro {

/// A note that was sent and not yet ended: whose it is, and what went out.
struct SoundingNote {
    std::uint8_t track = 0;
    std::uint8_t songKey = 0; ///< as in the queue record, before transposition
    std::uint8_t port = 0;
    std::uint8_t channel = 0;
    std::uint8_t key = 0; ///< as sent
};

/// The notes that the queue has started and not ended, each note-on an entry of its own. Engine thread; create and
/// destroy while the engine does not run.
class NoteTable {
public:
    static constexpr std::size_t capacity = 4096;

    NoteTable();
    ~NoteTable();
    NoteTable(const NoteTable&) = delete;
    NoteTable& operator=(const NoteTable&) = delete;

    bool create(); ///< false without memory
    void destroy();

    /// False when there is no table or no room: the note must not sound.
    bool add(const SoundingNote& note);
    /// The note that belongs to a record of this track, port, channel and key: the oldest of the same port and
    /// channel, else, since those may have changed, the oldest of the track and key.
    [[nodiscard]] std::optional<SoundingNote> find(std::uint8_t track, std::uint8_t port, std::uint8_t channel,
                                                   std::uint8_t songKey) const;
    /// The same, and forgets it.
    std::optional<SoundingNote> take(std::uint8_t track, std::uint8_t port, std::uint8_t channel, std::uint8_t songKey);
    void clear();

    /// Forgets all notes that `condition` holds for and hands them to `release`, the oldest first.
    template <class Condition, class Release>
    void releaseIf(Condition condition, Release release)
    {
        for (Index i = oldest(); i != none;) {
            const SoundingNote note = noteAt(i);
            const Index next = newerThan(i);
            if (condition(note)) {
                remove(i);
                release(note);
            }
            i = next;
        }
    }

private:
    using Index = std::uint16_t;
    static constexpr Index none = 0xFFFF;
    struct Table;

    [[nodiscard]] Index oldest() const;
    [[nodiscard]] Index newerThan(Index index) const;
    [[nodiscard]] const SoundingNote& noteAt(Index index) const;
    [[nodiscard]] Index indexOf(std::uint8_t track, std::uint8_t port, std::uint8_t channel,
                                std::uint8_t songKey) const;
    void remove(Index index);

    std::unique_ptr<Table> m_table;
};

} // namespace tessaro
