// SPDX-License-Identifier: GPL-3.0-or-later
// All windows over one song while commands, edits and the mouse do whatever comes: nothing is named that is gone, and
// the history leads to the first song and back.
#include "core/doc/list_settings.h"
#include "core/edit/undo_scope.h"
#include "core/model/meta.h"
#include "core/song_picture.h"
#include "parts_fixture.h"
#include "roll_song.h"
#include "support/random.h"
#include "views/drum/drum_frame.h"
#include "views/edits/everyday_edits.h"
#include "views/list/list_frame.h"
#include "views/master/master_frame.h"
#include "views/roll/piano_frame.h"
#include "views/tracks/track_frame.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTest>

namespace tessaro {
namespace {

/// What stands in the blocks and where they begin; that they grow for events is no part of a step.
std::string picture(const CEditor& editor)
{
    std::string out;
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            out += std::to_string(Song::numberOf(const_cast<CTrk*>(trk))) + ' ' + std::to_string(blk->GetTimeTop())
                 + ' ' + blk->GetName() + test::picture(*blk->GetRealBlk()) + '\n';
    return out;
}

/// A song of three tracks, one block linked to another, with two signatures; every kind of window shows it.
struct AllWindows : PartsFixture {
    test::Dice dice;
    ListSettings listSettings;
    EverydayEdits edits{window, parts};
    std::vector<std::unique_ptr<ChildFrame>> frames;

    explicit AllWindows(std::uint32_t seed) : dice(seed)
    {
        listSettings.columnWidths.fill(ListSettings::defaultWidth);
        parts.listSettings = &listSettings;
        for (int track = 1; track <= 3; ++track) {
            CBlk& blk = addBlock(track, 1920, 5760);
            for (int n = 0; n < 30; ++n)
                addNote(blk, 1920 + dice.below(16) * 240, static_cast<int>(dice.between(40, 70)), dice.between(1, 480));
        }
        bind();
        frames.push_back(std::make_unique<CTrackFrame>(parts));
        frames.push_back(std::make_unique<CPianoFrame>(parts, 1));
        frames.push_back(std::make_unique<CDrumFrame>(parts, 2));
        frames.push_back(std::make_unique<CListFrm>(parts, 3));
        frames.push_back(std::make_unique<CMstrFrm>(parts));
        window.resize(1000, 600);
        window.show();
        for (const auto& frame : frames) {
            frame->setParent(&window);
            frame->resize(window.size());
            frame->show();
        }
        editor.BlkGhost(editor.GetTrkPos(1), editor.GetHeadBlkPos(editor.GetTrkPos(1)), editor.GetTrkPos(1), 7680);
        signature(3840, 3);
        signature(5280, 5);
        editor.ClearUndoRedo();
    }

    void signature(std::uint32_t time, std::uint8_t beats)
    {
        const std::uint8_t body[4] = {beats, 2, 24, 8};
        _EDT_EVNT rec;
        rec.status = status::metaEvent;
        rec.metaType = meta::timeSignature;
        rec.time = time;
        rec.data = body;
        rec.szData = 4;
        editor.InsEvnt(editor.GetTrkPos(0), editor.song().masterBlk(), rec);
    }
    ChildFrame& anyFrame() { return *frames[dice.below(static_cast<std::uint32_t>(frames.size()))]; }

    void command(ChildFrame& frame)
    {
        const auto command = static_cast<ViewCommand>(dice.below(viewCommands));
        const bool asks = command == ViewCommand::properties || command == ViewCommand::insertEvent; // opens a menu
        if (!asks && frame.can(command)) frame.run(command);
    }
    void drag(ChildFrame& frame)
    {
        const auto point = [&] {
            return QPoint(static_cast<int>(dice.below(1000)), static_cast<int>(dice.below(600)));
        };
        const QPoint from = point();
        QWidget* under = frame.childAt(from);
        if (!under || qobject_cast<QAbstractButton*>(under) || qobject_cast<QComboBox*>(under)) return;
        constexpr Qt::KeyboardModifier keys[] = {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier,
                                                 Qt::AltModifier};
        const auto held = keys[dice.below(4)];
        constexpr auto firstTool = static_cast<std::uint32_t>(ViewCommand::toolSelect);
        actions[static_cast<ViewCommand>(firstTool + dice.below(8))].trigger();
        QTest::mousePress(under, Qt::LeftButton, held, under->mapFrom(&frame, from));
        QTest::mouseMove(under, under->mapFrom(&frame, point()));
        QTest::mouseRelease(under, Qt::LeftButton, held, under->mapFrom(&frame, point()));
    }
    void step()
    {
        ChildFrame& frame = anyFrame();
        actions.setActive(&frame);
        switch (dice.below(10)) {
        case 1:
        case 2: drag(frame); break;
        case 3: edits.run(static_cast<EverydayEdit>(dice.between(0, everydayEdits - 1))); break;
        case 4: dice.oneIn(2) ? editor.UndoNode(static_cast<int>(dice.between(1, 3))) : editor.RedoNode(); break;
        case 5: frame.setPosition(dice.below(8) * 1920, true); break;
        case 6: {
            const UndoScope open(editor, "signature");
            signature(dice.below(8) * 960, static_cast<std::uint8_t>(dice.between(1, 7)));
            break;
        }
        default: command(frame); break;
        }
    }
};

TEST(RandomEdits, LeaveEveryWindowTrueAndGoBackAndForth)
{
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        SCOPED_TRACE(seed);
        AllWindows song(seed);
        const std::string first = picture(song.editor);
        for (int n = 0; n < 200; ++n) {
            song.step();
            if (n % 8 == 0) QCoreApplication::processEvents();
            for (const auto& frame : song.frames)
                for (const EvntRef& ref : frame->selectedEvnts()) ASSERT_TRUE(RollSong::holds(ref)) << n;
        }
        const std::string last = picture(song.editor);
        const int steps = song.editor.history().index() + 1;
        song.editor.UndoNode(steps);
        EXPECT_EQ(picture(song.editor), first);
        song.editor.RedoNode(steps);
        EXPECT_EQ(picture(song.editor), last);
    }
}

} // namespace
} // namespace tessaro
