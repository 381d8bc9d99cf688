// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "views/list/cell_parse.h"
#include "views/list/kind_filter.h"
#include "views/list/list_font.h"
#include "views/list/list_frame.h"
#include "views/list/list_view.h"
#include "views/view_bench.h"
#include "views/widgets/empty_hint.h"

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(CellParseTest, ReadsWhatPeopleType)
{
    EXPECT_EQ(parseHex("43 7b, 01"), (Bytes{0x43, 0x7B, 0x01}));
    EXPECT_EQ(parseHex("437B01"), (Bytes{0x43, 0x7B, 0x01}));
    EXPECT_EQ(parseHex(""), Bytes{});
    for (const char* bad : {"4G", "437", "-1", "+1 2"}) EXPECT_FALSE(parseHex(bad)) << bad;
    for (const char* same : {"F0 43 10 F7", "43 10", "f0 4310", "43 10 F7"})
        EXPECT_EQ(parseSysex(same), (Bytes{0x43, 0x10, 0xF7})) << same;
    EXPECT_FALSE(parseSysex("F0 43 80 F7"));
    EXPECT_FALSE(parseSysex("F0 43 F0 F7"));

    EXPECT_EQ(parsePair("1:8"), (Bytes{1, 8}));
    EXPECT_EQ(parsePair(" 0 127 "), (Bytes{0, 127}));
    for (const char* bad : {"1", "1:128", "1:2:3", "a:b", ""}) EXPECT_FALSE(parsePair(bad)) << bad;

    const auto signature = parseSignature(" 6 / 8");
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->numerator, 6);
    EXPECT_EQ(signature->denominator, 3);
    for (const char* bad : {"3/5", "3/0", "3", "256/4", "-3/4", "x/4"}) EXPECT_FALSE(parseSignature(bad)) << bad;
}

TEST(CellParseTest, NamesAllKeys)
{
    Strings strings(Language::english);
    UiText text(strings);
    for (int mode = 0; mode < 2; ++mode)
        for (int signs = -7; signs <= 7; ++signs) {
            const Bytes body{static_cast<std::uint8_t>(signs), static_cast<std::uint8_t>(mode)};
            for (const Language language : {Language::english, Language::japanese}) {
                text.setLanguage(language);
                EXPECT_EQ(parseKeySignature(keySignatureText(body, text)), body);
            }
        }
    EXPECT_EQ(keySignatureText(Bytes{3, 1}, text), "F# 短調");
    const std::pair<const char*, Bytes> rows[] = {{"Eb major", {0xFD, 0}}, {"eb", {0xFD, 0}},     {"F#m", {3, 1}},
                                                  {"bb MINOR", {0xFB, 1}}, {"b", {5, 0}},         {"B min", {2, 1}},
                                                  {"CM", {0, 0}},          {"C minor", {0xFD, 1}}};
    for (const auto& [typed, body] : rows) EXPECT_EQ(parseKeySignature(typed), body) << typed;
    for (const char* bad : {"", "H", "E# major", "Cb minor", "C dorian", "#"})
        EXPECT_FALSE(parseKeySignature(bad)) << bad;
    EXPECT_EQ(keySignatureText(Bytes{9, 0}, text), "09 00");
}

TEST(CellParseTest, HoldsTemposInThreeBytes)
{
    EXPECT_EQ(microsecondsOf(120), 500000U);
    EXPECT_EQ(tempoBytes(500000), (Bytes{0x07, 0xA1, 0x20}));
    EXPECT_EQ(microsecondsOf(0), 0xFFFFFFU);
    EXPECT_EQ(microsecondsOf(-5), 0xFFFFFFU);
    EXPECT_EQ(legalMetaSize(0x51), 3);
    EXPECT_EQ(legalMetaSize(0x2F), 0);
    EXPECT_EQ(legalMetaSize(0x01), 0);
}

TEST(ListFontTest, ReadsTheRecord)
{
    Bytes record(60);
    record[0] = 0xF0; // -16
    record[1] = record[2] = record[3] = 0xFF;
    record[16] = 0xBC, record[17] = 0x02; // 700
    const char name[] = "Sans";
    std::copy(name, name + 5, record.begin() + 28);
    const auto font = listFont(record);
    ASSERT_TRUE(font);
    EXPECT_EQ(font->pixelSize(), 16);
    EXPECT_TRUE(font->bold());
    record[28] = 0;
    EXPECT_FALSE(listFont(record));
    record.pop_back();
    EXPECT_FALSE(listFont(record));
}

/// A track of 4/4 with a block of every kind of event.
class ListTest : public testing::Test {
protected:
    static constexpr int track = 3;

    ListTest() : blk(bench.block(track, 960))
    {
        bench.addNote(blk, 0, 240, 60);
        bench.add(blk, 0xB3, 240, {7, 100});
        bench.addNote(blk, 480, 240, 64);
        bench.add(blk, 0xE3, 720, {0, 64});
        bench.add(blk, 0xC3, 960, {11});
        bench.add(blk, 0x13, 1200, {1, 8, 64, 0});
        bench.addBytes(blk, 0xF0, 1440, {0x43, 0x10, 0xF7});
        bench.addBytes(blk, 0xFF, 1680, {'l', 'a'}, 0x05);
        blk.SetTimeEnd(960 + 1920);
        bench.bind();
    }
    CListVw& open()
    {
        frame = std::make_unique<CListFrm>(bench.parts(), track);
        frame->resize(900, 400);
        frame->show();
        return frame->list();
    }
    [[nodiscard]] EvntRef ref(std::size_t row) const { return frame->list().rows().ref(row); }
    [[nodiscard]] const CEvnt& event(std::size_t row) const { return frame->list().rows().event(row); }
    void click(int row, int column, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(view().viewport(), Qt::LeftButton, keys, cell(row, column));
    }
    QPoint cell(int row, int column) { return view().visualRect(view().model()->index(row, column)).center(); }
    CListVw& view() { return frame->list(); }
    QLineEdit* line() { return view().viewport()->findChild<QLineEdit*>(); }
    /// Types into a cell and ends with Enter; true when the line went.
    bool type(int row, int column, const QString& text)
    {
        QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, cell(row, column));
        QPointer<QLineEdit> open = line();
        if (!open) return false;
        open->selectAll();
        QTest::keyClicks(open, text);
        QTest::keyClick(open, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !open;
    }
    QString text(std::size_t row, ListColumn column) { return view().cellText(row, column); }

    ViewBench bench;
    CBlk& blk;
    std::unique_ptr<CListFrm> frame;
};

TEST_F(ListTest, ShowsEveryKindInItsColumns)
{
    open();
    ASSERT_EQ(view().rows().count(), 8U);
    const std::vector<const char*> wanted[] = {
        {"1:03:000", "Note", "1", "C4", "100", "0:240", ""},
        {"1:03:240", "Control Change", "4", "CC 7 Volume", "100", "", ""},
        {"1:04:000", "Note", "1", "E4", "100", "0:240", ""},
        {"1:04:240", "Pitch Bend", "4", "0", "", "", ""},
        {"2:01:000", "Program Change", "4", "12", "", "", ""},
        {"2:01:240", "Packed Nrpn", "4", "1:8", "64:0", "", ""},
        {"2:02:000", "System Exclusive", "", "", "", "", "F0 43 10 F7"},
        {"2:02:240", "Lyric", "", "", "", "", "la"},
    };
    for (std::size_t row = 0; row < std::size(wanted); ++row)
        for (std::size_t column = 0; column < listColumns; ++column)
            EXPECT_EQ(text(row, static_cast<ListColumn>(column)), wanted[row][column]) << row << '/' << column;
}

TEST_F(ListTest, TakesTypedValuesAsOneStepEach)
{
    open();
    struct Case {
        int row;
        ListColumn column;
        const char* typed;
        const char* shown;
    };
    const Case cases[] = {
        {0, ListColumn::value1, "eb4", "D#4"},      {0, ListColumn::value2, "+100", "127"},
        {0, ListColumn::gate, "600", "1:120"},      {0, ListColumn::channel, "16", "16"},
        {1, ListColumn::value1, "10", "CC 10 Pan"}, {1, ListColumn::value2, "-1", "99"},
        {3, ListColumn::value1, "-100", "-100"},    {4, ListColumn::value1, "128", "128"},
        {5, ListColumn::value2, "3:4", "3:4"},      {6, ListColumn::data, "43 10 4C", "F0 43 10 4C F7"},
        {7, ListColumn::data, "lo", "lo"},          {2, ListColumn::place, "1:4:10", "1:04:010"},
    };
    for (const Case& at : cases) {
        const int steps = bench.editor.GetUndoRedoCount();
        EXPECT_TRUE(type(at.row, static_cast<int>(at.column), at.typed)) << at.typed;
        EXPECT_EQ(text(static_cast<std::size_t>(at.row), at.column), at.shown);
        EXPECT_EQ(bench.editor.GetUndoRedoCount(), steps + 1);
        const QString before = text(static_cast<std::size_t>(at.row), at.column);
        bench.editor.UndoNode();
        EXPECT_NE(text(static_cast<std::size_t>(at.row), at.column), before);
        bench.editor.RedoNode();
        EXPECT_EQ(text(static_cast<std::size_t>(at.row), at.column), before);
    }
}

TEST_F(ListTest, LengthsAreInBeatsOfTheirMeasure)
{
    EvntDraft sixEighth = newEvnt(EvntKind::signature, 0, 0);
    sixEighth.data = {6, 3, 24, 8};
    open();
    view().edits().insert(0, sixEighth);
    EXPECT_EQ(text(0, ListColumn::gate), "1:0");
    const std::pair<const char*, std::uint32_t> cases[] = {{"2:60", 540}, {"+1:0", 780}, {"-0:30", 750}, {"+50", 800}};
    for (const auto& [typed, gate] : cases) {
        EXPECT_TRUE(type(0, static_cast<int>(ListColumn::gate), typed));
        EXPECT_EQ(event(0).GetGateTime(), gate) << typed;
    }
}

TEST_F(ListTest, KeepsTheLineOpenOnWhatCannotBeRead)
{
    open();
    const std::pair<ListColumn, const char*> cases[] = {{ListColumn::value1, "H9"},  {ListColumn::value2, "128"},
                                                        {ListColumn::value2, "0"},   {ListColumn::gate, "x"},
                                                        {ListColumn::channel, "17"}, {ListColumn::place, "0:1:0"}};
    for (const auto& [column, typed] : cases) {
        EXPECT_FALSE(type(0, static_cast<int>(column), typed)) << typed;
        ASSERT_TRUE(line());
        EXPECT_FALSE(line()->accessibleDescription().isEmpty());
        QTest::keyClick(line(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(line());
    }
    EXPECT_EQ(bench.editor.GetUndoRedoCount(), 0);
    EXPECT_FALSE(type(6, 6, "F0 99 F7"));
}

TEST_F(ListTest, EditsAllSelectedRowsAtOnce)
{
    open();
    click(0, 1);
    click(2, 1, Qt::ShiftModifier); // note, controller, note
    EXPECT_EQ(view().selection().count(), 3U);
    EXPECT_TRUE(type(2, static_cast<int>(ListColumn::value2), "-30"));
    EXPECT_EQ(text(0, ListColumn::value2), "70");
    EXPECT_EQ(text(1, ListColumn::value2), "100"); // of another kind
    EXPECT_EQ(text(2, ListColumn::value2), "70");
    EXPECT_TRUE(type(0, static_cast<int>(ListColumn::channel), "5"));
    EXPECT_EQ(text(1, ListColumn::channel), "5");
    EXPECT_TRUE(type(0, static_cast<int>(ListColumn::place), "2:1:0")); // distances stay
    EXPECT_EQ(event(view().rows().firstFrom(1920) + 1).GetPost1(), 60); // behind what stood there
    EXPECT_EQ(view().selection().count(), 3U);
    EXPECT_EQ(bench.editor.GetUndoRedoCount(), 3);
    QTest::keyClick(&view(), Qt::Key_Delete);
    frame->run(ViewCommand::remove);
    EXPECT_EQ(view().rows().count(), 5U);
    frame->run(ViewCommand::selectAll);
    frame->run(ViewCommand::remove);
    EXPECT_TRUE(frame->empty().isVisible());
    bench.editor.UndoNode();
    bench.editor.UndoNode();
    EXPECT_EQ(view().rows().count(), 8U);
    EXPECT_TRUE(view().isVisible());
}

TEST_F(ListTest, TypesFromTheKeyboardAlone)
{
    open();
    view().setFocus();
    click(0, static_cast<int>(ListColumn::value2));
    QTest::keyClick(&view(), Qt::Key_Down);
    EXPECT_TRUE(view().selection().contains(ref(1)));
    EXPECT_EQ(view().selection().count(), 1U);
    QTest::keyClick(&view(), Qt::Key_4);
    ASSERT_TRUE(line());
    QTest::keyClicks(line(), "2");
    QTest::keyClick(line(), Qt::Key_Return);
    EXPECT_EQ(text(1, ListColumn::value2), "42");
    QTest::keyClick(&view(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(view().selection().count(), 2U);
    QTest::keyClick(&view(), Qt::Key_Escape);
    EXPECT_TRUE(view().selection().empty());
}

TEST_F(ListTest, OpensCellsByTheKeysOfTheirCommands)
{
    open();
    bench.actions.setActive(frame.get());
    bench.actions[ViewCommand::editCell].setShortcut(Qt::Key_F4);
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    view().setFocus();
    click(0, static_cast<int>(ListColumn::value2));
    bench.actions.refresh();
    for (const auto& [key, opens] : {std::pair{Qt::Key_F4, true}, {Qt::Key_F2, false}, {Qt::Key_Return, true}}) {
        QTest::keyClick(&view(), key);
        ASSERT_EQ(line() != nullptr, opens) << key;
        if (!opens) continue;
        QTest::keyClick(line(), Qt::Key_Return); // that of the line
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(line());
    }
}

TEST_F(ListTest, InsertsAtTheCurrentRowAndOpensIt)
{
    open();
    click(2, 0);
    QMenu menu;
    view().commands().fillInsertMenu(menu);
    EXPECT_EQ(menu.actions().front()->text(), "Note...");
    menu.actions().front()->trigger();
    EXPECT_EQ(view().rows().count(), 9U);
    ASSERT_TRUE(line());
    QTest::keyClicks(line(), "G5");
    QTest::keyClick(line(), Qt::Key_Return);
    EXPECT_EQ(event(3).GetPost1(), 79);
    EXPECT_EQ(view().rows().time(3), 1440U);

    // Of a kind that is left out: it is shown again.
    view().setFilter({~0U, -1});
    EXPECT_EQ(view().rows().count(), 0U);
    EXPECT_EQ(bench.listSettings.monitorType, -1);
    view().commands().insert(newEvnt(EvntKind::lyric, 1440, 0));
    EXPECT_EQ(view().rows().count(), 2U);
    // A track without a block gets one, in the same step.
    frame->setTrack(9);
    EXPECT_EQ(view().rows().total(), 0U);
    const int steps = bench.editor.GetUndoRedoCount();
    view().commands().insert(newEvnt(EvntKind::note, 5000, 0));
    EXPECT_EQ(view().rows().total(), 1U);
    EXPECT_EQ(bench.editor.GetUndoRedoCount(), steps + 1);
    bench.user.messages.clear();
    EXPECT_FALSE(view().edits().insert(track, newEvnt(EvntKind::tempo, 0, 0)));
    EXPECT_EQ(bench.user.messages, std::vector{static_cast<int>(TextId::cannotStandHere)});
}

TEST_F(ListTest, LeavesLinkedBlocksAlone)
{
    const POSITION trk = bench.editor.GetTrkPos(track);
    bench.editor.BlkGhost(trk, &blk, trk, 9600);
    open();
    ASSERT_EQ(view().rows().count(), 16U);
    EXPECT_FALSE(type(8, 4, "5"));
    click(8, 1);
    frame->run(ViewCommand::remove);
    EXPECT_EQ(bench.user.messages, (std::vector<int>(2, static_cast<int>(TextId::linkedBlockNotEditable))));
    EXPECT_EQ(view().rows().count(), 16U);
    EXPECT_TRUE(type(0, 4, "5")); // the linked one follows
    EXPECT_EQ(text(8, ListColumn::value2), "5");
}

TEST_F(ListTest, FiltersFindsAndFollows)
{
    open();
    RowFilter filter;
    filter.hiddenGroups = 1U << static_cast<unsigned>(KindGroup::notes);
    view().setFilter(filter);
    EXPECT_EQ(view().rows().count(), 6U);
    EXPECT_EQ(bench.listSettings.monitorType, 1);
    filter.channel = 4;
    view().setFilter(filter);
    EXPECT_EQ(view().rows().count(), 2U); // those without a channel
    view().setFilter({});
    EXPECT_TRUE(view().find("volume", false));
    EXPECT_EQ(view().currentIndex().row(), 1);
    EXPECT_TRUE(view().find("E4", true));
    EXPECT_EQ(view().currentIndex().row(), 2);
    EXPECT_FALSE(view().find("tuba", false));
    for (const auto& [tick, row] : {std::pair{0U, -1}, {960U, 0}, {1199U, 0}, {1200U, 1}, {90000U, 7}}) {
        view().setPosition(tick, true);
        EXPECT_EQ(view().playRow(), row) << tick;
    }
    view().horizontalHeader()->resizeSection(2, 55);
    EXPECT_EQ(bench.listSettings.columnWidths[2], 55);
}

TEST_F(ListTest, WorksWhenItIsInSightAlone)
{
    open();
    const auto remove = [&](std::size_t row) {
        const UndoScope step(bench.editor, "x");
        bench.editor.DeleteEvnt(ref(row).trk, ref(row).blk, ref(row).evnt);
    };
    frame->hide();
    remove(0);
    EXPECT_EQ(view().rows().count(), 8U);
    frame->show();
    EXPECT_EQ(view().rows().count(), 7U);

    // The last picture stays while the song may stand between two states.
    bench.editor.SetPrgDlg();
    QImage picture(view().viewport()->size(), QImage::Format_RGB32);
    picture.fill(Qt::red);
    view().viewport()->render(&picture);
    EXPECT_EQ(picture.pixelColor(5, 5), QColor(Qt::red));
    bench.editor.EndPrgDlg();
    view().viewport()->render(&picture);
    EXPECT_NE(picture.pixelColor(5, 5), QColor(Qt::red));
}

TEST_F(ListTest, FollowsChangesFromElsewhere)
{
    open();
    frame->run(ViewCommand::selectAll);
    bench.editor.OpenUndoNode("x");
    bench.editor.DeleteEvnt(ref(0).trk, ref(0).blk, ref(0).evnt);
    bench.editor.CloseUndoNode();
    EXPECT_EQ(view().rows().count(), 7U);
    EXPECT_EQ(view().selection().count(), 7U);
    // Blocks that overlap are shown in the order of time.
    CBlk& other = bench.block(track, 1000);
    bench.addNote(other, 0, 10, 72);
    bench.addNote(other, 5000, 10, 74);
    other.SetTimeEnd(7000);
    frame->songReplaced();
    ASSERT_EQ(view().rows().count(), 9U);
    for (std::size_t row = 1; row < 9; ++row) EXPECT_LE(view().rows().time(row - 1), view().rows().time(row));
    for (std::size_t row = 0; row < 9; ++row) EXPECT_EQ(view().rows().find(ref(row)), row);
    bench.locked = true;
    EXPECT_FALSE(frame->can(ViewCommand::insertEvent));
    EXPECT_FALSE(type(0, 4, "5"));
}

} // namespace
} // namespace tessaro
