// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "core/ports/devices.h"
#include "realtime/play/chase.h"
#include "realtime/play/count_in.h"
#include "realtime/play/direct_sender.h"
#include "realtime/play/feeder.h"
#include "realtime/play/joins.h"
#include "realtime/play/play_owners.h"
#include "realtime/play/take_echo.h"
#include "realtime/play/track_table.h"
#include "realtime/rec/record_thread.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace tessaro {

class CEditor;
class MessageTarget;
class SettingsStore;
class Strings;
class UserPort;

/// Shows what a locate changes behind the panel's back.
class TESSARO_API TempoDisplay {
public:
    virtual ~TempoDisplay();
    virtual void UpdateTempo() = 0;
};

/// The real-time layer: it binds to one song, feeds the engine from it, and holds the transport. A run is idle,
/// running (a feeder works and the queue plays) or, in MIDI sync, armed (a feeder works and the queue waits).
///
/// Times are song ticks. All calls come from the user interface thread, apart from the sending ones and the plain
/// questions to the engine, which come from any. The feeder reads the bound song without a lock: stop before the song
/// changes. Locating with chase and sending samples wait for the modules, as long as that takes. What is handed over
/// is borrowed and outlives this object.
class TESSARO_API Smc {
public:
    struct Surroundings {
        Loom& loom;
        Clock& clock;
        SettingsStore& profile; ///< section System
        SettingsStore& wsIni;
        UserPort& user;
        const Strings& strings;
    };

    explicit Smc(const Surroundings& around);
    ~Smc();
    Smc(const Smc&) = delete;
    Smc& operator=(const Smc&) = delete;

    [[nodiscard]] Loom& loom() noexcept { return m_loom; }
    /// Receives what the engine tells; also the place of "all sound off". Null for none.
    void setMainWindow(MessageTarget* window);
    void setTempoDisplay(TempoDisplay* display) noexcept { m_tempoDisplay = display; }
    /// Styles, repeats, audio and ottava lines; only while nothing plays.
    void setJoins(const PlayJoins& joins);
    /// What is kept out of playing for a take. Null for nothing.
    void setTakeInfo(const TakeInfo* take) noexcept { m_take = take; }
    [[nodiscard]] TakeEcho& takeEcho() noexcept { return m_echo; }

    // Engine, ports and filters

    /// Starts the engine without open devices; once.
    EngineStart startEngine();
    void stopEngine();
    /// Closes all outputs and opens a port for each driver number. The engine's status word: nonzero low 4 bits mean
    /// that a driver failed. The size is also the longest piece in which a long message goes out.
    unsigned setOutPorts(std::span<const std::int32_t> drivers, std::uint32_t size, std::uint32_t intervalMs);
    [[nodiscard]] unsigned outPorts() const noexcept { return m_ports; }
    bool setInPort(std::size_t driver, std::size_t size);
    void setOutFilter(std::uint32_t mask, bool realTimeMessages);
    /// `dropController` tells for each controller whether recording leaves it out.
    void setInFilter(std::uint32_t mask, const std::array<std::uint8_t, 128>& dropController);
    [[nodiscard]] std::uint32_t inFilter() const noexcept { return m_inFilter; }
    [[nodiscard]] bool dropsController(unsigned number) const noexcept
    {
        return number >= m_dropController.size() || m_dropController[number] != 0;
    }
    void smcSetThruPort(int port);
    void smcSetThruCh(int channel);
    void smcSetThruTrns(int semitones);

    // Song and tracks

    /// Takes a song, at its start, or none. Owners are forgotten: windows register again. Asks whether sample dumps in
    /// the song shall go out.
    void smcBindSong(CEditor* editor);
    [[nodiscard]] CEditor* song() const noexcept { return m_editor; }
    /// Takes the blocks of the song with their cursors at its start, and its first tempo and signature; `full` also
    /// ports, channels, transpositions and switches.
    void smcInitPlay(bool full);
    /// Reads port, channel and transposition of every track anew, without touching a cursor.
    void reloadTracks();
    void setTrkPort(int track, std::uint8_t port) noexcept { m_tracks.setPort(track, port); }
    void setTrkCh(int track, std::uint8_t channel) noexcept { m_tracks.setChannel(track, channel); }

    // Transport

    /// Nothing while a feeder works, or without a song.
    void smcPlayStart();
    void smcPlayStop();
    /// Moves the position, while no feeder works; in internal sync with real-time messages on it also tells it to port
    /// 0.
    void smcLocate(std::uint32_t tick, bool chase);
    void smcLocateQuiet(std::uint32_t tick, bool chase);
    /// The loop points hold until the next locate. True when the loop is on, which it is between two different points.
    bool smcSetLoopStart(std::uint32_t tick);
    void smcSetLoopEnd(std::uint32_t tick);
    /// A count-in before the next run; not in MIDI sync.
    void smcSetPreCount(bool on);
    /// What the count-in shows: a count that rises to 0; none when no count-in is under way.
    [[nodiscard]] std::optional<int> countInShown() const noexcept;
    /// Thousandths added to the tempo; the engine's value comes back.
    int smcSetRelativeTempo(int thousandths);
    [[nodiscard]] std::uint32_t smcGetPlayCount() const;
    [[nodiscard]] bool smcPlayStatus() const;
    /// Whether a feeder works; it does until smcPlayStop, also behind the song's end.
    [[nodiscard]] bool running() const noexcept { return m_feederTask != nullptr; }
    /// In MIDI sync, where somebody else starts and stops the song.
    void startWaves();
    void stopWaves();

    // Sending and owners

    unsigned smcSendShortMsg(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2);
    unsigned smcSendLongMsg(int port, std::span<const std::uint8_t> bytes);
    /// Whether the bytes behind a 0xF0 are a sample dump.
    [[nodiscard]] static bool smcIsSampleSysex(std::span<const std::uint8_t> bytes) noexcept;
    void smcSendSampleSysex();
    /// On every port and channel: all notes off, sustain off.
    void sendAllSoundOff();
    /// The slot, or -1. Messages 0x432 come, see PlayOwners.
    int smcSetMultiPlayOwner(MessageTarget* owner, std::uint8_t mask) { return m_owners.add(owner, mask); }
    void smcReleaseMultiPlayOwner(int slot) { m_owners.release(slot); }
    void smcSetRecOwner(MessageTarget* owner);
    void smcRecStart();
    void smcRecStop();
    void smcIncRrdpt();

private:
    void locate(std::uint32_t tick, bool chase);
    void takeTrack(int track, const CTrk& trk);
    [[nodiscard]] LeftOut leftOut() const;
    void setPlayEnd(std::uint32_t pos);
    bool countInPlays(std::uint32_t& pos);
    void startFeeder();
    Nanos feederStep(Nanos now);
    [[nodiscard]] int systemInt(const char* key, int otherwise) const;

    Loom& m_loom;
    Clock& m_clock;
    SettingsStore& m_profile;
    SettingsStore& m_wsIni;
    UserPort& m_user;
    const Strings& m_strings;
    MessageTarget* m_mainWindow = nullptr;
    TempoDisplay* m_tempoDisplay = nullptr;
    const TakeInfo* m_take = nullptr;
    TakeEcho m_echo;

    NoRepeats m_noRepeats;
    NoStyles m_noStyles;
    NoWaves m_noWaves;
    NoOttavas m_noOttavas;
    PlayJoins m_joins{&m_noRepeats, &m_noStyles, &m_noWaves, &m_noOttavas};

    TrackTable m_tracks;
    DirectSender m_sender;
    PlayOwners m_owners;
    RecordThread m_recordThread;
    Feeder m_feeder;
    CountIn m_countIn;

    CEditor* m_editor = nullptr;
    unsigned m_timer = 0; ///< the engine's task, 0 while it does not run
    unsigned m_ports = 0;
    std::uint32_t m_inFilter = 0;
    std::array<std::uint8_t, 128> m_dropController{};
    bool m_realTimeMessages = false;
    bool m_preCount = false;
    bool m_waveSync = false;
    std::unique_ptr<TimedTask> m_feederTask;
};

} // namespace tessaro
