// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/play/play_bench.h"

#include <gtest/gtest.h>

namespace tessaro::test {

/// What the panel shows.
struct PanelLog final : CnpObserver {
    std::vector<std::uint32_t> locations;
    std::vector<std::string> texts;
    int tempo = 0;
    int changes = 0;
    bool timer = false;
    void stateChanged() override { ++changes; }
    void locationShown(std::uint32_t tick) override { locations.push_back(tick); }
    void textShown(const std::string& text) override { texts.push_back(text); }
    void tempoShown(int value) override { tempo = value; }
    void timerWanted(bool on) override
    {
        EXPECT_NE(timer, on) << "the timer is asked for once";
        timer = on;
    }
    void busy(bool) override {}
};

struct ViewLog final : MessageTarget {
    std::vector<std::pair<std::uint32_t, std::uint64_t>> got;
    bool post(const Message&) noexcept override { return false; }
    void send(const Message& m) override { got.emplace_back(m.id, m.wParam); }
};

/// A panel over a song of 19,200 ticks on track 1, a note every eighth; track 2 is empty.
class PanelTest : public testing::Test {
protected:
    PanelTest()
    {
        CBlk& blk = bench.block(1);
        for (std::uint32_t t = 0; t < 19200; t += 240) bench.addNote(blk, t, 200);
        bench.bind();
        bench.panel.setObserver(&seen);
        bench.panel.addView(&view);
    }
    ~PanelTest() override { bench.panel.setObserver(nullptr); }

    void play(std::chrono::milliseconds span)
    {
        using namespace std::chrono_literals;
        for (; span > 0ms; span -= 100ms) {
            bench.run(100ms);
            bench.main.pump();
            bench.panel.timer();
        }
    }
    void tell(std::uint64_t code, std::intptr_t parameter = 0) { bench.main.send({msg::realtime, code, parameter}); }
    void armTrack(int track) { bench.editor.song().trk(track)->SetRec(true); }
    void playKey(std::uint8_t key)
    {
        bench.receive({0x90, key, 100});
        bench.run(std::chrono::milliseconds{50});
        bench.receive({0x90, key, 0});
        bench.run(std::chrono::milliseconds{20});
        bench.main.pump();
    }
    [[nodiscard]] std::uint32_t blocksOn(int track) { return bench.editor.song().trk(track)->GetCount(); }

    PlayBench bench;
    PanelLog seen;
    ViewLog view;
};

} // namespace tessaro::test
