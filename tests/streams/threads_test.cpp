// SPDX-License-Identifier: GPL-3.0-or-later
// Playing and recording together on real threads, in a loop, with everything a person may do meanwhile.
#include "streams/stream_client.h"
#include "streams/take_check.h"
#include "support/random.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

TEST(Threads, PlayAndRecordInALoopWithEditsInBetween)
{
    RealClock clock;
    Cables cables;
    CableClient client(cables.loopback, clock);
    Studio studio(clock, cables, 16);
    ASSERT_TRUE(studio.open(0, Cables::silence));
    const std::vector<Played> performance = randomPerformance(3, std::chrono::milliseconds(2500), 500);
    CCnpWindow& panel = studio.player.panel();
    CEditor& editor = studio.player.editor();
    panel.SetLoop(0, 960);
    panel.ShortCutLoopClicked();
    ASSERT_TRUE(studio.record());
    studio.loopTo(120);
    client.play(performance);
    Dice dice{11};
    for (int takes = 1; !client.done();) {
        const int track = dice.oneIn(2) ? Studio::rulerTrack : static_cast<int>(dice.between(1, 16));
        switch (dice.below(9)) {
        case 0:
            editor.SetTrkMute(track, dice.oneIn(2));
            editor.SetTrkOnOff();
            break;
        case 1: editor.SetTrkSolo(track, dice.oneIn(2)); break;
        case 2: editor.SetTrkPort(track, dice.byteBelow(3)); break;
        case 3: panel.SetRelativeTempo(static_cast<long>(dice.below(800)) - 400); break;
        case 4: editor.SetTrkTranspose(track, static_cast<int>(dice.below(12))); break;
        case 5: // what a view shows
            for (const CBlk* blk = editor.song().trk(1)->blocks().head(); blk; blk = List<CBlk>::next(blk))
                static_cast<void>(blk->GetTimePos(dice.below(960)));
            break;
        case 6:
            if (!panel.IsRecButton()) break;
            EXPECT_FALSE(editor.OpenUndoNode("edit")) << "a take is one step";
            EXPECT_FALSE(editor.UndoNode());
            break;
        case 7:
            if (takes == 8 || !dice.oneIn(4)) break;
            panel.ShortCutRECClicked(); // the take ends or another one begins; the song plays on
            EXPECT_TRUE(studio.player.smc().running());
            ++takes;
            break;
        default: panel.ShortCutMETRONOMEClicked(); break;
        }
        studio.loop();
    }
    panel.Stop();
    EXPECT_TRUE(studio.user.messages.empty());
    EXPECT_FALSE(editor.IsUndoOpen());
    std::size_t events = 0;
    for (const std::vector<Taken>& channel : takenOf(editor)) {
        for (const Taken& event : channel) EXPECT_LE(event.tick, 960U);
        events += channel.size();
    }
    EXPECT_GT(events, 0U);
    while (editor.UndoNode()) {}
    for (const std::vector<Taken>& channel : takenOf(editor)) EXPECT_TRUE(channel.empty());
}

} // namespace
} // namespace tessaro::test
