// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "parts_fixture.h"
#include "views/drum/drum_frame.h"
#include "views/drum/drum_rows.h"
#include "views/drum/drum_view.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(DrumRows, ShowAllNamedOrUsedNotes)
{
    DrumRows rows;
    DrumRows::Keys used;
    used[3] = used[36] = true;
    rows.set(DrumRows::Shown::all, used);
    EXPECT_EQ(rows.count(), 128);
    EXPECT_EQ(rows.key(0), 127);
    rows.set(DrumRows::Shown::named, used);
    EXPECT_EQ(rows.count(), 62); // 27 to 87, and the one in use without a name
    EXPECT_EQ(rows.key(0), 87);
    EXPECT_EQ(rows.row(3), 61);
    EXPECT_EQ(rows.row(88), std::nullopt);
    rows.set(DrumRows::Shown::used, used);
    EXPECT_EQ(rows.fromTop(), (std::vector<std::uint8_t>{36, 3}));
    EXPECT_EQ(rows.key(-1), 36);
    EXPECT_EQ(rows.key(9), 3);
    rows.set(DrumRows::Shown::used, {});
    EXPECT_EQ(rows.count(), 61);
}

TEST(DrumRows, NamesInBothLanguages)
{
    Strings strings(Language::english);
    UiText text(strings);
    EXPECT_EQ(drumName(27, text), "High Q");
    EXPECT_EQ(drumName(38, text), "Snare Drum 1");
    EXPECT_EQ(drumName(87, text), "Open Surdo");
    EXPECT_EQ(drumName(5, text), "Note 5");
    text.setLanguage(Language::japanese);
    EXPECT_EQ(drumName(42, text), "クローズハイハット");
}

/// A grid over track 10, two ticks a pixel, rows of 16 pixels, with a hit of the bass drum on the first two beats.
class DrumFrameTest : public testing::Test {
protected:
    DrumFrameTest()
    {
        blk = &song.addBlock(10, 0, 1920);
        song.addNote(*blk, 0, 36, 10);
        song.addNote(*blk, 480, 36, 10, 60);
        song.bind();
        frame = std::make_unique<CDrumFrame>(song.parts, 10);
        song.actions.setActive(frame.get());
        frame->resize(1000, 800);
        frame->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(frame.get()));
        view = &frame->drums();
        view->rescale([](RollScale& scale) {
            scale.setZoom(2);
            scale.setScroll(40 * 16);
        });
        song.grid.setIndex(3); // eighths
        song.actions.setTool(EditTool::pencil);
    }

    [[nodiscard]] QPoint at(std::uint32_t time, int key) const
    {
        return {view->scale().x(time), view->scale().y(static_cast<std::uint8_t>(key)) + 8};
    }
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(view, Qt::LeftButton, {}, from);
        for (int i = 1; i <= 4; ++i) QTest::mouseMove(view, from + (to - from) * i / 4);
        QTest::mouseRelease(view, Qt::LeftButton, {}, to);
    }
    [[nodiscard]] std::string hits() const
    {
        std::string all;
        for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
            all += std::to_string(e->GetTime()) + "/" + std::to_string(e->GetPost1()) + " ";
        return all;
    }

    PartsFixture song;
    CBlk* blk = nullptr;
    std::unique_ptr<CDrumFrame> frame;
    CDrumView* view = nullptr;
};

TEST_F(DrumFrameTest, ThePencilWritesAndTakesHits)
{
    QTest::mouseClick(view, Qt::LeftButton, {}, at(300, 38)); // in the cell from 240 on
    EXPECT_EQ(hits(), "0/36 240/38 480/36 ");
    QTest::mouseClick(view, Qt::LeftButton, {}, at(240, 38) + QPoint(6, 0)); // on what is drawn of it
    EXPECT_EQ(hits(), "0/36 480/36 ");
    QTest::mouseClick(view, Qt::LeftButton, {}, at(480, 36) + QPoint(12, 0)); // beyond its ten ticks, still drawn
    EXPECT_EQ(hits(), "0/36 ");
    EXPECT_EQ(song.editor.GetUndoRedoCount(), 3);
    song.editor.UndoNode(3);
    EXPECT_EQ(hits(), "0/36 480/36 ");
}

TEST_F(DrumFrameTest, ASweepFillsOrClearsARowInOneStep)
{
    drag(at(250, 36), at(1300, 40)); // along the row of the press
    EXPECT_EQ(hits(), "0/36 240/36 480/36 720/36 960/36 1200/36 ");
    EXPECT_EQ(song.editor.GetUndoRedoCount(), 1);
    drag(at(960, 36) + QPoint(3, 0), at(200, 36));
    EXPECT_EQ(hits(), "0/36 1200/36 ");
    song.editor.UndoNode(2);
    EXPECT_EQ(hits(), "0/36 480/36 ");

    song.grid.setFree(true);
    drag(at(250, 38), at(1300, 38)); // one hit where the press was
    EXPECT_EQ(hits(), "0/36 250/38 480/36 ");
    song.editor.UndoNode();

    QTest::mousePress(view, Qt::LeftButton, {}, at(300, 38));
    QTest::keyClick(view, Qt::Key_Escape);
    QTest::mouseRelease(view, Qt::LeftButton, {}, at(300, 38));
    EXPECT_EQ(hits(), "0/36 480/36 ");
}

TEST_F(DrumFrameTest, ASweepOverALinkedBlockWritesNothing)
{
    ASSERT_TRUE(song.editor.BlkGhost(song.editor.GetTrkPos(10), blk, song.editor.GetTrkPos(10), 1920));
    song.editor.ClearUndoRedo();
    drag(at(1300, 38), at(2700, 38));
    EXPECT_EQ(hits(), "0/36 480/36 ");
    EXPECT_EQ(song.bench.user.messages, std::vector{static_cast<int>(TextId::linkedBlockNotEditable)});
    EXPECT_EQ(song.editor.GetUndoRedoCount(), 0);
}

TEST_F(DrumFrameTest, ASweepEndsWhereTimeDoes)
{
    view->rescale([](RollScale& scale) { scale.setStart(tick::latest - 1000); });
    QTest::mousePress(view, Qt::LeftButton, {}, at(tick::latest - 900, 38));
    QTest::mouseMove(view, at(tick::latest, 38));
    EXPECT_GE(view->pencil().written().size(), 2U);
    QTest::keyClick(view, Qt::Key_Escape);
}

TEST_F(DrumFrameTest, AHiddenWindowCatchesUpWhenItIsShown)
{
    constexpr int unnamed = 5;
    const auto insert = [this] {
        _EDT_EVNT rec;
        rec.status = status::note | 9;
        rec.post1 = unnamed;
        rec.post2 = 100;
        const UndoScope step(song.editor, "insert");
        song.editor.InsEvnt(song.editor.GetTrkPos(10), blk, rec);
    };
    frame->hide();
    insert();
    EXPECT_FALSE(view->drumRows().row(unnamed));
    frame->show();
    EXPECT_TRUE(view->drumRows().row(unnamed));
    song.editor.UndoNode();
    EXPECT_FALSE(view->drumRows().row(unnamed));
}

TEST_F(DrumFrameTest, WritesIntoAnEmptyTrack)
{
    frame->resize(1000, 480);
    frame->setTrack(12);
    const RollScale& scale = view->scale(); // from the bass drums to the open hi-hat
    const auto [first, last] = scale.visibleRows();
    EXPECT_TRUE(scale.keyOfRow(first) > 46 && scale.keyOfRow(last) < 35);
    song.grid.setIndex(2);
    drag(at(1920, 42), at(3 * 1920 - 10, 42));
    const CTrk& trk = *song.editor.song().trk(12);
    ASSERT_EQ(trk.GetCount(), 2U); // a block for each measure
    EXPECT_EQ(trk.blocks().head()->GetTimeTop(), 1920U);
    EXPECT_EQ(trk.blocks().head()->GetNum() + trk.blocks().tail()->GetNum(), 8U);
    song.editor.UndoNode();
    EXPECT_EQ(trk.GetCount(), 0U);
}

TEST_F(DrumFrameTest, TheSelectToolMovesHitsByRowsAndCells)
{
    song.actions.setTool(EditTool::select);
    drag(at(480, 36) + QPoint(10, 0), at(960, 38) + QPoint(10, 0));
    EXPECT_EQ(hits(), "0/36 960/38 ");
    // Rows fold away what is not in use; a step up goes to the next row.
    view->setShown(DrumRows::Shown::used);
    EXPECT_EQ(view->drumRows().count(), 2);
    EXPECT_EQ(view->scale().rows(), 2);
    const EvntRef first{song.editor.GetTrkPos(10), blk, blk->GetHeadPos()};
    frame->selectEvnts({&first, 1});
    frame->run(ViewCommand::nudgeUp);
    EXPECT_EQ(hits(), "0/38 960/38 ");
    EXPECT_EQ(view->drumRows().count(), 1);
    frame->saveState();
    EXPECT_EQ(CDrumFrame(song.parts, 10).drums().shown(), DrumRows::Shown::used);
}

TEST_F(DrumFrameTest, HeadsOfRowsSound)
{
    song.bench.take();
    QTest::mouseClick(view, Qt::LeftButton, {}, {20, at(0, 38).y()});
    song.bench.run(std::chrono::milliseconds(20));
    int notes = 0;
    for (const test::Heard& heard : song.bench.take()) notes += heard.isNoteOn() && heard.bytes[1] == 38;
    EXPECT_EQ(notes, 1);
}

} // namespace
} // namespace tessaro
