// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/manual_clock.h"
#include "base/messages.h"
#include "base/strings.h"
#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/loom/loom.h"
#include "realtime/loom/midi_system.h"
#include "realtime/loom/send_observer.h"
#include "realtime/play/smc.h"
#include "realtime/transport/cnp_window.h"
#include "realtime/transport/realtime_messages.h"
#include "realtime/transport/song_transport.h"

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessaro::test {

/// Drivers that take everything, and an input that the test speaks into.
class QuietMidi final : public MidiSystem {
public:
    MidiInSink* sink = nullptr; ///< of the input opened last

    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override { return {"one", "", "three"}; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return {"in"}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override
    {
        return driver < 3 ? std::make_unique<Out>() : nullptr;
    }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink& to, std::size_t) override
    {
        sink = &to;
        return std::make_unique<In>();
    }

private:
    struct Out final : MidiOut {
        bool send(std::span<const std::uint8_t>, Nanos) noexcept override { return true; }
    };
    struct In final : MidiIn {};
};

struct Heard {
    int port;
    std::vector<std::uint8_t> bytes;
    Nanos due;
    std::optional<std::uint32_t> tick;

    [[nodiscard]] std::uint8_t kind() const { return bytes[0] & 0xF0U; }
    [[nodiscard]] bool isNoteOn() const { return kind() == 0x90 && bytes[2] != 0; }
    [[nodiscard]] bool isNoteOff() const { return kind() == 0x80 || (kind() == 0x90 && bytes[2] == 0); }
};

[[nodiscard]] inline double millis(Nanos span) { return std::chrono::duration<double, std::milli>(span).count(); }

/// Keeps what leaves the engine. Its thread writes; read while nothing runs.
class HeardLog final : public SendObserver {
public:
    std::vector<Heard> heard;
    void sent(const SentMessage& m) noexcept override
    {
        heard.push_back({m.port, {m.bytes.begin(), m.bytes.end()}, m.due, m.songTick});
    }
};

class MapSettings final : public SettingsStore {
public:
    std::map<std::string, int> ints;
    [[nodiscard]] int getInt(std::string_view section, std::string_view key, int otherwise) const override
    {
        const auto at = ints.find(name(section, key));
        return at == ints.end() ? otherwise : at->second;
    }
    bool setInt(std::string_view section, std::string_view key, int value) override
    {
        ints[name(section, key)] = value;
        return true;
    }
    [[nodiscard]] std::string getString(std::string_view, std::string_view, std::string_view otherwise) const override
    {
        return std::string{otherwise};
    }
    bool setString(std::string_view, std::string_view, std::string_view) override { return false; }
    [[nodiscard]] std::vector<std::uint8_t> getBinary(std::string_view, std::string_view) const override { return {}; }
    bool setBinary(std::string_view, std::string_view, std::span<const std::uint8_t>) override { return false; }

private:
    static std::string name(std::string_view section, std::string_view key)
    {
        return std::string{section} + "/" + std::string{key};
    }
};

/// Answers every question the same way and keeps it.
class AnsweringUser final : public UserPort {
public:
    bool answer = false;
    std::vector<std::string> questions;
    std::vector<int> messages;
    void message(int id, MessageKind) override { messages.push_back(id); }
    void sentence(std::string_view, MessageKind) override {}
    bool ask(int) override { return answer; }
    bool ask(std::string_view text) override
    {
        questions.emplace_back(text);
        return answer;
    }
    void status(std::string_view) override {}
};

/// The main loop: messages wait until `pump`.
class MainLoop final : public MessageTarget {
public:
    RealtimeMessages* table = nullptr;
    std::vector<Message> handled;

    bool post(const Message& message) noexcept override
    {
        const std::lock_guard lock{m_mutex};
        m_line.push_back(message);
        return true;
    }
    void send(const Message& message) override
    {
        handled.push_back(message);
        if (table) table->handle(message);
    }
    void pump()
    {
        while (const std::optional<Message> message = take()) send(*message);
    }

private:
    std::optional<Message> take()
    {
        const std::lock_guard lock{m_mutex};
        if (m_line.empty()) return std::nullopt;
        const Message message = m_line.front();
        m_line.pop_front();
        return message;
    }
    std::mutex m_mutex;
    std::deque<Message> m_line;
};

struct NoDocument final : DocumentPort {
    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }
};

struct NoFiles final : SongFiles {
    [[nodiscard]] _EDT_FILE recognise(std::span<std::uint8_t>, std::uint32_t) override { return {}; }
    LoadResult load(const _EDT_FILE&, CEditor&) override { return LoadResult::failed; }
    bool save(std::uint8_t, CEditor&, ByteSink&) override { return false; }
};

/// An engine with two output ports, the layer above it, the panel, and an editor whose song is bound by `bind`.
template <class SomeClock>
struct PlayBenchOn {
    SomeClock clock;
    QuietMidi midi;
    HeardLog log;
    MapSettings settings;
    AnsweringUser user;
    Strings strings{Language::english};
    NoMciPlayer media;
    MainLoop main;
    Loom loom{clock, midi};
    Smc smc{{loom, clock, settings, settings, user, strings}};
    CCnpWindow panel{{smc, clock, settings, user, strings}};
    RealtimeMessages table{smc, panel, media};
    SongTransport transport{smc};
    NoDocument document;
    NoFiles files;
    QuietPorts quiet;
    CEditor editor{
        {document, files, user, quiet.progress, transport, quiet.waveLengths, quiet.waveOutput, quiet.score}};

    PlayBenchOn()
    {
        main.table = &table;
        loom.setSendObserver(&log);
        smc.setMainWindow(&main);
        panel.setMainFrame(&main);
        transport.setPanel(&panel);
        smc.startEngine();
        const std::int32_t drivers[] = {0, 2};
        smc.setOutPorts(drivers, 4096, 2000);
        smc.setInPort(0, 4096);
        smc.setOutFilter(0, false);
    }
    ~PlayBenchOn()
    {
        smc.smcPlayStop();
        smc.smcBindSong(nullptr);
        smc.stopEngine();
        smc.setMainWindow(nullptr);
    }

    /// A block of type 1 on a track, which gets it.
    CBlk& block(int track, std::uint32_t top = 0)
    {
        editor.SetTrkTypePrivate(track, trktype::midi);
        editor.NewBlk(track, top);
        return *editor.song().trk(track)->blocks().tail();
    }
    static void add(CBlk& blk, std::uint8_t status, std::uint32_t time, std::vector<std::uint8_t> posts = {},
                    std::uint32_t gate = 0)
    {
        posts.resize(4);
        _EDT_EVNT rec;
        rec.status = status;
        rec.time = time;
        rec.post1 = posts[0];
        rec.post2 = posts[1];
        rec.post3 = posts[2];
        rec.post4 = posts[3];
        rec.gateTime = gate;
        blk.GetRealBlk()->InsEvnt(rec);
        blk.SetTimeEndCmp(blk.GetTimeTop() + time + gate);
    }
    static void addNote(CBlk& blk, std::uint32_t time, std::uint32_t gate, std::uint8_t key = 60)
    {
        add(blk, 0x90, time, {key, 100}, gate);
    }
    static void addBytes(CBlk& blk, std::uint8_t status, std::uint32_t time, const std::vector<std::uint8_t>& bytes,
                         std::uint8_t metaType = 0)
    {
        _EDT_EVNT rec;
        rec.status = status;
        rec.time = time;
        rec.metaType = metaType;
        rec.szData = static_cast<std::uint32_t>(bytes.size());
        rec.data = bytes.data();
        blk.GetRealBlk()->InsEvnt(rec);
        blk.SetTimeEndCmp(blk.GetTimeTop() + time);
    }

    void bind()
    {
        editor.InitMeasInfo();
        editor.InitTimeInfo();
        smc.smcBindSong(&editor);
        editor.SetTrkOnOff();
        log.heard.clear();
    }
    void run(std::chrono::milliseconds span) { clock.sleepFor(span); }
    /// Arrives at the input now.
    void receive(const std::vector<std::uint8_t>& message) { midi.sink->received(message, clock.now()); }
    std::vector<Heard> take() { return std::exchange(log.heard, {}); }
};

using PlayBench = PlayBenchOn<ManualClock>;

} // namespace tessaro::test
