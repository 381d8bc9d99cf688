// SPDX-License-Identifier: GPL-3.0-or-later
// The song plays in real time while all windows follow it and the person goes on editing.
#include "app/program.h"
#include "base/real_clock.h"
#include "core/edit/undo_scope.h"
#include "core/fakes.h"
#include "realtime/loom/midi_system.h"
#include "views/frame/editor_windows.h"
#include "views/frame/main_frame.h"

#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <map>

namespace tessaro {
namespace {

/// One output that keeps the notes it is sent, and how late. The engine's thread writes; read while nothing plays.
class NoteLog final : public MidiSystem {
public:
    struct Note {
        std::uint8_t status;
        std::uint8_t key;
        std::uint8_t velocity;
        Nanos late;
    };

    explicit NoteLog(Clock& clock) : m_clock(clock), m_notes(1U << 20U) {}

    [[nodiscard]] std::span<const Note> notes() const { return std::span(m_notes).first(m_count); }
    [[nodiscard]] std::size_t count() const { return m_count; }

    void refresh() override {}
    std::vector<std::string> outputs() const override { return {"Log"}; }
    std::vector<std::string> inputs() const override { return {}; }
    std::unique_ptr<MidiOut> openOutput(std::size_t driver) override
    {
        return driver == 0 ? std::make_unique<Out>(*this) : nullptr;
    }
    std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink&, std::size_t) override { return nullptr; }

private:
    struct Out final : MidiOut {
        explicit Out(NoteLog& to) : log(to) {}
        bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override
        {
            if (bytes.size() != 3 || (bytes[0] & 0xE0U) != 0x80 || log.m_count >= log.m_notes.size()) return true;
            log.m_notes[log.m_count] = {bytes[0], bytes[1], bytes[2], log.m_clock.now() - due};
            ++log.m_count;
            return true;
        }
        NoteLog& log;
    };

    Clock& m_clock;
    std::vector<Note> m_notes;
    std::atomic<std::size_t> m_count{0};
};

class PlayingTest : public testing::Test {
protected:
    static constexpr int rulerTrack = 20; ///< a note each sixteenth that no edit touches
    static constexpr std::uint8_t rulerChannel = 15;
    static constexpr int rulerKeys = 100; ///< used in turn
    static constexpr int edited = 2;
    static constexpr std::uint32_t step = 120;
    static constexpr std::uint32_t songEnd = 1200 * 480; ///< ten minutes

    PlayingTest()
    {
        program.user().showBox = [this](const QString& line, MessageKind) { boxes << line; };
        program.user().saveBox = [](const QString&) { return SaveAnswer::discard; };
        EXPECT_TRUE(program.start({}));
        editor().SetTrkCh(rulerTrack, rulerChannel);
        CBlk& ruler = addBlk(rulerTrack);
        for (std::uint32_t i = 0; i < songEnd / step; ++i)
            ruler.InsEvnt(test::noteRec(i * step, step / 2, static_cast<std::uint8_t>(i % rulerKeys)));
        addBlk(edited);
        program.panel().SetTop();
    }
    CEditor& editor() { return program.document().GetEditor(); }
    CBlk& addBlk(int track)
    {
        const UndoScope scope(editor(), "block");
        editor().BlkNew(editor().GetTrkPos(track), 0, songEnd);
        return *editor().song().trk(track)->blocks().tail();
    }
    void insertNotes(std::uint32_t count)
    {
        const UndoScope scope(editor(), "insert");
        const POSITION trk = editor().GetTrkPos(edited);
        for (std::uint32_t i = 0; i < count; ++i)
            editor().InsEvnt(trk, editor().GetHeadBlkPos(trk),
                             test::noteRec(i * 60, 100, static_cast<std::uint8_t>(i % 128)));
    }
    void moveNotes(std::uint32_t by)
    {
        const UndoScope scope(editor(), "move");
        const POSITION trk = editor().GetTrkPos(edited);
        const POSITION blk = editor().GetHeadBlkPos(trk);
        std::vector<POSITION> notes;
        for (POSITION e = editor().GetHeadEvntPos(trk, blk); e; e = e->next) notes.push_back(e);
        for (const POSITION e : notes) editor().SetLocation(trk, blk, e, List<CEvnt>::get(e)->GetTime() + by);
    }
    void openWindows()
    {
        for (const WindowKind kind :
             {WindowKind::eventList, WindowKind::masterTrack, WindowKind::piano, WindowKind::drum})
            EXPECT_TRUE(windows().open(kind, edited));
        windows().tile();
    }
    void runEverywhere(ViewCommand command)
    {
        for (ChildFrame* window : windows().windows())
            if (window->can(command)) window->run(command);
    }
    EditorWindows& windows() { return program.frame().windows(); }

    QTemporaryDir folder;
    Strings strings{Language::english};
    RealClock clock;
    NoteLog log{clock};
    ProfileStore store{(folder.path() + "/tessaro.ini").toStdString()};
    Program program{clock,
                    log,
                    store,
                    strings,
                    {(folder.path() + '/').toStdString(), {}, QStringLiteral(TESSARO_SOURCE_DIR "/data/icons"), {}},
                    [] { return QString(); }};
    QStringList boxes;
};

TEST_F(PlayingTest, NothingIsLostAndNothingHangsWhileEditsGoOn)
{
    openWindows();
    program.panel().SpaceKey();
    ASSERT_TRUE(program.panel().GetPlayBtn());
    for (int round = 0; round < 8; ++round) {
        insertNotes(1000);
        QTest::qWait(150);
        moveNotes(240);
        runEverywhere(round % 2 == 0 ? ViewCommand::zoomIn : ViewCommand::zoomOut);
        QTest::qWait(150);
        EXPECT_TRUE(editor().UndoNode(round % 2 + 1));
        runEverywhere(ViewCommand::selectAll);
        program.frame().resize(1000 + 20 * round, 700);
        QTest::qWait(150);
        EXPECT_TRUE(round % 2 == 0 || editor().RedoNode());
    }
    const std::size_t before = log.count();
    while (program.panel().GetPlayBtn() && log.count() < before + 50) QTest::qWait(20);
    ASSERT_TRUE(program.panel().GetPlayBtn()) << "the song has ended";
    program.panel().SpaceKey();
    EXPECT_FALSE(program.panel().GetPlayBtn());
    QTest::qWait(100);
    EXPECT_TRUE(boxes.isEmpty()) << boxes.join('\n').toStdString();

    std::map<std::pair<int, int>, int> sounding;
    std::vector<Nanos> late;
    int place = -1;
    for (const NoteLog::Note& note : log.notes()) {
        const bool on = (note.status & 0xF0U) == 0x90 && note.velocity != 0;
        sounding[{note.status & 0x0FU, note.key}] += on ? 1 : -1;
        late.push_back(note.late);
        if (!on || (note.status & 0x0FU) != rulerChannel) continue;
        // Where an edit stopped the song, the same note may come once more; none is left out.
        const int next = (place + 1) % rulerKeys;
        EXPECT_TRUE(note.key == next || note.key == place) << "behind " << place << " comes " << int{note.key};
        place = note.key;
    }
    for (const auto& [note, count] : sounding) EXPECT_EQ(0, count) << note.first << ' ' << note.second;
    EXPECT_GT(late.size(), 100U);
    std::sort(late.begin(), late.end());
    const auto micros = [&late](double part) {
        const auto at = static_cast<std::size_t>(part * static_cast<double>(late.size() - 1));
        return std::chrono::duration<double, std::micro>(late[at]).count();
    };
    std::printf("%zu messages, half of them within %.0f us, 99 of 100 within %.0f us, all within %.0f us\n",
                late.size(), micros(0.5), micros(0.99), micros(1));
}

} // namespace
} // namespace tessaro
