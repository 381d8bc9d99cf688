// SPDX-License-Identifier: GPL-3.0-or-later
// The command records and plays in real time, with other programs beside it.
#include "base/manual_clock.h"
#include "cli/player.h"
#include "cli/simulated_ports.h"
#include "platform/jack_server.h"
#include "streams/stream_client.h"
#include "streams/take_check.h"
#include "support/command.h"

#include <unistd.h>

#include <future>
#include <map>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

class LiveCommand : public CommandTest {
protected:
    template <class Use>
    static void withSong(const std::string& file, Use&& use)
    {
        ManualClock clock;
        cli::SimulatedPorts ports;
        FakeUser user;
        cli::Player player(clock, ports, user);
        ASSERT_TRUE(player.open(file));
        use(player.editor());
    }
    TakenByChannel takeIn(const std::string& file) const
    {
        TakenByChannel taken;
        withSong(path(file), [&](const CEditor& editor) { taken = takenOf(editor); });
        return taken;
    }
    using Note = std::array<std::uint32_t, 3>; // tick, channel, key
    static std::map<Note, int> notesOf(const std::string& file)
    {
        std::map<Note, int> notes;
        withSong(file, [&](const CEditor& editor) {
            for (int number = 1; number < trackCount; ++number) {
                const CTrk& trk = *editor.song().trk(number);
                for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
                    _EDT_EVNT rec;
                    for (POSITION at = blk->GetHeadPos(); at && blk->GetNextEvnt(at, rec);)
                        if (status::kind(rec.status) == status::note)
                            ++notes[{blk->GetTimeTop() + rec.time, trk.GetCh(), rec.post1}];
                }
            }
        });
        return notes;
    }
    static std::size_t count(const TakenByChannel& taken)
    {
        std::size_t events = 0;
        for (const std::vector<Taken>& channel : taken) events += channel.size();
        return events;
    }
};

TEST_F(LiveCommand, RecordsForItsTimeOrUntilItIsInterrupted)
{
    const Outcome timed = run("record " + path("a.TQM") + " --in Loopback --seconds 0.3 --tempo 90");
    EXPECT_EQ(timed.exit, 0) << timed.err;
    EXPECT_EQ(timed.err.rfind("Recording from Loopback to tracks 1-16. ", 0), 0U) << timed.err;
    EXPECT_NE(timed.err.find("\nRecorded 0 events on 0 tracks, 0:00.\n"), std::string::npos) << timed.err;
    const std::string info = run("info " + path("a.TQM")).out;
    EXPECT_NE(info.find("tempo: 90.00\n"), std::string::npos) << info;
    EXPECT_NE(info.find("blocks: 0\n"), std::string::npos) << info;

    const Outcome interrupted = run("record " + path("b.mid") + " --in Loopback", "timeout --preserve-status -s INT 2");
    EXPECT_EQ(interrupted.exit, 0) << interrupted.err;
    EXPECT_NE(run("info " + path("b.mid")).out.find("kind: 2"), std::string::npos);
}

TEST_F(LiveCommand, RecordsASongFromItself)
{
    const Outcome result =
        run("record " + path("out.TQM") + " --in Loopback --out Loopback --seconds 2 --with " + example());
    ASSERT_EQ(result.exit, 0) << result.err;
    // Each note that the song has sent stands a second time on a track of the take, at the same tick.
    const auto before = notesOf(example());
    const auto after = notesOf(path("out.TQM"));
    std::uint32_t recordedTo = 0;
    for (const auto& [note, times] : after)
        if (times == 2 * before.at(note)) recordedTo = std::max(recordedTo, note[0]);
    EXPECT_GT(recordedTo, 960U) << result.err;
    for (const auto& [note, times] : before) {
        if (note[0] == recordedTo) continue; // the end came in the midst of it
        EXPECT_EQ(after.at(note), note[0] < recordedTo ? 2 * times : times) << "at tick " << note[0];
    }
}

TEST_F(LiveCommand, RefusesBeforeItRecords)
{
    std::ofstream(path("kept.mid")) << "old";
    for (const std::string& arguments :
         {"record " + path("no/folder/x.mid"), "record " + path("kept.mid") + " --with " + path("none.mid")}) {
        const Outcome result = run(arguments);
        EXPECT_EQ(result.exit, 1) << arguments;
        EXPECT_EQ(result.err.find("Recording"), std::string::npos) << result.err;
        EXPECT_FALSE(result.err.empty());
    }
    EXPECT_EQ(bytesOf("kept.mid"), "old");
}

TEST_F(LiveCommand, WorksWithoutRealTimePriority)
{
    const std::string refused =
        std::string(geteuid() == 0 ? "setpriv --bounding-set=-sys_nice --inh-caps=-sys_nice " : "")
        + "prlimit --rtprio=0:0";
    const Outcome result = run("record " + path("out.mid") + " --in Loopback --seconds 0.3", refused);
    EXPECT_EQ(result.exit, 0) << result.err;
    EXPECT_NE(result.err.find("Real-time priority was refused."), std::string::npos) << result.err;
}

class CommandOverJack : public LiveCommand {
protected:
    void SetUp() override
    {
        if (!JackServer::installed()) GTEST_SKIP() << "jackd is not installed";
        ASSERT_TRUE(server.start());
        client.emplace(server.name(), clock);
        ASSERT_TRUE(client->connected());
    }
    std::future<Outcome> start(const std::string& arguments, const std::string& before = {}) const
    {
        return std::async(std::launch::async, [this, arguments, before] {
            return run(arguments, "JACK_DEFAULT_SERVER=" + server.name() + " " + before);
        });
    }
    bool saidToBegin() const
    {
        return waitFor([this] { return bytesOf("stderr").find("MIDI: JACK") != std::string::npos; }, 20s);
    }

    const std::string in = " --in '" + std::string(JackPlayer::out) + "'";
    const std::string out = " --out '" + std::string(JackPlayer::in) + "'";
    RealClock clock;
    JackServer server;
    std::optional<JackPlayer> client;
};

TEST_F(CommandOverJack, RecordsWhatAnotherProgramPlays)
{
    const std::vector<Played> performance = randomPerformance(21, 2s, 500);
    auto recording = start("record " + path("take.TQM") + in + " --seconds 5");
    ASSERT_TRUE(saidToBegin());
    std::this_thread::sleep_for(300ms);
    client->play(performance);
    const Outcome result = recording.get();
    ASSERT_EQ(result.exit, 0) << result.err;
    ASSERT_TRUE(client->done());
    std::array<std::vector<Bytes>, 16> wanted;
    for (const Played& message : performance)
        if (!message.isNoteOff()) wanted[message.bytes[0] >= 0xF0 ? 0 : message.channel()].push_back(message.bytes);
    const TakenByChannel taken = takeIn("take.TQM");
    for (std::size_t channel = 0; channel < 16; ++channel) {
        std::vector<Bytes> found;
        for (const Taken& event : taken[channel]) found.push_back(event.bytes);
        EXPECT_EQ(found, wanted[channel]) << "channel " << channel;
    }
    EXPECT_NE(result.err.find("Recorded " + std::to_string(count(taken)) + " events on 16 tracks, 0:0"),
              std::string::npos)
        << result.err;
}

TEST_F(CommandOverJack, KeepsTheTakeWhenTheInputGoes)
{
    auto recording = start("record " + path("take.mid") + in + " --seconds 60");
    ASSERT_TRUE(saidToBegin());
    std::this_thread::sleep_for(300ms);
    const std::vector<Played> performance = randomPerformance(22, 500ms, 200);
    client->play(performance);
    ASSERT_TRUE(waitFor([&] { return client->done(); }));
    std::this_thread::sleep_for(300ms);
    server.kill();
    const Outcome result = recording.get();
    EXPECT_EQ(result.exit, 1);
    EXPECT_NE(result.err.find("is gone"), std::string::npos) << result.err;
    EXPECT_GT(count(takeIn("take.mid")), 20U);
    client.reset();
}

TEST_F(CommandOverJack, Leads)
{
    client->listen();
    auto playing = start("play " + example() + out + " --lead", "timeout -s INT 4");
    ASSERT_TRUE(waitFor([&] { return client->heardCount() > 100; }));
    playing.wait();
    std::map<int, int> heard;
    for (const Played& message : client->heard()) ++heard[message.bytes[0]];
    EXPECT_EQ(heard[0xFA], 1);
    EXPECT_GT(heard[0xF8], 48);
    EXPECT_EQ(heard[0xFC], 1);
}

TEST_F(CommandOverJack, Follows)
{
    // Three seconds of clock at 240 beats a minute, in which a song in 120 gets twice as far as by itself.
    std::vector<Played> clocks{{0ns, {0xFA}}};
    for (int i = 0; i < 288; ++i) clocks.push_back({i * 250ms / 24 + 1ms, {0xF8}});
    clocks.push_back({3100ms, {0xFC}});
    client->listen();
    auto playing = start("play " + example() + in + out + " --sync --log " + path("log"), "timeout -s INT 6");
    ASSERT_TRUE(saidToBegin());
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(client->heardCount(), 0U) << "it waits for the other's start";
    client->play(clocks);
    playing.wait();
    std::istringstream log(bytesOf("log"));
    long last = 0;
    std::string planned, actual, tick;
    for (std::string line; std::getline(log, line);) {
        std::istringstream(line) >> planned >> actual >> tick;
        if (tick != "-") last = std::max(last, std::stol(tick));
    }
    EXPECT_NEAR(static_cast<double>(last), 12 * 480, 480) << "and stands still where that stops";
}

} // namespace
} // namespace tessaro::test
