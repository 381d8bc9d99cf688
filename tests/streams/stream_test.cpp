// SPDX-License-Identifier: GPL-3.0-or-later
// What another program plays is recorded complete and in time while a song plays, and the take played back is the same
// stream. TESSARO_STREAM_SECONDS asks for a longer stream than usual, TESSARO_STREAM_SEED for another one.
#include "platform/jack_server.h"
#include "platform/platform_midi.h"
#include "streams/stream_client.h"
#include "streams/take_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

constexpr std::array<double, 8> tempi{120, 40, 62.5, 90, 120, 187, 240, 62.5}; // one after the other, and again
constexpr unsigned rate = 1000;                                                // about what a DIN cable carries
constexpr std::uint32_t firstTick = 240;

unsigned environment(const char* name, unsigned otherwise)
{
    const char* text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

/// Gives a song that lasts this long its tempi, each for the same time. The result is its length in beats.
std::uint32_t setTempi(CEditor& editor, double seconds)
{
    const double each = std::max(seconds / tempi.size(), 0.5);
    double beats = 0;
    for (double time = 0; time < seconds; time += each) {
        const double tempo = tempi[static_cast<std::size_t>(std::lround(time / each)) % tempi.size()];
        const auto micros = static_cast<std::uint32_t>(std::lround(60e6 / tempo));
        const std::uint8_t bytes[] = {static_cast<std::uint8_t>(micros >> 16U), static_cast<std::uint8_t>(micros >> 8U),
                                      static_cast<std::uint8_t>(micros)};
        if (time > 0) editor.AddTempo(static_cast<std::uint32_t>(beats * 4) * TickTimes::step, bytes);
        beats += each * tempo / 60;
    }
    editor.InitTimeInfo();
    return static_cast<std::uint32_t>(beats);
}

class Streams : public testing::Test {
protected:
    void record(Studio& studio, StreamClient& client, Nanos slack)
    {
        for (int attempt = 1; !recordOnce(studio, client); ++attempt) {
            ASSERT_LT(attempt, 4) << "messages are lost too often for a busy machine";
            studio.user.messages.clear();
            ASSERT_TRUE(studio.player.editor().UndoNode());
            studio.ticks.clear();
        }
        const std::vector<Nanos> sentAt = client.sentAt();
        studio.armed->finish();
        const Deviation worst = expectRecorded(performance, sentAt, taken, studio.ticks, slack);
        const auto micros = [&](double part) {
            return std::chrono::duration<double, std::micro>(studio.ticks.lateness(part)).count();
        };
        std::printf("%zu messages, off by at most %.3f ms, or %.3f ms more than half a tick where that is longer; the "
                    "song's own left %.0f us late, 99 of 100 within %.0f us\n",
                    performance.size(), worst.inFine, worst.inCoarse, micros(0.5), micros(0.99));
    }

    /// False when messages were lost on the way, or the program has said that it lost some.
    bool recordOnce(Studio& studio, StreamClient& client)
    {
        const int before = client.overruns();
        studio.player.panel().SetLocation(0);
        EXPECT_TRUE(studio.record());
        studio.loopTo(firstTick);
        client.play(performance);
        studio.loopUntil([&] { return client.done(); });
        if (studio.player.panel().IsRecButton()) // the song tells the time a little further
            studio.loopTo(studio.player.smc().smcGetPlayCount() + 2 * TickTimes::step);
        studio.player.panel().Stop();
        taken = takenOf(studio.player.editor());
        const bool complete = messagesOf(taken) == performance.size();
        return studio.user.messages.empty() && (complete || client.overruns() == before);
    }

    void playBack(Studio& studio, StreamClient& client, std::int32_t songOut, std::int32_t takeOut)
    {
        client.listen();
        ASSERT_TRUE(studio.playTo(songOut, takeOut));
        const std::size_t wanted = messagesOf(taken);
        studio.loopUntil([&] { return client.heardCount() >= wanted || !studio.player.smc().running(); });
        const std::vector<Played> heard = client.heard();
        studio.player.panel().Stop();
        expectPlayedBack(taken, heard);
    }

    const unsigned seconds = environment("TESSARO_STREAM_SECONDS", 4);
    const std::vector<Played> performance =
        randomPerformance(environment("TESSARO_STREAM_SEED", 7), std::chrono::seconds(seconds), rate);
    const std::uint32_t beats = (seconds + 8) * 4; // at the fastest tempo
    RealClock clock;
    TakenByChannel taken;
};

TEST_F(Streams, OverTheLoopbackAreRecordedCompleteAndInTime)
{
    Cables cables;
    CableClient client(cables.loopback, clock);
    Studio studio(clock, cables, beats);
    setTempi(studio.player.editor(), seconds + 0.5);
    ASSERT_TRUE(studio.open(0, Cables::silence));
    record(studio, client, 1us);
    if (!HasFailure()) playBack(studio, client, Cables::silence, Cables::cable);
}

TEST_F(Streams, OverJackAreRecordedCompleteAndInTime)
{
    if (!JackServer::installed()) GTEST_SKIP() << "jackd is not installed";
    JackServer server;
    ASSERT_TRUE(server.start());
    JackPlayer client(server.name(), clock);
    ASSERT_TRUE(client.connected());
    PlatformMidi midi(clock, {.jackServer = server.name(), .alsa = false, .soundDevices = false});
    const auto driverOf = [](const std::vector<std::string>& names, const char* name) {
        return static_cast<std::int32_t>(std::find(names.begin(), names.end(), name) - names.begin());
    };
    ASSERT_TRUE(waitFor([&] {
        midi.refresh();
        return driverOf(midi.inputs(), JackPlayer::out) < static_cast<std::int32_t>(midi.inputs().size());
    })) << "a server that has just started may turn the first client away";
    Studio studio(clock, midi, beats);
    setTempi(studio.player.editor(), seconds + 0.5);
    const std::int32_t silence = driverOf(midi.outputs(), Loopback::name);
    ASSERT_TRUE(studio.open(driverOf(midi.inputs(), JackPlayer::out), silence));
    std::this_thread::sleep_for(1s); // the server's clock filter settles
    record(studio, client, 100us);
    if (!HasFailure()) playBack(studio, client, silence, driverOf(midi.outputs(), JackPlayer::in));
}

} // namespace
} // namespace tessaro::test
