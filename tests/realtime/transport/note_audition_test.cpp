// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/play_bench.h"
#include "realtime/transport/note_audition.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

struct Sent {
    int port;
    std::vector<std::uint8_t> bytes;
    bool operator==(const Sent&) const = default;
};

class NoteAuditionTest : public testing::Test {
protected:
    NoteAuditionTest()
    {
        PlayBench::addNote(bench.block(1), 0, 4800, 40);
        bench.bind();
        bench.editor.SetTrkCh(1, 3);
    }

    std::vector<Sent> heard()
    {
        bench.run(10ms);
        std::vector<Sent> all;
        for (const Heard& h : bench.take()) all.push_back({h.port, h.bytes});
        return all;
    }

    PlayBench bench;
    NoteAudition audition{bench.smc, bench.editor};
};

TEST_F(NoteAuditionTest, EndsANoteWhereItBeganWhateverBecomesOfItsTrack)
{
    bench.editor.SetTrkTranspose(1, 5);
    audition.start(1, 60, 99);
    EXPECT_EQ(heard(), (std::vector<Sent>{{0, {0x93, 65, 99}}}));
    bench.editor.SetTrkPort(1, 1);
    bench.editor.SetTrkCh(1, 9);
    bench.editor.SetTrkTransEnable(1, false);
    audition.start(1, 60, 1);
    EXPECT_EQ(heard(), (std::vector<Sent>{{0, {0x93, 65, 0}}, {1, {0x99, 60, 1}}}));
    audition.stop();
    audition.stop();
    EXPECT_EQ(heard(), (std::vector<Sent>{{1, {0x99, 60, 0}}}));
}

TEST_F(NoteAuditionTest, ChordsBeginOnceAndEndWithTheirOwner)
{
    {
        NoteAudition chord{bench.smc, bench.editor};
        chord.start(1, 60, 80);
        chord.add(1, 64, 81);
        chord.add(1, 64, 82);
        EXPECT_EQ(heard(), (std::vector<Sent>{{0, {0x93, 60, 80}}, {0, {0x93, 64, 81}}}));
    }
    EXPECT_EQ(heard(), (std::vector<Sent>{{0, {0x93, 60, 0}}, {0, {0x93, 64, 0}}}));
}

TEST_F(NoteAuditionTest, IsSilentWhereNoNoteCanBe)
{
    bench.editor.SetTrkType(2, trktype::wave);
    bench.editor.SetTrkTranspose(3, 36);
    bench.editor.SetTrkTranspose(4, -36);
    bench.editor.SetTrkPort(5, 7); // nothing is open there
    const std::vector<std::array<int, 3>> silent{{0, 60, 80},  {2, 60, 80}, {101, 60, 80}, {-1, 60, 80}, {1, 60, 0},
                                                 {1, 60, 128}, {3, 92, 80}, {4, 35, 80},   {5, 60, 80},  {1, 128, 80}};
    for (const auto& [track, key, velocity] : silent) {
        audition.start(track, static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(velocity));
        EXPECT_TRUE(heard().empty()) << track << ' ' << key << ' ' << velocity;
    }
    audition.start(3, 91, 80);
    audition.add(4, 36, 80);
    EXPECT_EQ(heard(), (std::vector<Sent>{{0, {0x92, 127, 80}}, {0, {0x93, 0, 80}}}));
}

TEST_F(NoteAuditionTest, SoundsBesideASongThatPlays)
{
    bench.smc.smcPlayStart();
    bench.run(300ms);
    audition.start(1, 72, 64);
    bench.run(50ms);
    audition.stop();
    bench.run(50ms);
    bench.smc.smcPlayStop();
    bench.run(50ms);
    int sounding = 0;
    for (const Heard& h : bench.take()) sounding += h.isNoteOn() ? 1 : h.isNoteOff() ? -1 : 0;
    EXPECT_EQ(sounding, 0);
}

TEST_F(NoteAuditionTest, AnEndThatThePortDidNotTakeIsAskedForUntilItGoes)
{
    const std::int32_t none[] = {-1};
    const std::int32_t drivers[] = {0, 2};
    int waits = 0;
    audition.onRefused = [&waits] { ++waits; };
    audition.start(1, 60, 80);
    static_cast<void>(heard());
    bench.smc.setOutPorts(none, 4096, 2000);
    audition.stop();
    audition.retry();
    EXPECT_EQ(waits, 2);
    bench.smc.setOutPorts(drivers, 4096, 2000);
    audition.add(1, 62, 80);
    audition.retry();
    audition.retry();
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(heard(), (std::vector<Sent>{{0, {0x93, 62, 80}}, {0, {0x93, 60, 0}}})); // what sounds goes on
}

} // namespace
} // namespace tessaro::test
