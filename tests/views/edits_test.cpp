// SPDX-License-Identifier: GPL-3.0-or-later
#include "parts_fixture.h"
#include "views/editors/evnt_selection.h"
#include "views/edits/edit_panel.h"
#include "views/edits/everyday_edits.h"
#include "views/setup/choice_box.h"

#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace tessaro {
namespace {

/// A child window with nothing but a selection.
class SelectionFrame : public ChildFrame {
public:
    std::vector<EvntRef> refs;

    [[nodiscard]] WindowKind kind() const override { return WindowKind::piano; }
    [[nodiscard]] QString title() const override { return {}; }
    [[nodiscard]] bool can(ViewCommand) const override { return false; }
    void run(ViewCommand) override {}
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override { return refs; }
    void selectEvnts(std::span<const EvntRef> chosen) override { refs.assign(chosen.begin(), chosen.end()); }
    void setPosition(std::uint32_t, bool) override {}
    void songReplaced() override {}
    void retranslate() override {}
};

/// Three notes off the grid on track 1, one of them in bar 2, all selected.
class Edits : public ::testing::Test {
protected:
    PartsFixture fixture;
    CEditor& editor = fixture.editor;
    SelectionFrame frame;
    std::optional<EverydayEdits> edits;
    std::vector<EvntRef> notes;

    Edits()
    {
        CBlk& blk = fixture.addBlock(1, 0, 3840);
        for (const std::uint32_t time : {10U, 490U, 2000U})
            notes.push_back({editor.GetTrkPos(1), &blk, PartsFixture::addNote(blk, time, 60, 100)});
        fixture.bind();
        frame.refs = notes;
        fixture.actions.setActive(&frame);
        edits.emplace(fixture.window, fixture.parts);
        fixture.window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&fixture.window));
    }

    EditPanel& open(EverydayEdit edit)
    {
        (*edits)[edit].trigger();
        EditPanel* panel = edits->panel(edit);
        EXPECT_TRUE(panel && panel->isVisible());
        return *panel;
    }
    static void set(EditPanel& panel, std::size_t field, int value)
    {
        if (auto* box = dynamic_cast<ChoiceBox*>(&panel.field(field)))
            box->choose(value);
        else
            dynamic_cast<QSpinBox&>(panel.field(field)).setValue(value);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] std::vector<std::uint32_t> times() const
    {
        std::vector<std::uint32_t> found;
        for (const EvntRef& ref : frame.refs) found.push_back(List<CEvnt>::get(ref.evnt)->GetTime());
        return found;
    }
    [[nodiscard]] QString undoTitle() const
    {
        std::string title;
        editor.IsEnableUndo(title);
        return utf8Text(title);
    }
};

using Times = std::vector<std::uint32_t>;

TEST_F(Edits, QuantiseByKeysAgainAndAgain)
{
    QTest::keyClick(&fixture.window, Qt::Key_Q);
    EditPanel* panel = edits->panel(EverydayEdit::quantise);
    ASSERT_TRUE(panel && panel->isVisible());
    set(*panel, 0, 2);
    EXPECT_EQ(panel->preview(), "3 of 3 events will change.");
    set(*panel, 3, 50);
    QTest::keyClick(&panel->field(3), Qt::Key_Return);
    EXPECT_EQ(times(), (Times{5, 485, 1960}));
    EXPECT_EQ(undoTitle(), "Quantise");
    QTest::keyClick(&panel->field(3), Qt::Key_Return);
    EXPECT_EQ(times(), (Times{2, 482, 1940}));
    EXPECT_EQ(editor.GetUndoRedoCount(), 2);
    QTest::keyClick(&panel->field(3), Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());

    // Another day.
    edits.emplace(fixture.window, fixture.parts);
    (*edits)[EverydayEdit::quantiseAgain].trigger();
    EXPECT_EQ(times(), (Times{1, 481, 1930}));
    editor.UndoNode(3);
    EXPECT_EQ(times(), (Times{10, 490, 2000}));
}

TEST_F(Edits, EveryNoteLengthAndShapeIsThatOfTheGrid)
{
    EditPanel& panel = open(EverydayEdit::quantise);
    for (const int row : {0, 1, 2, 4, 6}) {
        for (int exponent = 0; exponent < Grid::lengths; ++exponent) {
            set(panel, 0, exponent);
            set(panel, 1, row);
            fixture.grid.setIndex(row * Grid::lengths + exponent);
            for (const EvntState& to : panel.plan(notes).changes) {
                const std::uint32_t time = List<CEvnt>::get(to.ref.evnt)->GetTime();
                const std::uint32_t bar = time < 1920 ? 1920 : 3840;
                EXPECT_EQ(to.time, std::min(fixture.grid.snap(editor, time), bar)) << row << ' ' << exponent;
            }
        }
    }
}

TEST_F(Edits, SayWhatStandsAgainstThem)
{
    frame.refs.clear();
    (*edits)[EverydayEdit::quantiseAgain].trigger();
    EditPanel& panel = open(EverydayEdit::transpose);
    EXPECT_EQ(panel.preview(), "Select events first.");
    frame.refs = notes;
    edits->refresh();
    set(panel, 1, 67);
    EXPECT_EQ(panel.preview(), "3 of 3 events will change.");
    set(panel, 1, 68);
    EXPECT_EQ(panel.preview(), "3 notes would leave the keyboard: none will move.");
    QTest::keyClick(&panel, Qt::Key_Return);
    set(panel, 1, 0);
    EXPECT_EQ(panel.preview(), "Nothing will change.");
    EXPECT_EQ(editor.GetUndoRedoCount(), 0);
    fixture.locked = true;
    set(panel, 1, 1);
    QTest::keyClick(&panel, Qt::Key_Return);
    QTest::keyClick(&fixture.window, Qt::Key_T);
    EXPECT_EQ(editor.GetUndoRedoCount(), 0);
}

TEST_F(Edits, KeysInAPanelAreItsOwnButThoseOfTheHistory)
{
    EditPanel& panel = open(EverydayEdit::shift);
    const auto isTaken = [&](QKeyCombination keys) {
        QKeyEvent event(QEvent::ShortcutOverride, keys.key(), keys.keyboardModifiers());
        event.ignore();
        QCoreApplication::sendEvent(&panel.field(0), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(isTaken(Qt::Key_R | Qt::NoModifier));
    EXPECT_TRUE(isTaken(Qt::Key_Escape | Qt::NoModifier));
    EXPECT_FALSE(isTaken(Qt::CTRL | Qt::Key_Z));
}

TEST_F(Edits, SplitSelectsWhatItMoved)
{
    fixture.addBlock(3, 0, 100);
    editor.SetTrkName(3, "Bass");
    EditPanel& panel = open(EverydayEdit::splitPitch);
    EXPECT_EQ(dynamic_cast<ChoiceBox&>(panel.field(1)).itemText(2), "Track 3 Bass");
    set(panel, 0, 61);
    set(panel, 1, 3);
    QTest::keyClick(&panel, Qt::Key_Return);
    EXPECT_EQ(times(), (Times{10, 490, 2000}));
    for (const EvntRef& ref : frame.refs) EXPECT_EQ(ref.trk, editor.GetTrkPos(3));
}

TEST_F(Edits, PanelsFollowTheSong)
{
    EditPanel& quantise = open(EverydayEdit::quantise);
    EditPanel& split = open(EverydayEdit::splitPitch);
    auto& tracks = dynamic_cast<ChoiceBox&>(split.field(1));
    EXPECT_EQ(split.value(1), 2);
    (*edits)[EverydayEdit::quantiseAgain].trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(quantise.preview(), "Nothing will change.");
    editor.UndoNode();
    QCoreApplication::processEvents();
    EXPECT_EQ(quantise.preview(), "3 of 3 events will change.");

    editor.SetTrkType(editor.GetTrkPos(2), trktype::wave);
    editor.SetTrkName(3, "Bass");
    editor.HintTrkType();
    QCoreApplication::processEvents();
    EXPECT_EQ(tracks.itemText(1), "Track 3 Bass");
    EXPECT_EQ(split.value(1), 1) << "the chosen one takes no notes any more";
}

TEST_F(Edits, PanelsShowTheFieldsOfTheirMethodInBothLanguages)
{
    EditPanel& velocity = open(EverydayEdit::velocity);
    for (int mode = 0; mode < 5; ++mode) {
        set(velocity, 0, mode);
        EXPECT_EQ(velocity.field(1).isVisible(), mode == 0);
        EXPECT_EQ(velocity.field(6).isVisible(), mode == 4);
    }
    for (const Language language : {Language::japanese, Language::english}) {
        fixture.text.setLanguage(language);
        edits->retranslate();
        for (int i = 0; i < everydayEdits; ++i) {
            const auto edit = static_cast<EverydayEdit>(i);
            if (edit == EverydayEdit::quantiseAgain || editKind(edit).fields.empty()) continue;
            EditPanel& panel = open(edit);
            for (std::size_t field = 0; field < editKind(edit).fields.size(); ++field)
                EXPECT_EQ(panel.field(field).accessibleName(), fixture.text.plain(editKind(edit).fields[field].label));
            for (const QPushButton* button : panel.findChildren<QPushButton*>()) EXPECT_FALSE(button->text().isEmpty());
            EXPECT_FALSE(panel.preview().isEmpty());
        }
    }
}

} // namespace
} // namespace tessaro
