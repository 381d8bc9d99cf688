// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/play/mci_strings.h"
#include "realtime/play/note_off_list.h"
#include "realtime/play/take_echo.h"
#include "realtime/play/track_cursors.h"

#include <cstdint>
#include <span>

namespace tessaro {

class DirectSender;
class Loom;
class OttavaCursors;
class QueueWriter;
class StyleCursor;
class TrackTable;

/// True for a bulk dump of samples, which playing leaves out: it goes out on request. `bytes` start behind the 0xF0.
[[nodiscard]] bool isSampleSysex(std::span<const std::uint8_t> bytes) noexcept;
/// The four bytes of a chord meta event; null for any other event.
[[nodiscard]] const std::uint8_t* chordBytes(const CEvnt& event) noexcept;

/// Turns the events of the song into queue records. A note becomes its note-on, and a note-off that waits here; it goes
/// to the port and channel of its note-on whatever the track has become since. When 512 notes wait, a further note
/// stays silent. Filtered kinds are skipped. Feeder.
class EventPlayer {
public:
    EventPlayer(Loom& loom, QueueWriter& queue, const TrackTable& tracks, const DirectSender& sender)
        : m_loom(loom)
        , m_queue(queue)
        , m_tracks(tracks)
        , m_sender(sender)
    {
    }
    /// Both outlive this object or their replacement. Only while nothing plays.
    void setJoins(OttavaCursors& ottavas, StyleCursor& styles) noexcept
    {
        m_ottavas = &ottavas;
        m_styles = &styles;
    }

    /// `nowTick` is the feeder's tick, `beforeLoop` whether it is not behind the start of the loop.
    void play(const TrackCursors::DueEvent& due, std::uint32_t nowTick, bool beforeLoop);
    /// The same for what a take recorded in a pass before.
    void play(const TakeEcho::Event& event);
    /// Ends the notes whose time has come.
    void dueNotesOff();
    void allNotesOff();
    /// Forgets the notes that wait.
    void clear() noexcept { m_notes.clear(); }

private:
    struct NoteOff {
        std::int16_t track = 0;
        std::uint8_t port = 0;
        std::uint8_t status = 0; ///< of a note-on
        std::uint8_t key = 0;
    };

    void channelMessage(int track, std::uint8_t kind, std::uint8_t data1, std::uint8_t data2);
    void note(int track, int key, std::uint8_t velocity, std::uint32_t gate);
    /// The note and the one that an ottava line sets beside it.
    void notes(int track, std::uint32_t time, int key, std::uint8_t velocity, std::uint32_t gate);
    void sysex(int track, std::span<const std::uint8_t> bytes);
    void masterMeta(const CEvnt& event, std::uint32_t nowTick, bool beforeLoop);
    void mci(int track, const CEvnt& event);
    void end(const NoteOff& off);

    Loom& m_loom;
    QueueWriter& m_queue;
    const TrackTable& m_tracks;
    const DirectSender& m_sender;
    OttavaCursors* m_ottavas = nullptr;
    StyleCursor* m_styles = nullptr;
    NoteOffList<NoteOff, 512> m_notes;
    MciStrings m_mciStrings;
};

} // namespace tessaro
