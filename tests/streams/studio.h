// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/real_clock.h"
#include "cli/armed_tracks.h"
#include "cli/player.h"
#include "core/fakes.h"
#include "platform/midi/loopback.h"
#include "realtime/loom/send_observer.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessaro::test {

/// Two outputs, one that drops everything and a cable inside the program, and the cable's other end as input.
class Cables final : public MidiSystem {
public:
    static constexpr std::int32_t silence = 0;
    static constexpr std::int32_t cable = 1;

    Loopback loopback;

    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override { return {"Silence", Loopback::name}; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return {Loopback::name}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& sink, std::size_t) override;
};

/// When each tick of a song fell due in a run, as told by the notes of one track. The engine's thread writes; read
/// while nothing plays.
class TickTimes final : public SendObserver {
public:
    static constexpr std::uint32_t step = 120; ///< ticks from note to note

    explicit TickTimes(std::size_t notes) : m_dues(notes), m_late(notes) {}
    void sent(const SentMessage& message) noexcept override;
    void clear() noexcept { m_count = 0; }

    /// Up to the last note.
    [[nodiscard]] Nanos at(std::uint32_t tick) const;
    /// How late behind its due time a part of the notes has left at most, as 0.99.
    [[nodiscard]] Nanos lateness(double part) const;

private:
    std::vector<Nanos> m_dues;
    std::vector<Nanos> m_late;
    std::atomic<std::size_t> m_count{0};
};

/// The program without its windows: a song whose track 20 plays a note each sixteenth to port 0, and what records and
/// plays it in real time. One thread.
template <class SomeClock>
class StudioOn {
public:
    static constexpr int rulerTrack = 20;

    /// `beats` is the length of the song.
    StudioOn(SomeClock& clock, MidiSystem& midi, std::uint32_t beats)
        : ticks(beats * 480 / TickTimes::step)
        , player(clock, midi, user, &ticks)
        , m_clock(clock)
    {
        player.doc().OnNewDocument();
        CEditor& editor = player.editor();
        editor.SetTrkType(rulerTrack, trktype::midi);
        editor.NewBlk(rulerTrack, 0);
        CBlk& blk = *editor.song().trk(rulerTrack)->blocks().tail();
        for (std::uint32_t tick = 0; tick < beats * 480; tick += TickTimes::step)
            blk.GetRealBlk()->InsEvnt(noteRec(tick, TickTimes::step / 2));
        blk.SetTimeEnd(beats * 480);
    }

    /// The song's driver is that of port 0; recording needs no other.
    bool open(std::int32_t in, std::int32_t songOut)
    {
        return player.startEngine({&songOut, 1}) && player.openInput(in);
    }
    /// Plays the take to a driver of its own.
    bool playTo(std::int32_t songOut, std::int32_t takeOut)
    {
        const std::int32_t drivers[] = {songOut, takeOut};
        if (!player.startEngine(drivers)) return false;
        for (int trk = 1; trk <= 16; ++trk) player.editor().SetTrkPort(trk, 1);
        ticks.clear();
        player.panel().SetLocation(0);
        player.panel().Start();
        return player.smc().running();
    }

    /// Arms sixteen tracks and lets the song run. False when no take began.
    bool record()
    {
        armed.emplace(player.editor());
        player.panel().ShortCutRECClicked();
        player.panel().Start();
        return player.panel().recorder().state() == RecState::recording;
    }

    /// What a window's loop does, for a moment.
    void loop()
    {
        m_clock.sleepFor(std::chrono::milliseconds(5));
        player.messages().drain();
        player.panel().timer();
    }
    /// The same until something is so.
    template <class Done>
    void loopUntil(Done&& done)
    {
        while (!done()) loop();
    }
    /// Until the song has come to a tick.
    void loopTo(std::uint32_t tick)
    {
        loopUntil([&] { return player.smc().smcGetPlayCount() >= tick; });
    }

    FakeUser user;
    TickTimes ticks;
    cli::Player player;
    std::optional<cli::ArmedTracks> armed;

private:
    SomeClock& m_clock;
};

using Studio = StudioOn<RealClock>;

} // namespace tessaro::test
