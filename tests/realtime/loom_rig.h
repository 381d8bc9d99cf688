// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/manual_clock.h"
#include "base/messages.h"
#include "realtime/loom/loom.h"
#include "realtime/loom/midi_system.h"
#include "realtime/loom/send_observer.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace tessaro::test {

using Bytes = std::vector<std::uint8_t>;
using namespace std::chrono_literals;

/// A message as a driver took it.
struct Sent {
    int driver = 0;
    Nanos due{};
    Bytes bytes;

    bool operator==(const Sent&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Sent& sent);

/// Drivers that write down what they are sent, and inputs that the test speaks into. Memory for the notes is set aside
/// beforehand, since drivers run on the engine thread.
class FakeMidi final : public MidiSystem {
public:
    explicit FakeMidi(std::size_t outputs = 4, std::size_t inputs = 2);

    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override;
    [[nodiscard]] std::vector<std::string> inputs() const override;
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& sink, std::size_t) override;

    /// What was sent since the last call. Not while an engine thread runs.
    std::vector<Sent> takeSent();
    [[nodiscard]] std::size_t count() const { return m_count.load(std::memory_order_acquire); }
    [[nodiscard]] int openOuts() const { return m_openOuts; }

    int failing = -1;               ///< this driver does not open
    std::atomic<bool> busy = false; ///< what drivers answer
    MidiInSink* sink = nullptr;     ///< of the open input

private:
    class Out;
    class In;
    struct Note {
        int driver;
        Nanos due;
        std::size_t start;
        std::size_t size;
    };

    bool write(int driver, std::span<const std::uint8_t> bytes, Nanos due);

    std::size_t m_outputs;
    std::size_t m_inputs;
    int m_openOuts = 0;
    std::vector<Note> m_notes;
    std::vector<std::uint8_t> m_bytes;
    std::atomic<std::size_t> m_count = 0;
};

/// A window that keeps what it is posted.
class FakeWindow final : public MessageTarget {
public:
    FakeWindow() { m_messages.reserve(10'000); }
    bool post(const Message& message) noexcept override;
    void send(const Message& message) override { post(message); }
    std::vector<Message> take() { return std::exchange(m_messages, {}); }

private:
    std::vector<Message> m_messages;
};

/// An engine in simulated time with one driver a port.
class Rig {
public:
    explicit Rig(int ports = 4);

    /// Arms a run at a position; play() begins it.
    void arm(std::uint32_t position = 0);
    void play() { loom.setLoomQueplying(1); }
    void run(Nanos span) { clock.sleepFor(span); }
    void put(const _LOOM_QUE_REC& record) { loom.putLoomQueData(record); }
    void input(std::initializer_list<int> bytes);
    std::vector<Sent> sent() { return midi.takeSent(); }

    ManualClock clock;
    FakeMidi midi;
    FakeWindow window;
    Loom loom;
};

_LOOM_QUE_REC shortRecord(int delta, std::uint32_t time, int status, int data1 = 0, int data2 = 0, int track = 1,
                          int port = 0);
_LOOM_QUE_REC longRecord(int delta, std::uint32_t time, int status, const Bytes& data, int track = 1, int port = 0);
_LOOM_QUE_REC tempoRecord(int delta, std::uint32_t time, std::uint32_t tempo);

/// Checks streams message by message: valid bytes, no note ended that does not sound.
class StreamChecker {
public:
    void check(const std::vector<Sent>& messages);
    /// Notes that sound now, over all drivers.
    [[nodiscard]] int sounding() const { return m_sounding; }

private:
    struct Driver {
        std::array<std::array<int, 128>, 16> notes{};
        bool inSysex = false;
    };
    void checkSysex(Driver& driver, const Sent& message);

    std::array<Driver, 8> m_drivers{};
    int m_sounding = 0;
};

} // namespace tessaro::test
