// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"
#include "core/model/records.h"
#include "realtime/rec/note_slots.h"
#include "realtime/rec/take_records.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessaro {

class BlkSelection;
class CBlk;
class CEditor;
class TakeEcho;

/// A real-time take: the blocks of the armed tracks, and how what comes in becomes events in them. With one armed
/// channel everything goes to its track; with several, each channel to its own, and other channels are dropped.
///
/// What comes not later than the take's top is gathered there: notes still held, and bends, begin with the take;
/// in punch mode only what comes just before the punch begins, and then with the punch. Behind a wrap of the loop that
/// holds for what lies before the top again.
///
/// Events go in without undo and hints: the open editing step knows the blocks. Song ticks; user interface thread.
/// All that is handed over outlives the take.
class Take {
public:
    struct Track {
        int number;
        POSITION trk;
        POSITION blk;
        std::vector<POSITION> selected; ///< blocks that were selected on the track when the take began
    };

    /// A channel message; a release is a note of velocity 0.
    struct ShortMessage {
        std::uint8_t status;
        std::uint8_t data1;
        std::uint8_t data2;
    };

    /// What the take does for people to hear and see; null `echo` for a take that nobody plays to.
    struct Audience {
        BlkSelection& selection;
        TakeEcho* echo = nullptr;
    };

    /// Makes the blocks, and clears the punch range. An editing step is open.
    Take(CEditor& editor, const TakeStart& start, const Audience& audience);
    /// Without tracks there is nothing to record into.
    [[nodiscard]] const std::vector<Track>& tracks() const noexcept { return m_tracks; }
    /// The block on a track, null for none.
    [[nodiscard]] const CBlk* blkOn(POSITION trk) const noexcept;
    [[nodiscard]] std::uint32_t topTick() const noexcept { return m_start.topTick; }
    [[nodiscard]] std::uint32_t lastTick() const noexcept { return m_lastTick; }

    void received(const LoomRingEntry& entry);
    /// The song has come to `tick`: the first time that it has gone back, the blocks get the loop's length.
    void passed(std::uint32_t tick, const LoopRange& loop);
    /// Ends the notes that are held at `stop`, gives the blocks their length, up to `last`, replaces and merges. The
    /// transport stops.
    void finish(std::uint32_t stop, std::uint32_t last);
    /// Selects the blocks of the ended take.
    void select();

private:
    struct HeldNote : SlotNote {
        POSITION evnt = nullptr;
        std::uint32_t tick = 0;
    };
    struct EarlyNote : SlotNote {
        std::uint8_t velocity = 0;
    };
    struct Bend {
        std::uint8_t low = 0;
        std::uint8_t high = 0x40;
        bool operator==(const Bend&) const = default;
    };
    void makeBlks();
    void makeBlk(int number);
    [[nodiscard]] Track* trackOf(std::uint8_t status) noexcept;
    [[nodiscard]] bool isFiltered(const ShortMessage& message) const noexcept;
    [[nodiscard]] bool isPunching(std::uint32_t tick) const noexcept;
    [[nodiscard]] std::optional<std::uint32_t> earlyTick(std::uint32_t time) const noexcept;

    void takeSysex(const LoomRingEntry& entry, std::uint32_t tick);
    void takeEarly(const ShortMessage& message, std::optional<std::uint32_t> tick);
    void beginEarly();
    void take(const ShortMessage& message, std::uint32_t tick);
    void beginNote(const ShortMessage& message, std::uint32_t tick);
    void endNote(HeldNote& note, std::int64_t end);
    void endHeld(std::uint32_t stop);
    POSITION record(const ShortMessage& message, std::uint32_t tick);
    void echo(const Track& track, POSITION evnt);

    CEditor& m_editor;
    const TakeStart m_start;
    Audience m_audience;
    LoopRange m_loop;
    bool m_punch = false;            ///< recording is confined to the punch range
    std::uint32_t m_earlyTick = 0;   ///< where what came before the take begins
    std::uint32_t m_lastTick = 0;    ///< the highest that the song has come to
    bool m_wrapPending = true;       ///< the song has not gone back yet
    std::vector<Track> m_tracks;     ///< by channel, lowest first
    std::array<int, 16> m_trackOf{}; ///< index of each channel's track, below 0 for none

    NoteSlots<HeldNote> m_held;
    NoteSlots<EarlyNote> m_earlyNotes;
    std::array<Bend, 16> m_earlyBends;
    bool m_hasEarly = false; ///< notes or bends wait for the take to begin
};

} // namespace tessaro
