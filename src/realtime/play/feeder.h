// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "realtime/play/event_player.h"
#include "realtime/play/queue_writer.h"
#include "realtime/play/take_echo.h"
#include "realtime/play/track_cursors.h"

#include <atomic>
#include <cstdint>

namespace tessaro {

class CEditor;
class Loom;
class MessageTarget;
class RepeatPlan;
class StyleCursor;
class TrackTable;
class WavePorts;

/// What joins the feeder from the other rooms; borrowed.
struct PlayJoins {
    RepeatPlan* repeats;
    StyleCursor* styles;
    WavePorts* waves;
    OttavaCursors* ottavas;
};

/// Walks the song tick by tick, ahead of the engine, and turns it into queue records; loops and jumps happen here.
///
/// From a located tick p the first step makes `nowTick` p + 1 and plays what stands at p; behind a jump a tick's events
/// are played when `nowTick` is that tick. Records carry the tick of the song itself in both cases. A pass keeps up to
/// 480 ticks between the feeder and the engine, and stops above 512 waiting records; a tick with more events than
/// the queue takes goes on in the next pass.
///
/// `pass` is the feeder thread's. The rest is the user interface thread's while no pass can run, apart from the loop
/// points, which may change at any time and are read once a tick.
class Feeder {
public:
    static constexpr int leadTicks = 480;

    Feeder(Loom& loom, Clock& clock, const TrackTable& tracks, const DirectSender& sender, TakeEcho& echo,
           const PlayJoins& joins);
    /// Only while nothing plays.
    void setJoins(const PlayJoins& joins) noexcept;
    void setMainWindow(MessageTarget* window) noexcept { m_mainWindow = window; }

    /// Takes the song but for what a take leaves out, at its start. Loop off. Null for none.
    void bind(CEditor* editor, const LeftOut& leftOut);
    /// The next step plays `tick`.
    void locate(std::uint32_t tick);

    void setLoopStart(std::uint32_t tick) noexcept { m_loopStart.store(tick, std::memory_order_relaxed); }
    void setLoopEnd(std::uint32_t tick) noexcept { m_loopEnd.store(tick, std::memory_order_relaxed); }
    [[nodiscard]] std::uint32_t loopStart() const noexcept { return m_loopStart.load(std::memory_order_relaxed); }
    [[nodiscard]] std::uint32_t loopEnd() const noexcept { return m_loopEnd.load(std::memory_order_relaxed); }
    [[nodiscard]] bool loopActive() const noexcept { return loopEnd() != loopStart(); }

    struct RunSettings {
        unsigned repeatIntervalMs = 0; ///< time for who follows this clock to recover at a wrap
        bool realTimeMessages = false; ///< whether a wrap sends Stop, Song Position and Continue
        bool waveSync = false;
    };
    /// Before the first step of a run.
    void beginRun(const RunSettings& settings);
    [[nodiscard]] QueueWriter& queue() noexcept { return m_queue; }
    /// Makes steps, until the queue holds enough.
    void feed(int ticks);
    void pass();

private:
    bool tick();
    void openTick();
    bool stepTracks();
    void closeTick();
    void jump(std::uint32_t target, bool isLoop);
    void queueTempo(std::uint32_t target);
    void restartWaves(std::uint32_t target);
    void setNow(std::uint32_t tick) noexcept;

    Loom& m_loom;
    Clock& m_clock;
    const TrackTable& m_tracks;
    PlayJoins m_joins;
    MessageTarget* m_mainWindow = nullptr;
    CEditor* m_editor = nullptr;

    QueueWriter m_queue;
    TrackCursors m_cursors;
    EventPlayer m_player;
    TakeEcho& m_echo;

    RunSettings m_run;
    std::atomic<std::uint32_t> m_loopStart{0};
    std::atomic<std::uint32_t> m_loopEnd{0};
    std::uint32_t m_nowTick = 0;
    std::uint32_t m_fedTicks = 0;
    std::uint32_t m_starveCount = 0; ///< steps since the locate
    std::uint32_t m_bias = 1;        ///< from the tick being played to nowTick
    bool m_tickOpen = false;         ///< a step stopped half-way for want of room
    bool m_jumped = false;           ///< the present step is a jump
};

} // namespace tessaro
