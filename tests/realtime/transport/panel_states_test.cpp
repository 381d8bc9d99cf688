// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever is pressed in whatever order: the panel's buttons, the real-time layer and the recorder tell the same.
#include "core/edit/undo_scope.h"
#include "realtime/play/random_song.h"
#include "realtime/transport/panel_bench.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace tessaro::test {
namespace {

bool isValid(const std::vector<std::uint8_t>& m)
{
    const auto low = [](std::uint8_t b) { return b < 0x80; };
    if (m.empty() || m[0] < 0x80) return false;
    if (m[0] == 0xF0) return m.back() == 0xF7 && std::all_of(m.begin() + 1, m.end() - 1, low);
    const std::size_t length = (m[0] & 0xE0U) == 0xC0 ? 2 : m[0] < 0xF0 || m[0] == 0xF2 ? 3 : 1;
    return m.size() == length && std::all_of(m.begin() + 1, m.end(), low);
}

/// Follows a whole log: what sounds, and that nothing is odd.
class Listener {
public:
    void hear(const std::vector<Heard>& log)
    {
        for (const Heard& h : log) {
            ASSERT_TRUE(isValid(h.bytes));
            ASSERT_GE(h.due, m_last) << "time goes backwards";
            m_last = h.due;
            const auto note = std::make_tuple(h.port, h.bytes[0] & 0x0F, h.bytes.size() > 1 ? h.bytes[1] : 0);
            if (h.isNoteOn()) ++m_sounding[note];
            if (h.isNoteOff()) {
                ASSERT_GT(m_sounding[note], 0) << "off before on";
                --m_sounding[note];
            }
        }
    }
    [[nodiscard]] int sounding() const
    {
        int count = 0;
        for (const auto& [note, n] : m_sounding) count += n;
        return count;
    }

private:
    std::map<std::tuple<int, int, int>, int> m_sounding;
    Nanos m_last{};
};

class PanelStates : public testing::TestWithParam<std::uint32_t> {
protected:
    static constexpr std::uint32_t songLength = 6000;

    PanelStates()
    {
        makeRandomSong(bench, dice, songLength);
        for (int track = 5; track <= 8; ++track) bench.editor.song().trk(track)->SetRec(dice.oneIn(2));
        bench.smc.smcSetThruPort(0x80);
        bench.bind();
        bench.panel.setObserver(&seen);
    }
    ~PanelStates() override { bench.panel.setObserver(nullptr); }

    void press();
    void pressRecord();
    void changeSettings();
    void hearNews();
    void edit();
    void performAndWait();
    void check();

    Dice dice{GetParam()};
    PlayBench bench;
    PanelLog seen;
    Listener listener;
    int relativeTempo = 0; ///< as wished
    bool winding = false;
};

void PanelStates::press()
{
    CCnpWindow& panel = bench.panel;
    switch (dice.below(16)) {
    case 0: panel.Stop(); break;
    case 1: panel.StopClicked(); break;
    case 2: panel.SpaceKey(); break;
    case 3: panel.ESCKey(); break;
    case 4: panel.Top(); break;
    case 5: panel.End(); break;
    case 6:
    case 7: panel.FastForwardPressed(); break;
    case 8: panel.FastForwardReleased(); return;
    case 9:
        panel.Wind(dice.oneIn(2) ? 1 : -1, static_cast<WindStep>(dice.below(3)));
        winding = true;
        return;
    case 10: panel.WindReleased(); break;
    case 11: panel.SetLocation(static_cast<long>(dice.below(songLength)) - 100); break;
    case 12: panel.SetLoop(dice.below(songLength), dice.below(songLength)); return;
    case 13: panel.ShortCutLoopClicked(); return;
    case 14:
        relativeTempo = static_cast<int>(dice.below(3000)) - 500;
        panel.SetRelativeTempo(relativeTempo);
        return;
    default: panel.Start(); break;
    }
    winding = false;
}

void PanelStates::pressRecord()
{
    if (dice.oneIn(4))
        bench.panel.RecStop();
    else
        bench.panel.ShortCutRECClicked();
}

void PanelStates::changeSettings()
{
    auto& ints = bench.settings.ints;
    ints["System/Rec Mode"] = dice.oneIn(4);
    ints["System/Real Rec Mode"] = static_cast<int>(dice.below(3));
    ints["System/Real Rec Block Mode"] = dice.oneIn(2);
    ints["System/Real Rec Punch In Time"] = static_cast<int>(dice.below(songLength));
    ints["System/Real Rec Punch Out Time"] = static_cast<int>(dice.below(songLength));
    ints["System/Count In Meas"] = static_cast<int>(dice.below(3));
    ints["System/Count In Play"] = dice.oneIn(2);
    ints["RealtimeRec/Mute"] = dice.oneIn(2);
    bench.panel.SetMIDIChase(dice.oneIn(2));
    bench.editor.song().trk(static_cast<int>(dice.between(5, 8)))->SetRec(dice.oneIn(2));
    if (dice.oneIn(3)) {
        bench.panel.Stop();
        bench.loom.setLoomSyncMode(dice.oneIn(2));
    }
}

void PanelStates::hearNews()
{
    if (dice.oneIn(8)) {
        bench.main.send({msg::recordError, 0, 0});
        return;
    }
    constexpr std::uint8_t realtime[] = {0xFA, 0xFB, 0xFC};
    bench.receive(dice.oneIn(3) ? std::vector<std::uint8_t>{0xF2, dice.byteBelow(50), 0}
                                : std::vector{realtime[dice.below(3)]});
}

void PanelStates::edit()
{
    CEditor& editor = bench.editor;
    const int track = static_cast<int>(dice.between(1, 8));
    switch (dice.below(10)) {
    case 3: editor.SetTrkMute(track, dice.oneIn(2)); break;
    case 4: editor.SetTrkSolo(track, dice.oneIn(2)); break;
    case 5: editor.SetTrkCh(track, dice.byteBelow(3)); break;
    case 6: editor.SetTrkPort(track, dice.byteBelow(2)); break;
    case 7: bench.panel.SetTranspose(static_cast<int>(dice.below(25)) - 12); break;
    case 8: bench.panel.ShortCutMETRONOMEClicked(); break;
    case 0: editor.UndoNode(); break;
    case 1: {
        const UndoScope step(editor, "edit");
        EXPECT_EQ(static_cast<bool>(step), !bench.transport.isRecording() || bench.panel.IsStepRec());
        if (step) editor.BlkNew(editor.GetTrkPos(4), dice.below(songLength), songLength);
        break;
    }
    case 2: // one that fails half-way leaves the transport standing
        editor.StopSeq();
        if (!editor.IsUndoOpen()) editor.ErrCloseUndoNode();
        editor.PlaySeq();
        break;
    default:
        bench.transport.halt();
        bench.smc.smcBindSong(nullptr);
        press();
        pressRecord();
        EXPECT_FALSE(bench.panel.GetPlayBtn() || bench.panel.GetFastForward() || bench.panel.IsRecButton());
        bench.smc.smcBindSong(&editor);
        bench.panel.SetTop();
        relativeTempo = 0;
        winding = false;
    }
    editor.SetTrkOnOff();
}

void PanelStates::performAndWait()
{
    for (std::uint32_t n = dice.below(8); n > 0; --n) {
        const auto key = static_cast<std::uint8_t>(dice.between(58, 66));
        bench.receive({static_cast<std::uint8_t>(0x90U + dice.below(3)), key, dice.byteBelow(2)});
        if (bench.loom.getLoomSyncMode() == 1) bench.receive({0xF8});
        bench.run(std::chrono::milliseconds{dice.below(200)});
    }
}

void PanelStates::check()
{
    const CCnpWindow& panel = bench.panel;
    const RecState recording = bench.panel.recorder().state();
    const bool running = bench.smc.running();
    const bool steps = recording == RecState::recording && panel.IsStepRec();

    ASSERT_EQ(panel.GetPlayBtn() || panel.GetFastForward(), running || steps);
    ASSERT_EQ(seen.timer, running || steps);
    ASSERT_FALSE(running && steps);
    ASSERT_LE(bench.smc.smcPlayStatus(), running);
    ASSERT_EQ(panel.IsRecButton(), recording != RecState::idle);
    if (recording == RecState::armed) {
        ASSERT_FALSE(running) << "what plays is recorded at once";
    }
    ASSERT_EQ(bench.editor.IsUndoOpen(), recording == RecState::recording && !steps);
    ASSERT_LE(bench.editor.IsUndoOpen(), panel.GetPlayBtn());
    ASSERT_FALSE(panel.GetFastForward() && panel.IsRecButton());
    ASSERT_EQ(bench.loom.getLoomRelativeTempo(), panel.GetFastForward() ? 3000 : relativeTempo);
    if (steps) {
        ASSERT_EQ(panel.GetLocation(), bench.panel.recorder().stepTick());
    } else if (!running && !winding) {
        ASSERT_EQ(panel.GetLocation(), bench.smc.smcGetPlayCount());
    }
    ASSERT_NO_FATAL_FAILURE(listener.hear(bench.take()));
    if (!running) {
        ASSERT_EQ(listener.sounding(), 0);
    }
}

TEST_P(PanelStates, AgreeAfterAnySequenceOfCommands)
{
    for (int i = 0; i < 120; ++i) {
        switch (dice.below(10)) {
        case 0:
        case 1: pressRecord(); break;
        case 2: changeSettings(); break;
        case 3: hearNews(); break;
        case 4: edit(); break;
        default:
            do press(); // also before the main loop has heard of the one before
            while (dice.oneIn(3));
        }
        performAndWait();
        bench.run(std::chrono::milliseconds{20});
        bench.main.pump();
        bench.panel.timer();
        ASSERT_NO_FATAL_FAILURE(check()) << "after step " << i;
    }
    bench.panel.Stop();
    bench.run(std::chrono::milliseconds{20});
    winding = false;
    ASSERT_NO_FATAL_FAILURE(check());
    EXPECT_FALSE(bench.panel.GetPlayBtn() || bench.panel.GetFastForward() || bench.panel.IsRecButton());
}

INSTANTIATE_TEST_SUITE_P(Sequences, PanelStates, testing::Range(1U, 61U));

} // namespace
} // namespace tessaro::test
