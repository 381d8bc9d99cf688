// SPDX-License-Identifier: GPL-3.0-or-later
#include "window_fixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QWheelEvent>

namespace tessaro {
namespace {

class TrackEditingTest : public WindowTest {
protected:
    TrackEditingTest() { frame().openFile(song); }

    const CTrk& trk(int number) { return *editor().song().trk(number); }

    template <class Editor>
    Editor& editorBy(int row, TrackColumn column, Qt::Key key)
    {
        list().setFocus();
        list().setCurrentIndex(cell(row, column));
        QTest::keyClick(&list(), key);
        return opened<Editor>();
    }
    template <class Editor>
    Editor& opened()
    {
        auto* editor = qobject_cast<Editor*>(list().indexWidget(list().currentIndex()));
        if (!editor) throw std::runtime_error("no such editor");
        return *editor;
    }
    void doubleClickCell(int row, TrackColumn column)
    {
        clickCell(row, column);
        const QPoint place = list().visualRect(cell(row, column)).center();
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, place);
    }
    QString name(int row) { return QString::fromStdString(table().rows()[static_cast<std::size_t>(row)].name); }
    bool isEditing() { return list().indexWidget(list().currentIndex()); }

    static void wheel(QWidget& widget, int degrees)
    {
        const QPointF middle = QRectF(widget.rect()).center();
        QWheelEvent event(middle, widget.mapToGlobal(middle), {}, {0, degrees * 8}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    }
};

TEST_F(TrackEditingTest, ANameIsTypedInPlace)
{
    clickCell(0, TrackColumn::name);
    EXPECT_FALSE(isEditing());
    doubleClickCell(0, TrackColumn::name);
    auto& line = opened<QLineEdit>();
    EXPECT_EQ(line.text(), "Flute");
    EXPECT_FALSE(line.accessibleName().isEmpty());
    line.selectAll();
    QTest::keyClicks(&line, "low k. m s l"); // letters, not commands
    EXPECT_FALSE(program->panel().GetPlayBtn());
    EXPECT_FALSE(trk(1).GetMute());
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
    EXPECT_EQ(trk(1).GetName(), "low k. m s l");
    EXPECT_EQ(table().rows()[0].name, "low k. m s l");
    EXPECT_TRUE(frame().isWindowModified());
}

TEST_F(TrackEditingTest, TypedTextGoesBackAsBytesOfItsCodePage)
{
    const std::pair<QString, std::string> names[] = {
        {QStringLiteral("ピアノ"), "\x83\x73\x83\x41\x83\x6d"}, // code page 932
        {QStringLiteral("Ænima"), "\xC3\x86nima"},              // which does not hold this one
        {QString(), ""},
    };
    for (const auto& [name, bytes] : names) {
        auto& line = editorBy<QLineEdit>(0, TrackColumn::name, Qt::Key_F2);
        line.setText(name);
        QTest::keyClick(&line, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
        EXPECT_EQ(trk(1).GetName(), bytes);
    }
    EXPECT_EQ(cell(0, TrackColumn::name).data().toString(), "Track 1");
}

TEST_F(TrackEditingTest, WhatIsNotChangedIsNotWritten)
{
    const std::string latin = "caf\xE9 \xFF"; // comes back as other bytes when typed
    editor().SetTrkName(1, latin);
    program->document().SetModifiedFlag(false);
    editor().HintSoloMute();
    for (const Qt::Key end : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape}) {
        auto& line = editorBy<QLineEdit>(0, TrackColumn::name, Qt::Key_Return);
        if (end == Qt::Key_Escape) line.setText("other");
        QTest::keyClick(&line, end);
        list().finishEditing();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
    }
    EXPECT_EQ(trk(1).GetName(), latin);
    EXPECT_FALSE(program->document().IsModified());
}

TEST_F(TrackEditingTest, TabGoesThroughTheCellsOfARow)
{
    auto& line = editorBy<QLineEdit>(0, TrackColumn::name, Qt::Key_F2);
    line.setText("one");
    QTest::keyClick(&line, Qt::Key_Tab);
    auto& port = opened<QComboBox>();
    EXPECT_EQ(port.currentText(), "1: Test Synth");
    QTest::keyClick(&port, Qt::Key_Tab);
    auto& channel = opened<QSpinBox>();
    QTest::keyClick(&channel, Qt::Key_Up);
    QTest::keyClick(&channel, Qt::Key_Tab);
    auto& transpose = opened<QSpinBox>();
    QTest::keyClick(&transpose, Qt::Key_Down);
    QTest::keyClick(&transpose, Qt::Key_Tab);
    auto& next = opened<QLineEdit>();
    EXPECT_EQ(next.text(), "Piano"); // of the next row
    QTest::keyClick(&next, Qt::Key_Backtab);
    EXPECT_EQ(opened<QSpinBox>().value(), -1);
    QTest::keyClick(&opened<QSpinBox>(), Qt::Key_Escape);
    EXPECT_EQ(trk(1).GetName(), "one");
    EXPECT_EQ(trk(1).GetCh(), 1);
    EXPECT_EQ(trk(1).GetTrans(), -1);
    EXPECT_EQ(cell(0, TrackColumn::transpose).data().toString(), "-1");
}

TEST_F(TrackEditingTest, NumbersStayInTheirRanges)
{
    const auto enter = [&](TrackColumn column, const QString& text) {
        auto& box = editorBy<QSpinBox>(1, column, Qt::Key_F2);
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::qWait(1);
        list().finishEditing();
    };
    enter(TrackColumn::channel, "16");
    EXPECT_EQ(trk(2).GetCh(), 15);
    enter(TrackColumn::channel, "17");
    enter(TrackColumn::channel, "0");
    EXPECT_LE(trk(2).GetCh(), 15);
    enter(TrackColumn::transpose, "-36");
    EXPECT_EQ(trk(2).GetTrans(), -36);
    enter(TrackColumn::transpose, "+12");
    EXPECT_EQ(trk(2).GetTrans(), 12);
    EXPECT_EQ(cell(1, TrackColumn::transpose).data().toString(), "+12");
    auto& box = editorBy<QSpinBox>(1, TrackColumn::transpose, Qt::Key_F2);
    EXPECT_EQ(box.text(), "+12");
    wheel(box, 15);
    EXPECT_EQ(box.value(), 13);
    for (int turn = 0; turn < 60; ++turn) wheel(box, -15);
    EXPECT_EQ(box.value(), -37);       // below the last number it is off
    clickCell(4, TrackColumn::number); // a click elsewhere takes the value
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
    EXPECT_EQ(cell(1, TrackColumn::transpose).data().toString(), "OFF");
}

TEST_F(TrackEditingTest, APortIsChosenFromTheList)
{
    ASSERT_GT(program->app().GetMidiOutPortNum(), 0U);
    editor().SetTrkPort(1, 5); // a port that is not there
    auto& box = editorBy<QComboBox>(0, TrackColumn::port, Qt::Key_F2);
    EXPECT_EQ(box.currentText(), "6: ---");
    QTest::keyClick(&box, Qt::Key_Home);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
    EXPECT_EQ(trk(1).GetPort(), 0);
    EXPECT_EQ(cell(0, TrackColumn::port).data().toString(), "1");

    editor().SetTrkPort(1, 2);
    doubleClickCell(0, TrackColumn::port);
    auto& ports = opened<QComboBox>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ports.view()->isVisible(); }));
    QTest::keyClick(ports.view(), Qt::Key_Home);
    QTest::keyClick(ports.view(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
    EXPECT_EQ(trk(1).GetPort(), 0);
}

TEST_F(TrackEditingTest, SettingsActWhileTheSongPlays)
{
    program->panel().SetLocation(static_cast<long>(editor().MeasToTime({20, 0, 0})));
    frame().actions().play.trigger();
    advance(500);
    auto& box = editorBy<QSpinBox>(0, TrackColumn::channel, Qt::Key_F2);
    box.setValue(16);
    advance(500); // what lights up meanwhile takes nothing away
    EXPECT_EQ(opened<QSpinBox>().value(), 16);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isEditing(); }));
    EXPECT_TRUE(program->panel().GetPlayBtn());
    advance(1000);
    midi.noteOns.fill(0);
    advance(4000);
    EXPECT_EQ(midi.noteOns[0], 0);
    EXPECT_GT(midi.noteOns[15], 0);
}

TEST_F(TrackEditingTest, SavingTakesWhatIsHalfTyped)
{
    auto& line = editorBy<QLineEdit>(0, TrackColumn::name, Qt::Key_F2);
    line.setText("half");
    saveAnswer = SaveAnswer::cancel;
    EXPECT_FALSE(frame().close());
    EXPECT_EQ(trk(1).GetName(), "half");
    EXPECT_TRUE(frame().isWindowModified());
}

TEST_F(TrackEditingTest, TracksMoveByKeyAndComeBackByUndo)
{
    const auto names = [this] { return QStringList{name(0), name(1), name(2)}; };
    list().setFocus();
    list().setCurrentIndex(cell(1, TrackColumn::name));
    QTest::keyClick(&list(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(names(), (QStringList{"Piano", "Flute", "Fingered Bass"}));
    EXPECT_EQ(list().currentIndex().row(), 0) << "the row goes along";
    QTest::keyClick(&list(), Qt::Key_Up, Qt::AltModifier); // no further
    QTest::keyClick(&list(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(names(), (QStringList{"Flute", "Fingered Bass", "Piano"}));
    EXPECT_EQ(editor().GetUndoRedoCount(), 3);
    for (int i = 0; i < 3; ++i) QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return names() == QStringList{"Flute", "Piano", "Fingered Bass"}; }));
    EXPECT_FALSE(frame().isWindowModified());
}

} // namespace
} // namespace tessaro
