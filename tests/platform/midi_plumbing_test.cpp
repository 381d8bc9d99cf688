// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/loopback.h"
#include "platform/midi/timed_messages.h"
#include "platform/recording_sink.h"

#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

namespace tessaro {

namespace {

/// Sends back whatever it receives.
class Echo : public MidiInSink {
public:
    explicit Echo(MidiOut& out) : m_out(out) {}
    void received(std::span<const std::uint8_t> bytes, Nanos when) noexcept override
    {
        ++count;
        EXPECT_FALSE(m_out.send(bytes, when));
    }
    void inputError() noexcept override {}

    int count = 0;

private:
    MidiOut& m_out;
};

} // namespace

TEST(TimedMessages, KeepContentAndOrderBetweenThreads)
{
    constexpr int count = 20000;
    const auto messageOf = [](int i) {
        std::minstd_rand random(static_cast<unsigned>(i + 1));
        const std::size_t size = i % 97 == 0 ? random() % 1500 : 1 + random() % 40;
        Bytes bytes(size + 1);
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
        return bytes;
    };
    TimedMessages ring(4096);
    std::thread writer([&] {
        for (int i = 0; i < count; ++i)
            while (!ring.push(messageOf(i), Nanos(i))) std::this_thread::yield();
    });
    for (int i = 0; i < count; ++i) {
        TimedMessages::Record record;
        while (!(record = ring.front())) std::this_thread::yield();
        ASSERT_EQ(record.due, Nanos(i));
        ASSERT_EQ(Bytes(record.bytes.begin(), record.bytes.end()), messageOf(i));
        ring.pop();
    }
    writer.join();
    EXPECT_FALSE(ring.front());
    EXPECT_FALSE(ring.holdsSysex());
}

TEST(TimedMessages, RefuseWhatDoesNotFitAndKnowTheirSysex)
{
    TimedMessages ring(1024);
    EXPECT_FALSE(ring.push({}, 0ns));
    EXPECT_FALSE(ring.push(Bytes(5000, 1), 0ns));
    EXPECT_TRUE(ring.push(sysexOf(500), 0ns));
    EXPECT_TRUE(ring.push(Bytes{0x90, 1, 1}, 1ns));
    EXPECT_FALSE(ring.push(sysexOf(500), 2ns));
    EXPECT_TRUE(ring.holdsSysex());
    ring.pop();
    EXPECT_FALSE(ring.holdsSysex());
    EXPECT_EQ(ring.front().due, 1ns);
    ring.clear();
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(ring.push(sysexOf(480), Nanos(i))) << "an empty ring takes it, wherever it stands";
        EXPECT_EQ(ring.front().bytes.size(), 480U);
        ring.pop();
    }
}

TEST(Loopback, CarriesEverythingToEveryInput)
{
    Loopback cable;
    const auto out = cable.openOutput("Loopback");
    ASSERT_TRUE(out);
    EXPECT_FALSE(cable.openOutput("Other"));
    EXPECT_TRUE(out->send(Bytes{0xFE}, 1ms)) << "nobody listens";
    RecordingSink sink;
    RecordingSink other;
    auto in = cable.openInput("Loopback", sink);
    const auto second = cable.openInput("Loopback", other);
    EXPECT_TRUE(out->send(sysexOf(300'000), 2ms));
    // Opened anew with the same sink before the old input is closed.
    in = cable.openInput("Loopback", sink);
    EXPECT_TRUE(out->send(Bytes{0x90, 1, 2}, 3ms));
    EXPECT_EQ(sink.messages(), (std::vector<Bytes>{sysexOf(300'000), {0x90, 1, 2}}));
    EXPECT_EQ(sink.times(), (std::vector<Nanos>{2ms, 3ms}));
    EXPECT_EQ(other.messages(), sink.messages());
    in.reset();
    out->send(Bytes{0xF8}, 4ms);
    EXPECT_EQ(sink.messages().size(), 2U);
}

TEST(Loopback, DoesNotFeedItself)
{
    Loopback cable;
    const auto out = cable.openOutput("Loopback");
    Echo echo(*out);
    const auto in = cable.openInput("Loopback", echo);
    EXPECT_TRUE(out->send(Bytes{0xF8}, 0ms));
    EXPECT_EQ(echo.count, 1);
}

TEST(Loopback, IsSilentOnceAnInputIsClosed)
{
    Loopback cable;
    const auto out = cable.openOutput("Loopback");
    std::atomic<bool> stop{false};
    std::thread sender([&] {
        while (!stop) out->send(Bytes{0xF8}, 0ms);
    });
    for (int i = 0; i < 200; ++i) {
        RecordingSink sink; // destroyed right behind the input
        const auto in = cable.openInput("Loopback", sink);
        waitFor([&] { return !sink.times().empty(); });
    }
    stop = true;
    sender.join();
}

} // namespace tessaro
