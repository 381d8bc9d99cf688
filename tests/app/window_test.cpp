// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/screenshot.h"
#include "views/frame/open_filter.h"
#include "views/transport/transport_bar.h"
#include "window_fixture.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>

#include <numeric>

namespace tessaro {
namespace {

QString text(TextId id) { return utf8Text(text(id, Language::english)); }

// Files

TEST_F(WindowTest, OpensBySeveralWays)
{
    EXPECT_EQ(rows(), 0U);
    EXPECT_TRUE(frame().openFile(song));
    EXPECT_EQ(rows(), 10U);
    EXPECT_TRUE(frame().windowTitle().startsWith("harbour-lights.mid"));
    EXPECT_TRUE(frame().statusLine().news().startsWith("10 "));
    EXPECT_TRUE(blks().isVisible());

    frame().actions().newSong.trigger();
    EXPECT_EQ(rows(), 0U);
    EXPECT_TRUE(frame().statusLine().news().isEmpty());
    EXPECT_TRUE(frame().trackFrame().isEmpty());
    EXPECT_FALSE(table().rows().empty());

    CommandLine commandLine;
    commandLine.shell = CommandLine::Shell::fileOpen;
    commandLine.file = song.toStdString();
    startProgram(commandLine);
    EXPECT_EQ(rows(), 10U);
    EXPECT_TRUE(frame().statusLine().news().startsWith("10 "));
    EXPECT_TRUE(boxes.isEmpty());
}

TEST_F(WindowTest, AFailedOpenLeavesANewSongAndSaysWhy)
{
    const QByteArray bad[] = {"", "MThd", QByteArray(17, 'x'), QByteArray("MThd\0\0\0\6\0\2\0\1\0\x60", 14)};
    for (const QByteArray& bytes : bad) {
        ASSERT_TRUE(frame().openFile(song));
        boxes.clear();
        EXPECT_FALSE(frame().openFile(writeFile("bad.mid", bytes)));
        EXPECT_EQ(boxes, QStringList(text(TextId::formatNotSupported)));
        EXPECT_EQ(rows(), 0U);
        EXPECT_TRUE(frame().windowTitle().startsWith(text(TextId::songUntitled)));
        EXPECT_FALSE(frame().statusLine().busy());
    }
    boxes.clear();
    EXPECT_FALSE(frame().openFile(folder.path()));
    EXPECT_EQ(boxes, QStringList(text(TextId::fileIsDirectory)));
    EXPECT_TRUE(frame().openFile(song)); // the window lives on
}

TEST_F(WindowTest, TakesADroppedFile)
{
    QMimeData words;
    words.setText("no file");
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &words, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&frame(), &enter);
    EXPECT_FALSE(enter.isAccepted());

    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(song)});
    QDragEnterEvent enterFile({5, 5}, Qt::CopyAction, &file, Qt::LeftButton, {});
    QApplication::sendEvent(&frame(), &enterFile);
    EXPECT_TRUE(enterFile.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &file, Qt::LeftButton, {});
    QApplication::sendEvent(&frame(), &drop);
    EXPECT_EQ(rows(), 10U);
}

TEST_F(WindowTest, RemembersRecentFiles)
{
    const QString copy = path("Sand & Sea.mid");
    ASSERT_TRUE(QFile::copy(song, copy));
    frame().openFile(song);
    frame().openFile(copy);
    frame().openFile(writeFile("bad.mid", "x"));
    startProgram({});

    QMenu& menu = frame().menus().recent();
    Q_EMIT menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_TRUE(menu.actions()[0]->text().endsWith("Sand && Sea.mid"));
    menu.actions()[1]->trigger();
    EXPECT_EQ(rows(), 10U);

    Q_EMIT menu.aboutToShow(); // the example stands first now
    QFile::remove(copy);
    boxes.clear();
    menu.actions()[1]->trigger();
    EXPECT_EQ(boxes.size(), 1);
    EXPECT_EQ(rows(), 10U); // no song changes
    EXPECT_EQ(program->app().GetRecentFiles().paths().size(), 1U);
}

TEST(OpenFilters, NameEveryKindInBothCases)
{
    const QStringList filters = openFilters(text(TextId::openFilter));
    ASSERT_EQ(filters.size(), 4);
    EXPECT_EQ(filters[0], "Tessaro & SMF & ZP File (*.TQM *.tqm *.MID *.mid)");
    EXPECT_EQ(filters[3], "All Files (*)");
}

TEST_F(WindowTest, AnotherSongStopsTheOneThatPlays)
{
    frame().openFile(song);
    for (const bool open : {true, false}) {
        frame().actions().play.trigger();
        advance(500);
        ASSERT_TRUE(program->panel().GetPlayBtn());
        open ? static_cast<void>(frame().openFile(song)) : frame().actions().newSong.trigger();
        EXPECT_FALSE(program->panel().GetPlayBtn());
        EXPECT_FALSE(frame().actions().play.isChecked());
        EXPECT_EQ(program->panel().GetLocation(), 0U);
        EXPECT_EQ(frame().transportBar().location(), "1:01:000");
    }
}

// Transport

TEST_F(WindowTest, SpacePlaysAndStopsWhereverTheFocusIs)
{
    frame().openFile(song);
    QList<QWidget*> places{&frame(), &list()};
    for (ToolButton* button : buttons()) places << button;
    ASSERT_GE(places.size(), 7);
    for (QWidget* place : places) {
        place->setFocus();
        QTest::keyClick(place, Qt::Key_Space);
        EXPECT_TRUE(program->panel().GetPlayBtn()) << place->accessibleName().toStdString();
        EXPECT_TRUE(frame().actions().play.isChecked());
        QTest::keyClick(place, Qt::Key_Space);
        EXPECT_FALSE(program->panel().GetPlayBtn());
        EXPECT_FALSE(frame().actions().play.isChecked());
    }
    EXPECT_FALSE(frame().actions().loop.isChecked()); // the focused buttons themselves did nothing
    EXPECT_FALSE(frame().actions().metronome.isChecked());
}

TEST_F(WindowTest, ShowsWhereTheSongIs)
{
    frame().openFile(song);
    EXPECT_EQ(frame().transportBar().location(), "1:01:000");
    QTest::keyClick(&frame(), Qt::Key_Space);
    advance(3000);
    const std::uint32_t reached = program->panel().GetLocation();
    EXPECT_GT(reached, 1920U);
    EXPECT_GT(std::accumulate(midi.noteOns.begin(), midi.noteOns.end(), 0), 0);
    QTest::keyClick(&frame(), Qt::Key_Period);
    EXPECT_FALSE(program->panel().GetPlayBtn());
    QTest::keyClick(&list(), Qt::Key_Home);
    EXPECT_EQ(frame().transportBar().location(), "1:01:000");
    EXPECT_EQ(program->panel().GetLocation(), 0U);
}

TEST_F(WindowTest, TheSongEndReleasesThePlayButton)
{
    frame().openFile(song);
    program->panel().SetLocation(static_cast<long>(editor().GetTimeEnd()));
    frame().actions().play.trigger();
    ASSERT_TRUE(program->panel().GetPlayBtn());
    for (int second = 0; second < 20 && program->panel().GetPlayBtn(); ++second) advance(1000);
    EXPECT_FALSE(program->panel().GetPlayBtn());
    EXPECT_FALSE(frame().actions().play.isChecked());
}

TEST_F(WindowTest, AClickInTheRulerLocatesAndSelectedBlocksLoop)
{
    frame().openFile(song);
    const auto place = [&](std::uint32_t measure, int offset) {
        return QPoint(blks().geometry().windowX(editor().MeasToTime({measure, 0, 0})) + offset, 10);
    };
    QTest::mouseClick(blks().viewport(), Qt::LeftButton, {}, place(8, 3));
    EXPECT_EQ(program->panel().GetLocation(), editor().MeasToTime({8, 0, 0}));

    const POSITION blk = editor().GetHeadBlkPos(2);
    EXPECT_TRUE(frame().trkAddSel(editor().GetTrkPos(2), blk));
    frame().actions().loopTrack.trigger();
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    EXPECT_TRUE(program->panel().GetLoop(start, end));
    EXPECT_EQ(start, editor().GetBlkTimeTop(editor().GetTrkPos(2), blk));
    EXPECT_EQ(end, editor().GetBlkTimeEnd(editor().GetTrkPos(2), blk));
    EXPECT_TRUE(frame().actions().loop.isChecked());
    POSITION at = frame().trkGetHeadSel();
    const SelItem* item = nullptr;
    EXPECT_TRUE(frame().trkGetNextSel(at, &item) && item->blk == blk);
    EXPECT_EQ(frame().trkGetHeadSelChd(), nullptr);
}

// Tracks

TEST_F(WindowTest, MuteAndSoloActWhileTheSongPlays)
{
    frame().openFile(song);
    program->panel().SetLocation(static_cast<long>(editor().MeasToTime({20, 0, 0})));
    frame().actions().play.trigger();
    const auto notesIn = [&](int milliseconds) {
        advance(100); // what was due before the click
        midi.noteOns.fill(0);
        advance(milliseconds);
        return midi.noteOns;
    };
    const auto all = notesIn(4000);
    ASSERT_GT(all[0], 0);
    ASSERT_GT(all[1], 0);

    clickCell(0, TrackColumn::mute);
    EXPECT_TRUE(editor().song().trk(1)->GetMute());
    EXPECT_FALSE(table().rows()[0].sounding);
    const auto muted = notesIn(4000);
    EXPECT_EQ(muted[0], 0);
    EXPECT_GT(muted[1], 0);

    clickCell(0, TrackColumn::solo); // sounds though it is muted, and alone
    const auto soloed = notesIn(4000);
    EXPECT_GT(soloed[0], 0);
    EXPECT_EQ(soloed[1], 0);
    EXPECT_TRUE(program->panel().GetPlayBtn());

    clickCell(0, TrackColumn::solo);
    clickCell(0, TrackColumn::mute);
    const auto again = notesIn(4000);
    EXPECT_GT(again[0], 0);
    EXPECT_GT(again[1], 0);
    EXPECT_FALSE(program->document().IsModified());
}

TEST_F(WindowTest, LightsFollowTheNotesOfSoundingTracks)
{
    frame().openFile(song);
    clickCell(1, TrackColumn::mute);
    program->panel().SetLocation(static_cast<long>(editor().MeasToTime({20, 0, 0})));
    frame().actions().play.trigger();
    int brightest[2]{};
    for (int step = 0; step < 100; ++step) {
        advance(33);
        for (const int row : {0, 1})
            brightest[row] = std::max(brightest[row], table().lightLevel(table().index(row, 0)));
    }
    EXPECT_GT(brightest[0], 0);
    EXPECT_EQ(brightest[1], 0); // muted
    frame().actions().stop.trigger();
    EXPECT_EQ(table().lightLevel(table().index(0, 0)), 0);
}

TEST_F(WindowTest, KeysOfTheListSwitchTheCurrentTrack)
{
    frame().openFile(song);
    CTrkPramView& list = this->list();
    list.setFocus();
    list.setCurrentIndex(table().index(2, static_cast<int>(TrackColumn::name)));
    QTest::keyClick(&list, Qt::Key_M);
    EXPECT_TRUE(editor().song().trk(3)->GetMute());
    QTest::keyClick(&list, Qt::Key_S);
    EXPECT_TRUE(editor().song().trk(3)->GetSolo());
    const QModelIndex cell = table().index(2, static_cast<int>(TrackColumn::mute));
    EXPECT_EQ(cell.data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_FALSE(cell.data(Qt::AccessibleTextRole).toString().isEmpty());
}

// The window

TEST_F(WindowTest, EveryControlHasANameInBothLanguages)
{
    frame().openFile(song);
    for (const Language language : {Language::english, Language::japanese}) {
        for (QAction* action : frame().actions().language.actions())
            if (action->data().toInt() == static_cast<int>(language)) action->trigger();
        for (const ToolButton* button : buttons()) {
            EXPECT_FALSE(button->accessibleName().isEmpty());
            EXPECT_FALSE(button->accessibleName().contains('&'));
            EXPECT_TRUE(button->toolTip().contains('(')) << "names its key";
        }
        EXPECT_FALSE(list().accessibleName().isEmpty());
    }
    EXPECT_TRUE(frame().menuBar()->actions()[0]->text().startsWith(QStringLiteral("ファイル")));
    startProgram({});
    EXPECT_EQ(frame().actions().language.checkedAction()->data().toInt(), static_cast<int>(Language::japanese));
}

TEST_F(WindowTest, LongWorkKeepsHandsOffTheSong)
{
    frame().openFile(song);
    StatusLine& status = frame().statusLine();
    status.begin();
    status.pos(40);
    EXPECT_FALSE(frame().openFile(song));
    frame().actions().newSong.trigger();
    EXPECT_FALSE(frame().close());
    EXPECT_EQ(rows(), 10U);
    status.end();
    frame().actions().newSong.trigger();
    EXPECT_EQ(rows(), 0U);
}

TEST_F(WindowTest, KeepsItsPlace)
{
    frame().setGeometry(40, 50, 800, 500);
    frame().close();
    startProgram({});
    EXPECT_EQ(frame().geometry(), QRect(40, 50, 800, 500));
    store->setInt("Window Placement", "DeskTop Size X", 1); // another screen
    store->flush();
    startProgram({});
    EXPECT_NE(frame().geometry(), QRect(40, 50, 800, 500));
}

TEST_F(WindowTest, WritesAPicture)
{
    frame().openFile(song);
    ASSERT_TRUE(writeScreenshot(*program, clock, path("window.png")));
    EXPECT_EQ(QImage(path("window.png")).size(), QSize(1280, 800));
    EXPECT_TRUE(program->panel().GetPlayBtn());
}

} // namespace
} // namespace tessaro
