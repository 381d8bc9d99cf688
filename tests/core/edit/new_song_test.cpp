// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

TEST(NewSong, HasTracksAsTheUserFindsThem)
{
    EditorBench bench;
    for (int n = 1; n < trackCount; ++n) {
        _EDT_TRKINFO info;
        ASSERT_TRUE(bench.editor.GetTrkInfo(n, info));
        EXPECT_EQ(info.type, n <= 16 ? 1 : 0) << n;
        EXPECT_EQ(info.ch, (n - 1) % 16) << n;
        EXPECT_EQ(info.transEnable, n % 16 != 10) << n;
    }
    EXPECT_FALSE(bench.editor.GetTrkPos(trackCount));
    EXPECT_FALSE(bench.editor.GetTrkPos(-1));
    EXPECT_EQ(bench.editor.GetTimeEnd(), 0U);
    EXPECT_EQ(bench.editor.GetRealBlkCount(), 1U);
    EXPECT_EQ(bench.editor.TimeToMsecond(480), 500U);
    EXPECT_TRUE(bench.user.messages.empty());
}

TEST(NewSong, TracksKeepTheirPositionsWhenTheyMove)
{
    EditorBench bench;
    CEditor& editor = bench.editor;
    const POSITION fifth = editor.GetTrkPos(5);
    const POSITION second = editor.GetTrkPos(2);
    FakeView view;
    editor.addObserver(&view);
    bench.transport.playing = true;
    ASSERT_TRUE(editor.SetTrkArrange(5, 1));
    int number = 0;
    ASSERT_TRUE(editor.GetIndexTrk(fifth, &number));
    EXPECT_EQ(number, 2);
    ASSERT_TRUE(editor.GetIndexTrk(second, &number));
    EXPECT_EQ(number, 3);
    EXPECT_EQ(editor.GetTrkPos(2), fifth);
    EXPECT_EQ(view.codes, (std::vector{hint::trkArrange}));
    EXPECT_EQ(bench.transport.calls, (std::vector<std::string>{"stop", "reload"}));
    EXPECT_FALSE(editor.SetTrkArrange(0, 4)) << "the master track stays";
    editor.removeObserver(&view);
}

TEST(NewSong, AFailedLoadLeavesNothingOfTheOldSong)
{
    EditorBench bench;
    bench.editor.NewBlk(1, 0);
    bench.editor.NewAddTailEvnt(1, 0, noteRec(0, 100));
    bench.files.fill = [](CEditor& editor) {
        EXPECT_EQ(editor.GetTimeEndMstr(), 0U);
        EXPECT_FALSE(editor.GetHeadBlkPos(1));
        EXPECT_FALSE(editor.GetHeadEvntPos(0, 0)) << "signature and tempo come from the file alone";
        return LoadResult::failed;
    };
    EXPECT_EQ(bench.editor.Load({}), LoadResult::failed);
    bench.files.fill = [](CEditor&) -> LoadResult { throw std::bad_alloc(); };
    EXPECT_EQ(bench.editor.Load({}), LoadResult::failed);
    EXPECT_TRUE(bench.editor.InitEditor());
    EXPECT_TRUE(bench.editor.GetHeadEvntPos(0, 0));
}

TEST(NewSong, BadMapsAreToldAndTheSongLoads)
{
    EditorBench bench;
    bench.files.fill = [](CEditor& editor) {
        const std::uint8_t four[] = {4, 2, 24, 8};
        const std::uint8_t none[] = {0, 2, 24, 8};
        const std::uint8_t still[] = {0, 0, 0};
        const std::uint8_t fast[] = {0x03, 0xD0, 0x90};
        editor.AddTs(0, four);
        editor.AddTs(1920, none);
        editor.AddTempo(0, fast);
        editor.AddTempo(480, still);
        return LoadResult::complete;
    };
    EXPECT_EQ(bench.editor.Load({}), LoadResult::complete);
    EXPECT_EQ(bench.user.messages, (std::vector{922}));
    EXPECT_FALSE(bench.editor.InitTimeInfo());
    EXPECT_EQ(bench.editor.TimeToMsecond(960), 500U) << "the tempo before the refused one goes on";
}

TEST(NewSong, SongEndIsTheLargestOfThree)
{
    EditorBench bench;
    const std::uint8_t four[] = {4, 2, 24, 8};
    bench.editor.AddTs(3840, four);
    EXPECT_EQ(bench.editor.GetTimeEnd(), 3840U);
    bench.editor.NewBlk(7, 4000);
    bench.editor.NewAddTailEvnt(7, 0, noteRec(1000, 100));
    EXPECT_EQ(bench.editor.GetTimeEnd(), 5000U) << "the block grows to the event's time, not its end";
    CStyleBlk* style = nullptr;
    bench.editor.NewStyle(&style);
    style->SetTime(0, 9000);
    bench.editor.AddStyle(0, style);
    EXPECT_EQ(bench.editor.GetTimeEnd(), 9000U);
}

TEST(ProgressBar, DrawsOnlyWhileOpenAndInsideItsRange)
{
    struct Port final : ProgressPort {
        std::vector<std::string> log;
        void begin() override { log.emplace_back("begin"); }
        void range(std::uint32_t low, std::uint32_t high) override
        {
            log.push_back(std::to_string(low) + ".." + std::to_string(high));
        }
        void pos(std::uint32_t p) override { log.push_back(std::to_string(p)); }
        void text(std::string_view line) override { log.emplace_back(line); }
        void end() override { log.emplace_back("end"); }
    } port;
    ProgressBar bar(port);
    bar.pos(1);
    bar.text("closed");
    bar.open(0, 100);
    bar.pos(101);
    bar.bytes(3'000'000'000U, 4'000'000'000U);
    bar.bytes(1, 0);
    bar.range(5, 7);
    bar.pos(4);
    bar.pos(7);
    bar.close();
    bar.close();
    bar.pos(6);
    EXPECT_EQ(port.log, (std::vector<std::string>{"begin", "0..100", "75", "5..7", "7", "end"}));
}

} // namespace
} // namespace tessaro::test
