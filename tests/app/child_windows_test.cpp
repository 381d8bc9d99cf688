// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "views/commands/key_field.h"
#include "views/commands/keys_dialog.h"
#include "views/frame/edit_tool_bar.h"
#include "views/frame/editor_windows.h"
#include "views/history/history_panel.h"
#include "views/list/list_frame.h"
#include "views/list/list_view.h"
#include "views/roll/roll_frame.h"
#include "views/roll/roll_view.h"
#include "views/tracks/trk_blk_view.h"
#include "window_fixture.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

#include <optional>
#include <set>

namespace tessaro {
namespace {

class ChildWindowsTest : public WindowTest {
protected:
    EditorWindows& windows() { return frame().windows(); }
    FrameActions& actions() { return frame().actions(); }
    ChildDock& dock(ChildFrame& window) { return dynamic_cast<ChildDock&>(*window.parentWidget()); }
    HistoryPanel& history() { return frame().windowCommands().history(); }

    /// Kind and track of each window.
    std::vector<std::pair<WindowKind, int>> shown()
    {
        std::vector<std::pair<WindowKind, int>> all;
        for (const ChildFrame* window : windows().windows()) all.emplace_back(window->kind(), window->track());
        return all;
    }
    const Command& command(const char* id)
    {
        return *std::ranges::find(frame().keys().map().commands().all(), id, &Command::id);
    }
    void clickStep(int row)
    {
        QTest::mouseClick(history().viewport(), Qt::LeftButton, {},
                          history().visualRect(history().model()->index(row, 0)).center());
    }
};

TEST_F(ChildWindowsTest, ADoubleClickOnABlockShowsItsNotes)
{
    constexpr std::uint32_t bar = 1920;
    const POSITION trk = editor().GetTrkPos(2);
    for (const std::uint32_t top : {0U, 7 * bar}) {
        const UndoScope step(editor(), "block");
        ASSERT_TRUE(editor().BlkNew(trk, top, top + 2 * bar));
    }
    frame().trackFrame().run(ViewCommand::zoomToSong);
    for (const std::uint32_t top : {7 * bar, 0U, 7 * bar}) { // in a new window, then in the same one
        const TrkGeometry& geometry = blks().geometry();
        const QPoint place = geometry.blkRect(2, top, top + 2 * bar).center() - geometry.toSong(QPoint());
        ASSERT_TRUE(blks().viewport()->rect().contains(place));
        QTest::mouseDClick(blks().viewport(), Qt::LeftButton, {}, place);
        QApplication::processEvents();
        ASSERT_EQ(shown().size(), 2U);
        EXPECT_EQ(dynamic_cast<RollFrame&>(*windows().active()).view().scale().start(), top);
    }
}

TEST_F(ChildWindowsTest, KeysOpenThemAndTheOneWithTheFocusGetsCommands)
{
    ASSERT_TRUE(frame().openFile(song));
    frame().trackFrame().setCurrentTrack(3);
    for (const Qt::Key key : {Qt::Key_F5, Qt::Key_F6, Qt::Key_F7, Qt::Key_F8}) {
        windows().activate(frame().trackFrame());
        QTest::keyClick(&frame(), key);
    }
    EXPECT_EQ(shown(), (std::vector<std::pair<WindowKind, int>>{{WindowKind::track, -1},
                                                                {WindowKind::piano, 3},
                                                                {WindowKind::drum, 3},
                                                                {WindowKind::eventList, 3},
                                                                {WindowKind::masterTrack, 0}}));
    EXPECT_EQ(windows().active()->kind(), WindowKind::masterTrack);
    EXPECT_EQ(frame().viewActions().active(), windows().active());

    ChildFrame* piano = windows().open(WindowKind::piano, 3); // shown already
    EXPECT_EQ(shown().size(), 5U);
    windows().open(WindowKind::piano, 4); // a further one
    EXPECT_EQ(shown().size(), 6U);
    windows().activate(*piano);
    EXPECT_TRUE(piano->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_FALSE(piano->selectedEvnts().empty());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(windows().active()->kind(), WindowKind::drum);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(shown().size(), 5U);
    EXPECT_NE(windows().active()->kind(), WindowKind::drum);
    EXPECT_EQ(frame().viewActions().active(), windows().active());
}

TEST_F(ChildWindowsTest, AnotherSongClosesThemAndKeepsTheirZoom)
{
    ASSERT_TRUE(frame().openFile(song));
    const std::function<void()> leaves[] = {[this] { actions().newSong.trigger(); },
                                            [this] { ASSERT_TRUE(frame().openFile(song)); },
                                            [this] { EXPECT_FALSE(frame().openFile(writeFile("no.MID", "x"))); }};
    std::optional<double> zoom;
    for (const auto& leave : leaves) {
        for (const WindowKind kind : {WindowKind::drum, WindowKind::eventList, WindowKind::masterTrack})
            windows().open(kind, 1);
        ChildFrame* piano = windows().open(WindowKind::piano, 1);
        const auto zoomNow = [&] { return dynamic_cast<RollFrame&>(*piano).view().scale().zoom(); };
        EXPECT_NEAR(zoomNow(), zoom.value_or(zoomNow()), 0.01);
        actions().floating.trigger();
        piano->run(ViewCommand::zoomIn);
        piano->run(ViewCommand::selectAll);
        zoom = zoomNow();
        windows().activate(*windows().windows()[1]);
        actions().maximise.trigger();
        program->document().SetModifiedFlag(false);
        leave();
        EXPECT_EQ(shown().size(), 1U);
        EXPECT_EQ(frame().viewActions().active(), &frame().trackFrame());
        EXPECT_FALSE(actions().maximise.isChecked());
        EXPECT_TRUE(frame().trackFrame().isVisible());
        EXPECT_TRUE(frame().trackFrame().isAncestorOf(frame().focusWidget()));
    }
}

TEST_F(ChildWindowsTest, TheyStandAsTabsSideBySideAloneOrApart)
{
    std::vector<ChildFrame*> opened;
    for (const int track : {1, 2, 3, 4}) opened.push_back(windows().open(WindowKind::eventList, track));
    QCoreApplication::processEvents();
    EXPECT_EQ(windows().tabifiedDockWidgets(&dock(*opened[0])).size(), 3);

    actions().tile.trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(windows().tabifiedDockWidgets(&dock(*opened[0])).isEmpty());
    for (ChildFrame* each : opened)
        for (ChildFrame* other : opened)
            EXPECT_TRUE(each == other || !dock(*each).geometry().intersects(dock(*other).geometry()));

    actions().maximise.trigger();
    EXPECT_TRUE(actions().maximise.isChecked());
    EXPECT_TRUE(opened[3]->isVisible());
    EXPECT_FALSE(opened[0]->isVisible());
    EXPECT_FALSE(frame().trackFrame().isVisible());
    actions().maximise.trigger();
    EXPECT_TRUE(opened[0]->isVisible());
    EXPECT_TRUE(frame().trackFrame().isVisible());

    actions().tabs.trigger();
    EXPECT_EQ(windows().tabifiedDockWidgets(&dock(*opened[0])).size(), 3);
    actions().floating.trigger();
    EXPECT_TRUE(dock(*opened[3]).isFloating());
    EXPECT_EQ(windows().active(), opened[3]);
    actions().floating.trigger();
    EXPECT_FALSE(dock(*opened[3]).isFloating());
}

TEST_F(ChildWindowsTest, TheArrangementComesBack)
{
    frame().setGeometry(20, 20, 1200, 760);
    windows().open(WindowKind::piano, 2);
    ChildFrame* list = windows().open(WindowKind::eventList, 5);
    actions().tile.trigger();
    actions().history.trigger();
    actions().editTools.trigger();
    windows().activate(*list);
    actions().floating.trigger();
    dock(*list).setGeometry(100, 100, 400, 300);
    static_cast<CListFrm*>(list)->list().setColumnWidth(1, 150);
    const auto before = shown();
    frame().close();
    startProgram({CommandLine::Shell::fileOpen, song.toStdString()});
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(windows().active()->kind(), WindowKind::eventList);
    EXPECT_TRUE(dock(*windows().windows()[2]).isFloating());
    EXPECT_EQ(static_cast<CListFrm*>(windows().windows()[2])->list().columnWidth(1), 150);
    EXPECT_FALSE(dock(*windows().windows()[1]).isFloating());
    EXPECT_TRUE(windows().windows()[1]->isVisible());
    EXPECT_TRUE(history().isVisible());
    EXPECT_TRUE(actions().history.isChecked());
    EXPECT_TRUE(frame().windowCommands().toolBar().isHidden());

    windows().activate(*windows().windows()[1]);
    actions().maximise.trigger();
    for (int starts = 0; starts < 2; ++starts) {
        frame().close();
        startProgram({});
        EXPECT_EQ(windows().active()->kind(), WindowKind::piano);
        EXPECT_TRUE(actions().maximise.isChecked());
        EXPECT_FALSE(frame().trackFrame().isVisible());
        EXPECT_FALSE(history().isVisible());
    }
    actions().maximise.trigger();
    EXPECT_TRUE(frame().trackFrame().isVisible());
    EXPECT_TRUE(history().isVisible());

    store->setInt("Window Placement", "DeskTop Size X", 1); // another screen
    store->setString("Window Placement", "Children", "1 6000:0:3 7:1:2 6000:1:400 5000:1:1");
    store->flush();
    startProgram({});
    EXPECT_EQ(shown().size(), 2U); // what makes no sense is left out
    EXPECT_EQ(shown()[1], (std::pair{WindowKind::piano, 100}));

    actions().openLastWindows.trigger();
    frame().close();
    startProgram({});
    EXPECT_EQ(shown().size(), 1U);
    EXPECT_FALSE(actions().openLastWindows.isChecked());
}

TEST_F(ChildWindowsTest, TheVeryFirstStartShowsTheNotesOfTheFirstTrack)
{
    store->remove("Window Placement", "Children");
    store->flush();
    startProgram({});
    EXPECT_EQ(shown(), (std::vector<std::pair<WindowKind, int>>{{WindowKind::track, -1}, {WindowKind::piano, 1}}));
    EXPECT_EQ(windows().active(), &frame().trackFrame());
    EXPECT_GT(windows().windows()[1]->height(), frame().height() / 3);
}

TEST_F(ChildWindowsTest, OnlyThoseInSightFollowTheSong)
{
    ASSERT_TRUE(frame().openFile(song));
    const auto positionIn = [](ChildFrame* window) { return dynamic_cast<RollFrame&>(*window).view().position(); };
    ChildFrame* behind = windows().open(WindowKind::piano, 1);
    ChildFrame* before = windows().open(WindowKind::piano, 2);
    QCoreApplication::processEvents();
    actions().play.trigger();
    advance(1000);
    EXPECT_GT(positionIn(before), 0U);
    EXPECT_EQ(positionIn(behind), 0U);
    windows().activate(*behind);
    EXPECT_EQ(positionIn(behind), positionIn(before));
}

TEST_F(ChildWindowsTest, AClickInTheHistoryGoesThere)
{
    ASSERT_TRUE(frame().openFile(song));
    actions().history.trigger();
    for (const int track : {1, 2, 3}) deleteFirstBlock(track);
    const auto blocks = [&] {
        int count = 0;
        for (const int track : {1, 2, 3}) count += editor().GetHeadBlkPos(track) != nullptr;
        return count;
    };
    ASSERT_EQ(history().model()->rowCount(), 4);
    EXPECT_EQ(history().currentIndex().row(), 3);
    clickStep(1);
    EXPECT_EQ(editor().GetUndoRedoIndex(), 0);
    clickStep(0);
    EXPECT_EQ(editor().GetUndoRedoIndex(), -1);
    EXPECT_EQ(blocks(), 3);
    history().setCurrentIndex(history().model()->index(2, 0));
    QTest::keyClick(&history(), Qt::Key_Return);
    EXPECT_EQ(editor().GetUndoRedoIndex(), 1);
    actions().redo.trigger();
    EXPECT_EQ(history().currentIndex().row(), 3);

    history().isLocked = [] { return true; }; // a take runs
    clickStep(0);
    EXPECT_EQ(editor().GetUndoRedoIndex(), 2);
}

TEST_F(ChildWindowsTest, EveryCommandHasAKeyAndNoKeyMeansTwoThings)
{
    std::set<std::string> ids;
    std::map<QKeySequence, std::string> owners;
    for (const Command& command : frame().keys().map().commands().all()) {
        for (const QKeySequence& key : KeyMap::keys(command)) {
            EXPECT_EQ(owners.count(key), 0U) << command.id << " and " << owners[key];
            owners[key] = command.id;
        }
        const bool isChoice = command.action->actionGroup();
        EXPECT_TRUE(isChoice || !command.usualKeys.isEmpty()) << command.id;
        EXPECT_TRUE(ids.insert(command.id).second) << command.id;
        for (const Language language : {Language::english, Language::japanese})
            EXPECT_FALSE(tessaro::text(command.name, language).empty());
    }
}

TEST_F(ChildWindowsTest, AChangedKeyWorksAtOnceAndAtTheNextStart)
{
    QTest::keyClick(&frame(), Qt::Key_F1);
    KeysDialog& dialog = frame().keys().show();
    dialog.choose(command("window-list"));
    QTest::keyClick(&dialog.newKey(), Qt::Key_F12);
    QTest::mouseClick(&dialog.replaceButton(), Qt::LeftButton);
    dialog.choose(command("undo"));
    QTest::keyClick(&dialog.newKey(), Qt::Key_Backspace, Qt::AltModifier);
    QTest::mouseClick(&dialog.replaceButton(), Qt::LeftButton);
    EXPECT_TRUE(actions().undo.text().endsWith("\tAlt+Backspace"));
    dialog.close();
    for (int starts = 0; starts < 2; ++starts) {
        QTest::keyClick(&frame(), Qt::Key_F7);
        EXPECT_EQ(shown().size(), 1U);
        QTest::keyClick(&frame(), Qt::Key_F12);
        EXPECT_EQ(shown().size(), 2U);
        store->flush();
        startProgram({});
    }
}

TEST_F(ChildWindowsTest, ExportsWithoutTouchingTheSong)
{
    ASSERT_TRUE(frame().openFile(song));
    deleteFirstBlock(1);
    onDialog<QFileDialog>([&](QFileDialog& dialog) {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path("copy.MID"));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    actions().exportMidi.trigger();
    EXPECT_EQ(frame().statusLine().news(), "Exported as copy.MID.");
    EXPECT_TRUE(program->document().IsModified());
    EXPECT_EQ(program->document().GetPathName(), song.toStdString());
    EXPECT_EQ(editor().GetUndoRedoCount(), 1);
    program->document().SetModifiedFlag(false);
    ASSERT_TRUE(frame().openFile(path("copy.MID")));
    EXPECT_EQ(program->document().GetFileKind(), 2);
    EXPECT_EQ(rows(), 9U);
}

} // namespace
} // namespace tessaro
