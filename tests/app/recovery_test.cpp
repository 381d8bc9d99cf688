// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/recovery/recovery_panel.h"
#include "window_fixture.h"

#include <QDir>
#include <QPushButton>
#include <QTreeWidget>

#include <filesystem>

namespace tessaro {
namespace {

class RecoveryTest : public WindowTest {
protected:
    void keepCopies()
    {
        for (int minute = 0; minute < 2; ++minute) {
            program->document().KeepCopy();
            advance(60'000);
        }
    }
    /// Works on a song for a while, and ends without saving.
    void leaveUnsaved(const QString& file, int transpose)
    {
        saveAnswer = SaveAnswer::discard;
        if (!file.isEmpty()) frame().openFile(file);
        editor().SetTrkTranspose(1, transpose);
        keepCopies();
        saveAnswer = SaveAnswer::cancel;
        startProgram({});
    }

    QStringList copies() { return QDir(path("recovery")).entryList({"*.tqm"}, QDir::Files); }
    RecoveryPanel& panel() { return frame().recoveryPanel(); }
    int offered() { return panel().isVisible() ? panel().list().topLevelItemCount() : 0; }
};

TEST_F(RecoveryTest, NothingIsOfferedWithoutNeed)
{
    EXPECT_EQ(offered(), 0);
    frame().openFile(song);
    keepCopies();
    startProgram({});
    EXPECT_EQ(offered(), 0);
}

TEST_F(RecoveryTest, AnUnsavedSongIsOpenedAgain)
{
    leaveUnsaved(song, 5);
    ASSERT_EQ(offered(), 1);
    const QTreeWidgetItem& line = *panel().list().topLevelItem(0);
    EXPECT_EQ(line.text(0), "harbour-lights.mid");
    EXPECT_TRUE(line.text(2).contains("1:57"));
    EXPECT_TRUE(panel().list().hasFocus());
    EXPECT_FALSE(panel().list().accessibleName().isEmpty());

    QTest::keyClick(&panel().list(), Qt::Key_Return);
    EXPECT_EQ(offered(), 0);
    EXPECT_EQ(rows(), 10U);
    EXPECT_EQ(editor().song().trk(1)->GetTrans(), 5);
    EXPECT_TRUE(frame().isWindowModified());
    EXPECT_TRUE(frame().windowTitle().startsWith("harbour-lights.mid"));
    ASSERT_EQ(copies().size(), 1); // until the song is saved
    EXPECT_TRUE(program->document().Save(path("saved.TQM").toStdString(), 4));
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(RecoveryTest, ATakeThatWasUnderWayComesBack)
{
    midi.played.names = {"Stage Piano"};
    startProgram({});
    frame().openFile(song);
    clickCell(11, TrackColumn::record);
    QTest::keyClick(&frame(), Qt::Key_R);
    QTest::keyClick(&frame(), Qt::Key_Space);
    for (int note = 0; note < 4; ++note) {
        midi.played.play(0, std::array<std::uint8_t, 3>{0x90, 60, 100});
        advance(200);
        midi.played.play(0, std::array<std::uint8_t, 3>{0x80, 60, 0});
        advance(200);
    }
    ASSERT_EQ(program->panel().recorder().state(), RecState::recording);
    advance(60'000);
    // What is on the disk now is all that a sudden end would leave.
    std::filesystem::copy(path("recovery").toStdString(), path("left").toStdString());
    program.reset();
    std::filesystem::remove_all(path("recovery").toStdString());
    std::filesystem::rename(path("left").toStdString(), path("recovery").toStdString());
    startProgram({});
    ASSERT_EQ(offered(), 1);
    EXPECT_TRUE(panel().list().topLevelItem(0)->text(1).endsWith(utf8Text(strings(TextId::recoveryTake))));
    QTest::keyClick(&panel().list(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 11; }));
    EXPECT_FALSE(editor().song().trk(12)->IsEmpty());
    QTest::keyClick(&frame(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(editor().song().trk(12)->IsEmpty());
}

TEST_F(RecoveryTest, LaterMeansTheNextStart)
{
    leaveUnsaved(song, 5);
    for (int start = 0; start < 2; ++start) {
        ASSERT_EQ(offered(), 1);
        if (start == 0)
            QTest::keyClick(&panel().list(), Qt::Key_Escape);
        else
            panel().laterButton().click();
        EXPECT_EQ(offered(), 0);
        EXPECT_EQ(copies().size(), 1);
        startProgram({});
    }
    EXPECT_EQ(offered(), 1);
}

TEST_F(RecoveryTest, DiscardingIsAskedOnceMore)
{
    leaveUnsaved({}, 5);
    leaveUnsaved(song, 6);
    ASSERT_EQ(offered(), 2);
    QString question;
    bool answer = false;
    program->user().askBox = [&](const QString& line) {
        question = line;
        return answer;
    };
    QTest::keyClick(&panel().list(), Qt::Key_Delete);
    EXPECT_TRUE(question.contains("harbour-lights.mid")); // the newest stands first
    EXPECT_EQ(offered(), 2);
    EXPECT_EQ(copies().size(), 2);

    answer = true;
    QTest::keyClick(&panel().list(), Qt::Key_Down);
    panel().discardButton().setFocus();
    QTest::keyClick(&panel().discardButton(), Qt::Key_Return);
    EXPECT_TRUE(question.contains("Untitled"));
    EXPECT_EQ(offered(), 1);
    EXPECT_EQ(copies().size(), 1);
    EXPECT_EQ(panel().list().topLevelItem(0)->text(0), "harbour-lights.mid");
}

TEST_F(RecoveryTest, ADamagedCopyIsToldAndKept)
{
    leaveUnsaved(song, 5);
    QFile copy(path("recovery/" + copies().constFirst()));
    ASSERT_TRUE(copy.resize(100));
    boxes.clear();
    panel().openButton().click();
    EXPECT_EQ(boxes.size(), 1);
    EXPECT_EQ(offered(), 1);
    EXPECT_EQ(copies().size(), 1);
}

} // namespace
} // namespace tessaro
