// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "parts_fixture.h"
#include "track_song.h"
#include "views/setup/position_box.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/transpose_box.h"
#include "views/tracks/trk_blk_prop_page.h"
#include "views/tracks/trk_blk_view.h"
#include "views/tracks/trk_pram_view.h"
#include "views/tracks/trk_prop_page.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(TransposeBox, ReadsNumbersAndOff)
{
    TransposeBox box(QStringLiteral("OFF"));
    struct Case {
        const char* typed;
        int value;
    };
    for (const Case& each : {Case{"0", 0},
                             {"00", 0},
                             {"000", 0},
                             {"-36", -36},
                             {"+12", 12},
                             {"36", 36},
                             {"OFF", TransposeBox::off},
                             {"Off", TransposeBox::off},
                             {"off", TransposeBox::off},
                             {"", TransposeBox::off}}) {
        box.setValue(5);
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Backspace);
        QTest::keyClicks(&box, QString::fromLatin1(each.typed));
        QTest::keyClick(&box, Qt::Key_Return);
        EXPECT_EQ(box.value(), each.value) << each.typed;
    }
    box.setValue(-36);
    box.stepDown();
    EXPECT_EQ(box.text(), QStringLiteral("OFF"));
    box.stepDown();
    box.stepUp();
    EXPECT_EQ(box.text(), QStringLiteral("-36"));
    for (const char* typed : {"37", "-40", "x"}) {
        QString text = QString::fromLatin1(typed);
        int pos = 0;
        EXPECT_EQ(static_cast<QAbstractSpinBox&>(box).validate(text, pos), QValidator::Invalid) << typed;
    }
}

class TrackPages : public testing::Test {
protected:
    PartsFixture fixture;
    CEditor& editor = fixture.editor;
    std::unique_ptr<CTrackFrame> frame;

    TrackPages()
    {
        PartsFixture::addNote(fixture.addBlock(1, 1920, 3840), 1920, 60, 100);
        fixture.bind();
        frame = std::make_unique<CTrackFrame>(fixture.parts);
        frame->resize(1200, 500);
        frame->show();
        fixture.actions.setActive(frame.get());
        EXPECT_TRUE(QTest::qWaitForWindowExposed(frame.get()));
    }
    const CTrk& trk(int number) { return *editor.song().trk(number); }
    const CBlk& blk(int number) { return *trk(number).blocks().head(); }

    template <class Page>
    Page& page()
    {
        return dynamic_cast<Page&>(*QApplication::activePopupWidget()); // throws for another one
    }
    CTrkPropPage& openTrack(int track)
    {
        CTrkPramView& prams = frame->pramView();
        const QModelIndex cell = frame->table().index(track - 1, static_cast<int>(TrackColumn::number));
        QTest::mouseDClick(prams.viewport(), Qt::LeftButton, {}, prams.visualRect(cell).center());
        return page<CTrkPropPage>();
    }
    CTrkBlkPropPage& openBlk()
    {
        const POSITION at = editor.GetTrkPos(1);
        frame->selection().setBlks({{BlkRef{at, editor.GetHeadBlkPos(at)}}});
        frame->blkView().setFocus();
        frame->run(ViewCommand::properties);
        return page<CTrkBlkPropPage>();
    }
};

TEST_F(TrackPages, ATrackIsSetByEnterAndLeftByEscape)
{
    CTrkPropPage& first = openTrack(1);
    EXPECT_FALSE(first.type().isEnabled()) << "it holds a block";
    first.name().setText(QStringLiteral("Bass"));
    first.channel().setValue(7);
    first.transpose().setValue(TransposeBox::off);
    QTest::keyClick(&first.name(), Qt::Key_Return);
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(trk(1).GetName(), "Bass");
    EXPECT_EQ(trk(1).GetCh(), 6);
    EXPECT_FALSE(trk(1).GetTransEnable());
    EXPECT_EQ(frame->table().rows()[0].name, "Bass");
    EXPECT_EQ(frame->table().index(0, static_cast<int>(TrackColumn::transpose)).data().toString(),
              QStringLiteral("OFF"));

    CTrkPropPage& other = openTrack(2);
    EXPECT_TRUE(other.type().isEnabled());
    other.type().setCurrentIndex(trktype::wave);
    other.name().setText(QStringLiteral("gone"));
    QTest::keyClick(&other.name(), Qt::Key_Escape);
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(trk(2).GetType(), trktype::midi);
    EXPECT_EQ(trk(2).GetName(), "");
}

TEST_F(TrackPages, ABlockIsNamedMovedAndSizedInOneStep)
{
    const int before = editor.GetUndoRedoCount();
    CTrkBlkPropPage& first = openBlk();
    EXPECT_EQ(first.top().tick(), 1920U);
    EXPECT_EQ(first.end().tick(), 3840U);
    first.name().setText(QStringLiteral("Verse"));
    first.top().stepBy(2);
    EXPECT_EQ(first.end().tick(), 3840U + 2 * 1920) << "goes along";
    first.end().stepBy(1);
    first.track().setValue(3);
    QTest::keyClick(&first.name(), Qt::Key_Return);
    ASSERT_TRUE(trk(1).IsEmpty());
    EXPECT_EQ(blk(3).GetName(), "Verse");
    EXPECT_EQ(blk(3).GetTimeTop(), 1920U * 3);
    EXPECT_EQ(blk(3).GetTimeEnd(), 1920U * 5);
    EXPECT_EQ(editor.GetUndoRedoCount(), before + 1);
    editor.UndoNode();
    EXPECT_EQ(blk(1).GetTimeTop(), 1920U);
    EXPECT_EQ(blk(1).GetTimeEnd(), 3840U);

    CTrkBlkPropPage& other = openBlk();
    other.track().setValue(50);
    QTest::keyClick(&other.track(), Qt::Key_Escape);
    EXPECT_FALSE(trk(1).IsEmpty());

    fixture.locked = true;
    frame->run(ViewCommand::properties);
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(TrackPages, APageClosesWhenItsTrackOrBlockChanges)
{
    const auto step = [&](auto&& work) {
        const UndoScope scope(editor, "step");
        work();
    };
    openBlk();
    step([&] { editor.BlkSize(editor.GetTrkPos(1), editor.GetHeadBlkPos(editor.GetTrkPos(1)), 7680); });
    EXPECT_FALSE(QApplication::activePopupWidget());
    openBlk();
    editor.UndoNode();
    EXPECT_FALSE(QApplication::activePopupWidget());
    openBlk();
    step([&] { editor.BlkDel(editor.GetTrkPos(1), editor.GetHeadBlkPos(editor.GetTrkPos(1))); });
    EXPECT_FALSE(QApplication::activePopupWidget());
    openTrack(1);
    step([&] { editor.SetTrkArrange(1, 5); });
    EXPECT_FALSE(QApplication::activePopupWidget());
    openTrack(1);
    editor.SetTrkPort(1, 2);
    EXPECT_FALSE(QApplication::activePopupWidget());
    openTrack(1);
    editor.SetTrkSolo(1, true); // which no page shows
    EXPECT_TRUE(QApplication::activePopupWidget());
    frame->songReplaced();
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(TrackPages, TheEndOfAGhostIsThatOfItsSource)
{
    const POSITION at = editor.GetTrkPos(1);
    {
        const UndoScope step(editor, "link");
        editor.BlkGhost(at, editor.GetHeadBlkPos(at), editor.GetTrkPos(4), 0);
    }
    const POSITION other = editor.GetTrkPos(4);
    frame->showBlk({other, editor.GetHeadBlkPos(other)});
    auto& ghost = page<CTrkBlkPropPage>();
    EXPECT_FALSE(ghost.end().isEnabled());
    ghost.name().setText(QStringLiteral("Echo"));
    ghost.top().stepBy(1);
    QTest::keyClick(&ghost.name(), Qt::Key_Return);
    EXPECT_EQ(TrackSong::all(editor), "1:1920-3840 4:1920-3840g");
    EXPECT_EQ(blk(4).GetName(), "Echo");
}

TEST_F(TrackPages, ACellUnderEditKeepsWhatIsTyped)
{
    CTrkPramView& prams = frame->pramView();
    prams.setCurrentIndex(frame->table().index(0, static_cast<int>(TrackColumn::name)));
    prams.editCell();
    auto* line = prams.findChild<QLineEdit*>();
    ASSERT_TRUE(line);
    line->setText(QStringLiteral("half"));
    editor.SetTrkSolo(2, true); // the first track is silent now
    editor.SetTrkSoloMute();
    EXPECT_EQ(line->text(), QStringLiteral("half"));
    editor.SetTrkName(1, "other");
    frame->refreshRows();
    EXPECT_EQ(line->text(), QStringLiteral("other")) << "the value itself is another one";
    line->setText(QStringLiteral("of the old song"));
    frame->songReplaced();
    EXPECT_EQ(trk(1).GetName(), "other");
}

TEST_F(TrackPages, EveryColumnHasAFullName)
{
    const TrackListModel& table = frame->table();
    for (int column = 0; column < trackColumns; ++column) {
        const QString name = table.headerData(column, Qt::Horizontal, Qt::AccessibleTextRole).toString();
        EXPECT_FALSE(name.isEmpty()) << column;
        const QString said = table.index(0, column).data(Qt::AccessibleTextRole).toString();
        const bool plain =
            column == static_cast<int>(TrackColumn::number) || column == static_cast<int>(TrackColumn::name);
        EXPECT_EQ(said.startsWith(name + QStringLiteral(": ")) && said.size() > name.size() + 2, !plain) << column;
    }
}

TEST_F(TrackPages, WhatIsSelectedGivesItsEventsOnce)
{
    const POSITION at = editor.GetTrkPos(1);
    const POSITION source = editor.GetHeadBlkPos(at);
    {
        const UndoScope step(editor, "link");
        editor.BlkGhost(at, source, editor.GetTrkPos(4), 0);
    }
    const POSITION other = editor.GetTrkPos(4);
    const BlkRef ghost{other, editor.GetHeadBlkPos(other)};
    frame->selection().setBlks({{ghost}});
    const auto events = frame->selectedEvnts();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].blk, source) << "where they can change";
    frame->selection().setBlks({{ghost, BlkRef{at, source}}});
    EXPECT_EQ(frame->selectedEvnts().size(), 1U);
}

TEST_F(TrackPages, ZoomAndSplitComeBack)
{
    for (const double zoom : {100.0, 37.4, 37.625, 6.0}) {
        frame->blkView().setZoom(zoom);
        frame->blkView().setRowHeight(44);
        frame->saveState();
        const CTrackFrame again(fixture.parts);
        EXPECT_NEAR(again.blkView().geometry().zoom(), zoom, 0.0006);
        EXPECT_EQ(again.blkView().geometry().rowHeight(), 44);
    }
    fixture.bench.settings.setInt("View Condition", "Trk Zoom", 5000);
    EXPECT_DOUBLE_EQ(CTrackFrame(fixture.parts).blkView().geometry().zoom(), TrkGeometry::mostZoom);
}

TEST_F(TrackPages, TheBackgroundIsTheThemesOrAnother)
{
    const auto shown = [this] {
        CTrackFrame again(fixture.parts);
        again.resize(1200, 500);
        const QImage image = again.grab().toImage();
        return image.pixelColor(image.width() - 60, image.height() - 60);
    };
    const QColor usual = shown();
    fixture.bench.settings.setInt("Track", "Color", 0x804000);
    EXPECT_EQ(shown(), usual);
    fixture.bench.settings.setInt("Track", "Color", 0x123456);
    EXPECT_EQ(shown(), QColor(0x12, 0x34, 0x56));
}

} // namespace
} // namespace tessaro
