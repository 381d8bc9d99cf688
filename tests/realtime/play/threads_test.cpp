// SPDX-License-Identifier: GPL-3.0-or-later
// Playing on real threads, for the thread sanitizer: every operation that may come while the song plays.
#include "base/real_clock.h"
#include "realtime/play/random_song.h"

#include <gtest/gtest.h>

#include <atomic>

namespace tessaro::test {
namespace {

struct Listening final : MessageTarget {
    std::atomic<unsigned> heard{0};
    bool post(const Message& m) noexcept override
    {
        heard += PlayOwners::read(m).status != 0;
        return true;
    }
    void send(const Message& m) override { post(m); }
};

TEST(Threads, PlayLocateLoopMuteAndStop)
{
    PlayBenchOn<RealClock> bench;
    Dice dice{7};
    makeRandomSong(bench, dice, 4000);
    bench.editor.song().trk(7)->SetRec(true);
    bench.bind();
    Listening owner;
    int slot = bench.smc.smcSetMultiPlayOwner(&owner, 0xFF);
    bench.panel.Start();
    for (int i = 0; i < 40; ++i) {
        const int track = static_cast<int>(dice.between(1, 6));
        switch (dice.below(12)) {
        case 0: bench.panel.SetLocation(static_cast<long>(dice.below(4000))); break;
        case 1: bench.panel.SetLoop(dice.below(2000), dice.between(2000, 4000)); break;
        case 2: bench.panel.ShortCutLoopClicked(); break;
        case 3:
            bench.editor.SetTrkMute(track, dice.oneIn(2));
            bench.editor.SetTrkOnOff();
            break;
        case 4: bench.editor.SetTrkCh(track, dice.byteBelow(16)); break;
        case 5: bench.panel.SetRelativeTempo(static_cast<long>(dice.below(9000))); break;
        case 6: // an edit under a playing song
            bench.editor.StopSeq();
            bench.addNote(*bench.editor.song().masterBlk(), dice.below(4000), 50);
            bench.editor.PlaySeq();
            break;
        case 7:
            bench.smc.smcReleaseMultiPlayOwner(slot);
            slot = bench.smc.smcSetMultiPlayOwner(&owner, 0xFF);
            break;
        case 8: bench.panel.Stop(); break;
        case 9:
        case 10: bench.panel.ShortCutRECClicked(); break;
        default: bench.panel.Start(); break;
        }
        const std::uint8_t key = dice.byteBelow(128);
        bench.receive({0x90, key, 100});
        bench.run(std::chrono::milliseconds{dice.below(40)});
        bench.receive({0x80, key, 0});
        // What a view does while it draws: it asks the song.
        static_cast<void>(bench.editor.song().masterReal()->GetTimePos(dice.below(4000)));
        bench.main.pump();
        bench.panel.timer();
    }
    bench.panel.Stop();
    EXPECT_FALSE(bench.smc.running());
    bench.smc.smcReleaseMultiPlayOwner(slot);
    EXPECT_GT(owner.heard, 0U);
}

} // namespace
} // namespace tessaro::test
