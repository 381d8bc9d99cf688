// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/clock_follower.h"
#include "realtime/loom/midi_clock_out.h"
#include "realtime/loom/play_queue.h"
#include "realtime/loom/record_player.h"
#include "realtime/loom/song_place.h"
#include "realtime/loom/tempo_control.h"
#include "realtime/loom/time_line.h"

#include <cstdint>

namespace tessaro {

/// One run of the queue against the clock: finds what is due, keeps song position and counters, ends at the play end.
/// Runs at the tempo of the song, or on the MIDI clock of another machine. Ticks are those of the run, tick 0 falls due
/// when the run begins to play. Engine thread.
class Run {
public:
    Run(LoomState& state, PlayQueue& queue, TempoControl& tempo, OutPorts& ports, RecordPlayer& player)
        : m_state(state)
        , m_queue(queue)
        , m_tempo(tempo)
        , m_ports(ports)
        , m_player(player)
    {
    }

    /// Plays what is due. `playing` is the switch as read before anything else in this step.
    void advance(Nanos now, bool playing);
    /// The time of what comes next; Nanos::max() when there is nothing.
    [[nodiscard]] Nanos nextDue();
    /// When a tick falls due at the present tempo; Nanos::max() while nothing plays.
    [[nodiscard]] Nanos dueOf(std::int64_t tick) const;
    /// The song tick nearest to a time that is not long past, once everything due by now has been played. Ahead of a
    /// jump by less than half a tick that is already the tick behind it. Before the run it is where the run begins.
    [[nodiscard]] std::uint32_t songTickAt(Nanos time);

    // MIDI sync: what another machine sends.
    void startArrived(); ///< Start or Continue
    void stopArrived(Nanos now);
    void songPositionArrived();
    void clockArrived(Nanos when, Nanos now);

private:
    enum class Next { nothing, clock, record, end };
    struct Upcoming {
        Next what = Next::nothing;
        std::int64_t tick = 0;
        const _LOOM_QUE_REC* record = nullptr; // still in the queue
    };

    void noticeNewRun(Nanos now);
    void begin(Nanos time);
    void pause(Stamp stamp);
    void playDue(Nanos now);
    void playRecord(const _LOOM_QUE_REC& queued, std::int64_t tick);
    void playTempo(std::uint32_t tempo, std::int64_t tick);
    void playRealtime(const _LOOM_QUE_REC& record, std::int64_t tick, Stamp stamp);
    void end(std::int64_t tick);
    [[nodiscard]] Upcoming upcoming();
    [[nodiscard]] std::int64_t recordTick(const _LOOM_QUE_REC& record) const;
    [[nodiscard]] Nanos stampDue(std::int64_t tick);

    void lineChanged(Nanos from);
    void shiftLine(Nanos now);
    void takeTempo(Nanos now);
    void watchPreCount(Nanos now);
    void countTicks(Nanos now);
    void leadOthers(std::int64_t tick, Nanos time);
    void playClock(std::int64_t tick);

    void goOnRelocated();
    void holdAtLimit(Nanos now);
    void steer(Nanos now);
    [[nodiscard]] bool following() const { return m_following; }
    [[nodiscard]] std::int64_t followLimit() const;

    LoomState& m_state;
    PlayQueue& m_queue;
    TempoControl& m_tempo;
    OutPorts& m_ports;
    RecordPlayer& m_player;

    TimeLine m_line;
    SongPlace m_place;
    MidiClockOut m_clockOut;
    ClockFollower m_follower;

    std::uint32_t m_run = 0;
    bool m_started = false; // the present run has a place in time
    bool m_running = false;
    Nanos m_pausedAt{};
    Nanos m_lastDue{};

    bool m_firstRecord = true;
    std::int64_t m_queueTick = -1;  // of the record played last
    std::int64_t m_countedTick = 0; // up to here the inner time has counted
    std::int64_t m_anchorTick = 0;  // of the record played last; stands for the song tick below
    std::uint32_t m_anchorSong = 0;
    std::uint32_t m_songPosition = 0; // sent last
    bool m_preCount = false;

    bool m_following = false;
    bool m_awaitsClock = false;   // Start or Continue has come, the clock behind it not yet
    std::int64_t m_clockTick = 0; // that the last incoming clock stands for
    double m_clockDelay = 0;      // ns from arrival to here, the most of late
    // Song Position has come; the run there is not armed yet, though the other machine may have gone on.
    bool m_relocating = false;
    bool m_leaderRuns = false;
    int m_clocksMissed = 0; // since it went on
};

} // namespace tessaro
