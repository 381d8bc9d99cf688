// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/save_dialog.h"
#include "window_fixture.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QUrl>

namespace tessaro {
namespace {

QLineEdit& nameOf(SaveDialog& dialog) { return *dialog.findChild<QLineEdit*>("fileNameEdit"); }

void pressEnter(QWidget& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }

class FilesTest : public WindowTest {
protected:
    CTR9Doc& document() { return program->document(); }
    void modify() { editor().SetTrkTranspose(1, 3); }
};

TEST_F(FilesTest, RowsOfTheSaveDialogStandForKindsAndExtensions)
{
    const std::uint8_t kinds[] = {4, 5, 1, 2, 3, 6};
    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ(kindOfRow(row), kinds[row]);
        EXPECT_EQ(rowOfKind(kinds[row]), row);
        const QString extension = row < 2 ? "TQM" : "MID";
        EXPECT_EQ(withExtensionOfRow("my.song.xyz", row), "my.song." + extension);
        EXPECT_EQ(withExtensionOfRow("song", row), "song." + extension);
        EXPECT_EQ(withExtensionOfRow("/a.b/song", row), "/a.b/song." + extension);
        EXPECT_EQ(withExtensionOfRow("", row), "");
    }
    EXPECT_EQ(rowOfKind(0), 0);

    const UiText text(strings);
    SaveDialog dialog({path("old.mid").toStdString(), 2}, {}, text, nullptr);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(dialog.directory().path(), folder.path());
    EXPECT_EQ(nameOf(dialog).text(), "old.mid"); // its own until another row is chosen
    EXPECT_EQ(dialog.nameFilters().size(), 6);
    auto& rows = *dialog.findChild<QComboBox*>("fileTypeCombo");
    for (const int row : {4, 1, 0, 5}) {
        while (rows.currentIndex() != row)
            QTest::keyClick(&rows, rows.currentIndex() < row ? Qt::Key_Down : Qt::Key_Up);
        EXPECT_EQ(nameOf(dialog).text(), row < 2 ? "old.TQM" : "old.MID");
        EXPECT_EQ(dialog.choice().kind, kinds[row]);
    }
    nameOf(dialog).setText("bare");
    EXPECT_EQ(dialog.choice().path, path("bare.MID").toStdString());
    while (rows.currentIndex() > 0) QTest::keyClick(&rows, Qt::Key_Up);
    EXPECT_EQ(nameOf(dialog).text(), "bare.TQM");
}

TEST_F(FilesTest, SavesAsWhatTheDialogSays)
{
    frame().openFile(song);
    modify();
    EXPECT_TRUE(frame().isWindowModified());
    onDialog<SaveDialog>([&](SaveDialog& dialog) {
        EXPECT_EQ(nameOf(dialog).text(), "harbour-lights.mid");
        EXPECT_EQ(dialog.row(), 3);
        dialog.setDirectory(folder.path());
        auto& rows = *dialog.findChild<QComboBox*>("fileTypeCombo");
        while (dialog.row() > 0) QTest::keyClick(&rows, Qt::Key_Up);
        nameOf(dialog).setFocus();
        nameOf(dialog).selectAll();
        QTest::keyClicks(&nameOf(dialog), "kept");
        pressEnter(dialog);
    });
    QTest::keyClick(&frame(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);

    EXPECT_TRUE(boxes.isEmpty()) << boxes.join('\n').toStdString();
    EXPECT_TRUE(QFile::exists(path("kept.TQM")));
    EXPECT_EQ(document().GetFileKind(), 4);
    EXPECT_FALSE(frame().isWindowModified());
    EXPECT_TRUE(frame().windowTitle().startsWith("kept.TQM"));
    EXPECT_TRUE(frame().statusLine().news().contains("kept.TQM"));
    EXPECT_EQ(program->app().GetRecentFiles().paths().front(), path("kept.TQM").toStdString());

    editor().SetTrkTranspose(1, 7);
    frame().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame()));
    QTest::keyClick(&frame(), Qt::Key_S, Qt::ControlModifier); // no question for a song with a file
    EXPECT_FALSE(frame().isWindowModified());
    EXPECT_TRUE(frame().openFile(path("kept.TQM")));
    EXPECT_EQ(editor().song().trk(1)->GetTrans(), 7);
    EXPECT_EQ(rows(), 10U);
}

TEST_F(FilesTest, AsksBeforeAFileIsReplaced)
{
    const QString other = writeFile("other.TQM", "precious");
    frame().openFile(song);
    onDialog<SaveDialog>([&](SaveDialog& dialog) {
        dialog.setDirectory(folder.path());
        dialog.selectNameFilter(dialog.nameFilters().first());
        Q_EMIT dialog.filterSelected(dialog.nameFilters().first());
        nameOf(dialog).setText("other");
        onDialog<QMessageBox>([&](QMessageBox& box) {
            EXPECT_TRUE(box.text().contains("other.TQM"));
            box.button(QMessageBox::No)->click();
        });
        pressEnter(dialog);
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    frame().actions().saveAs.trigger();
    QFile file(other);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "precious");
    EXPECT_TRUE(frame().windowTitle().startsWith("harbour-lights.mid"));
}

TEST_F(FilesTest, AFailedSaveSaysWhyAndKeepsTheSong)
{
    frame().openFile(writeFile("song.mid", [] {
        QFile file(song);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }()));
    modify();
    boxes.clear();
    EXPECT_FALSE(document().Save(path("no such folder/song.mid").toStdString(), 2));
    EXPECT_FALSE(boxes.isEmpty());
    EXPECT_TRUE(boxes.join('\n').contains(utf8Text(strings(TextId::saveFailed))));
    EXPECT_TRUE(frame().isWindowModified());
    EXPECT_FALSE(frame().statusLine().busy());
    EXPECT_TRUE(frame().windowTitle().startsWith("song.mid"));
}

TEST_F(FilesTest, EveryWayOutAsksForAModifiedSong)
{
    const QString copy = path("copy.mid");
    ASSERT_TRUE(QFile::copy(song, copy));
    frame().openFile(copy);
    frame().openFile(song);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(copy)});
    const std::function<void()> ways[] = {
        [&] { frame().actions().newSong.trigger(); },
        [&] { frame().openFile(copy); },
        [&] {
            Q_EMIT frame().menus().recent().aboutToShow();
            frame().menus().recent().actions()[1]->trigger();
        },
        [&] {
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(&frame(), &enter);
            QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(&frame(), &drop);
        },
        [&] { frame().actions().quit.trigger(); },
    };
    for (const auto& goAway : ways) {
        SCOPED_TRACE(&goAway - ways);
        ASSERT_TRUE(frame().openFile(song));
        boxes.clear();
        modify();
        goAway();
        ASSERT_EQ(boxes.size(), 1);
        EXPECT_TRUE(boxes[0].contains("harbour-lights.mid"));
        EXPECT_TRUE(frame().isVisible());
        EXPECT_TRUE(frame().isWindowModified());
        EXPECT_EQ(editor().song().trk(1)->GetTrans(), 3); // cancelled: the song stays
        saveAnswer = SaveAnswer::discard;
        goAway();
        EXPECT_FALSE(frame().isWindowModified() && frame().isVisible());
        frame().show();
        frame().actions().newSong.trigger();
        saveAnswer = SaveAnswer::cancel;
    }
    boxes.clear();
    ASSERT_TRUE(frame().openFile(song));
    EXPECT_TRUE(frame().close()); // as it was opened: no question
    EXPECT_TRUE(boxes.isEmpty());
}

TEST_F(FilesTest, TheQuestionIsAnsweredByKeys)
{
    const Icons icons{QStringLiteral(TESSARO_SOURCE_DIR "/data/icons")};
    WindowUser user(program->text(), icons);
    const std::pair<Qt::Key, SaveAnswer> keys[] = {
        {Qt::Key_Return, SaveAnswer::save}, {Qt::Key_N, SaveAnswer::discard}, {Qt::Key_Escape, SaveAnswer::cancel}};
    for (const auto& [key, answer] : keys) {
        onDialog<QMessageBox>([key = key](QMessageBox& box) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
            QTest::keyClick(&box, key, key == Qt::Key_N ? Qt::AltModifier : Qt::NoModifier);
        });
        EXPECT_EQ(user.saveBox("Save?"), answer);
    }
}

// Undo

TEST_F(FilesTest, UndoAndRedoNameTheirStep)
{
    QAction& undo = frame().actions().undo;
    QAction& redo = frame().actions().redo;
    frame().openFile(song);
    EXPECT_FALSE(undo.isEnabled());
    EXPECT_EQ(undo.text(), "&Undo\tCtrl+Z");
    EXPECT_EQ(redo.text(), "&Redo\tCtrl+Y");

    deleteFirstBlock(2);
    deleteFirstBlock(3);
    EXPECT_EQ(undo.text(), "&Undo Delete block\tCtrl+Z"); // at once
    EXPECT_EQ(undo.iconText(), "Undo Delete block");
    EXPECT_TRUE(undo.isEnabled());
    EXPECT_FALSE(redo.isEnabled());
    EXPECT_TRUE(frame().isWindowModified());
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 8; }));

    QTest::keyClick(&frame(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(redo.text(), "&Redo Delete block\tCtrl+Y");
    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(undo.isEnabled());
    EXPECT_FALSE(frame().isWindowModified());
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 10; }));

    QTest::keyClick(&frame(), Qt::Key_Y, Qt::ControlModifier);
    QTest::keyClick(&frame(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(redo.isEnabled());
    EXPECT_TRUE(frame().isWindowModified());
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 8; }));
    for (const ToolButton* button : buttons())
        if (button->accessibleName().startsWith("Undo D")) {
            EXPECT_EQ(button->toolTip(), "Undo Delete block (Ctrl+Z)");
        }

    for (QAction* language : frame().actions().language.actions())
        if (language->data().toInt() == static_cast<int>(Language::japanese)) language->trigger();
    EXPECT_EQ(undo.text(), QStringLiteral("元に戻す(&U) Delete block\tCtrl+Z"));
    EXPECT_TRUE(document().Save(path("saved.TQM").toStdString(), 4)); // undo is gone
    EXPECT_FALSE(undo.isEnabled());
    EXPECT_EQ(undo.text(), QStringLiteral("元に戻す(&U)\tCtrl+Z"));
}

} // namespace
} // namespace tessaro
