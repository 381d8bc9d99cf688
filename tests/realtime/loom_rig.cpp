// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom_rig.h"

#include "realtime/loom/midi_bytes.h"
#include "support/rt_guard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <numeric>

namespace tessaro::test {

std::ostream& operator<<(std::ostream& out, const Sent& sent)
{
    out << sent.driver << " @" << sent.due.count() << std::hex << std::setfill('0');
    for (const int byte : sent.bytes) out << ' ' << std::setw(2) << byte;
    return out << std::dec;
}

class FakeMidi::Out final : public MidiOut {
public:
    Out(FakeMidi& midi, int driver) : m_midi(midi), m_driver(driver) { ++m_midi.m_openOuts; }
    ~Out() override { --m_midi.m_openOuts; }
    bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override
    {
        return m_midi.write(m_driver, bytes, due);
    }
    [[nodiscard]] bool busy() const noexcept override { return m_midi.busy; }

private:
    FakeMidi& m_midi;
    int m_driver;
};

class FakeMidi::In final : public MidiIn {
public:
    explicit In(FakeMidi& midi) : m_midi(midi) {}
    ~In() override { m_midi.sink = nullptr; }

private:
    FakeMidi& m_midi;
};

FakeMidi::FakeMidi(std::size_t outputs, std::size_t inputs) : m_outputs(outputs), m_inputs(inputs)
{
    m_notes.reserve(400'000);
    m_bytes.reserve(4'000'000);
}

std::vector<std::string> FakeMidi::outputs() const { return std::vector<std::string>(m_outputs, "out"); }
std::vector<std::string> FakeMidi::inputs() const { return std::vector<std::string>(m_inputs, "in"); }

std::unique_ptr<MidiOut> FakeMidi::openOutput(std::size_t driver)
{
    if (static_cast<int>(driver) == failing) return nullptr;
    return std::make_unique<Out>(*this, static_cast<int>(driver));
}

std::unique_ptr<MidiIn> FakeMidi::openInput(std::size_t driver, MidiInSink& to, std::size_t)
{
    if (driver >= m_inputs || static_cast<int>(driver) == failing) return nullptr;
    sink = &to;
    return std::make_unique<In>(*this);
}

bool FakeMidi::write(int driver, std::span<const std::uint8_t> bytes, Nanos due)
{
    if (m_notes.size() == m_notes.capacity() || m_bytes.capacity() - m_bytes.size() < bytes.size()) return false;
    m_notes.push_back({driver, due, m_bytes.size(), bytes.size()});
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    m_count.fetch_add(1, std::memory_order_release);
    return true;
}

std::vector<Sent> FakeMidi::takeSent()
{
    std::vector<Sent> result;
    for (const Note& note : m_notes) {
        const auto start = m_bytes.begin() + static_cast<std::ptrdiff_t>(note.start);
        result.push_back({note.driver, note.due, Bytes(start, start + static_cast<std::ptrdiff_t>(note.size))});
    }
    m_notes.clear();
    m_bytes.clear();
    return result;
}

bool FakeWindow::post(const Message& message) noexcept
{
    const RtGuardPause pause;
    m_messages.push_back(message);
    return true;
}

Rig::Rig(int ports) : midi(8), loom(clock, midi)
{
    EXPECT_TRUE(loom.CreateNoteOnTbl());
    loom.setRtHook(&rtGuardHook);
    loom.setLoomTicIntval(4);
    EXPECT_NE(loom.CallTimeSetEvent(4, 4, 0, 1), 0U);
    loom.setLoomMidiPorts(0, 8192, {}, 4096, 2000);
    std::vector<std::int32_t> map(128, 0x7F);
    std::iota(map.begin(), map.begin() + ports, 0);
    EXPECT_EQ(loom.setLoomOutPortMap(map, 4096, 2000, static_cast<std::size_t>(ports)), 0U);
    EXPECT_TRUE(loom.setLoomInPort(0, 8192));
    loom.setLoomMainWnd(&window);
}

void Rig::arm(std::uint32_t position)
{
    loom.setLoomInit();
    loom.setLoomQplaytime(position);
    loom.ClrKeyTable();
    loom.loomPlayStart();
    loom.setLoomInnerTime(0);
}

void Rig::input(std::initializer_list<int> bytes)
{
    Bytes message;
    for (const int byte : bytes) message.push_back(static_cast<std::uint8_t>(byte));
    ASSERT_NE(midi.sink, nullptr);
    midi.sink->received(message, clock.now());
}

_LOOM_QUE_REC shortRecord(int delta, std::uint32_t time, int status, int data1, int data2, int track, int port)
{
    _LOOM_QUE_REC record;
    record.delta = delta;
    record.time = time;
    record.track = static_cast<std::int16_t>(track);
    record.port = static_cast<std::uint8_t>(port);
    record.status = static_cast<std::uint8_t>(status);
    record.data1 = static_cast<std::uint8_t>(data1);
    record.data2 = static_cast<std::uint8_t>(data2);
    return record;
}

_LOOM_QUE_REC longRecord(int delta, std::uint32_t time, int status, const Bytes& data, int track, int port)
{
    _LOOM_QUE_REC record = shortRecord(delta, time, status, 0, 0, track, port);
    record.length = static_cast<std::uint32_t>(data.size());
    record.length16 = static_cast<std::uint16_t>(data.size());
    record.data = data.data();
    return record;
}

_LOOM_QUE_REC tempoRecord(int delta, std::uint32_t time, std::uint32_t tempo)
{
    _LOOM_QUE_REC record = shortRecord(delta, time, que::tempo);
    record.track = static_cast<std::int16_t>(tempo >> 16);
    record.length = tempo & 0xFFFF;
    return record;
}

void StreamChecker::checkSysex(Driver& driver, const Sent& message)
{
    const bool begins = message.bytes.front() == midi::sysex;
    const bool ends = message.bytes.back() == midi::sysexEnd;
    EXPECT_NE(begins, driver.inSysex) << message;
    EXPECT_TRUE(std::all_of(message.bytes.begin() + begins, message.bytes.end() - ends, isData)) << message;
    driver.inSysex = !ends;
}

void StreamChecker::check(const std::vector<Sent>& messages)
{
    for (const Sent& message : messages) {
        Driver& driver = m_drivers.at(static_cast<std::size_t>(message.driver));
        const std::uint8_t status = message.bytes.at(0);
        if (status == midi::sysex || status == midi::sysexEnd || isData(status)) {
            checkSysex(driver, message);
            continue;
        }
        EXPECT_TRUE(isShortMessage(message.bytes)) << message;
        EXPECT_TRUE(!driver.inSysex || isRealtime(status)) << message;
        if (message.bytes.size() < 3) continue;
        int& count = driver.notes[channelOf(status)][message.bytes[1]];
        if (isNoteOn(status, message.bytes[2])) {
            ++count;
            ++m_sounding;
        } else if (isNoteOff(status, message.bytes[2])) {
            EXPECT_GT(count, 0) << "ended without a start: " << message;
            --count;
            --m_sounding;
        }
    }
}

} // namespace tessaro::test
