// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tessaro {

class CEditor;
class Smc;

/// Lets notes be heard as they are written or touched: through the port, channel and transposition of their track, also
/// while the song plays. What was started is ended before anything else starts, at `stop`, and when it goes, where it
/// began, whatever has become of the track; so no note hangs. An end that the port does not take waits: the owner is
/// told, and asks for it again until none waits. User interface thread. Borrows both.
class TESSARO_API NoteAudition {
public:
    NoteAudition(Smc& smc, const CEditor& editor) : m_smc(smc), m_editor(editor) {}
    ~NoteAudition() { stop(); }
    NoteAudition(const NoteAudition&) = delete;
    NoteAudition& operator=(const NoteAudition&) = delete;

    /// An end waits: call `retry` soon.
    std::function<void()> onRefused;

    /// A note, 0 to 127, of a track that has none but MIDI blocks; nothing for the others.
    void start(int track, std::uint8_t key, std::uint8_t velocity);
    /// One more beside those that sound.
    void add(int track, std::uint8_t key, std::uint8_t velocity);
    void stop();
    /// Sends the ends that wait, and leaves alone what sounds.
    void retry();

private:
    struct Note {
        std::uint8_t port;
        std::uint8_t status; ///< of the note-on
        std::uint8_t key;
        bool operator==(const Note&) const = default;
    };
    struct Sounding {
        Note note;
        bool isEnding = false; ///< its end waits
    };

    Smc& m_smc;
    const CEditor& m_editor;
    std::vector<Sounding> m_sounding;
};

} // namespace tessaro
