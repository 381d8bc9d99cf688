// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/play/play_bench.h"
#include "realtime/rec/blk_selection.h"
#include "realtime/rec/literal_take.h"

#include <deque>
#include <string>
#include <vector>

namespace tessaro::test {

/// Blocks that are selected, and what became of them.
class FakeSelection final : public BlkSelection {
public:
    std::vector<std::pair<POSITION, POSITION>> selected;
    std::vector<POSITION> marked;

    [[nodiscard]] std::vector<POSITION> selectedBlks(POSITION trk) const override
    {
        std::vector<POSITION> blks;
        for (const auto& [onTrk, blk] : selected)
            if (onTrk == trk) blks.push_back(blk);
        return blks;
    }
    void selectBlk(POSITION trk, POSITION blk) override { selected.emplace_back(trk, blk); }
    void deselectAll() override { selected.clear(); }
    void markRecBlk(POSITION, POSITION blk) override { marked.push_back(blk); }
};

/// A bench with an input that is played on, the panel's recorder driven by hand, and notes of all that it was told.
struct RecordBench : PlayBench {
    /// Takes the recorder's messages in place of the main loop; they wait for `pump`.
    struct Inbox final : MessageTarget {
        std::deque<const LoomRingEntry*> waiting;
        bool post(const Message& message) noexcept override
        {
            if (message.id == msg::data) waiting.push_back(reinterpret_cast<const LoomRingEntry*>(message.lParam));
            return true;
        }
        void send(const Message&) override {}
    };

    Inbox inbox;
    FakeSelection selection;
    Recorder& recorder = panel.recorder();
    Performance told;

    RecordBench()
    {
        smc.setInPort(0, 4096);
        recorder.setSelection(&selection);
    }
    ~RecordBench()
    {
        smc.smcPlayStop();
        smc.smcSetRecOwner(nullptr);
    }

    /// One tick a millisecond, and something to play on each, so that the position moves tick by tick.
    void plainTime()
    {
        CBlk& blk = block(100);
        for (std::uint32_t tick = 0; tick < 2500; ++tick) add(blk, 0xD0, tick, {1});
        const std::uint8_t tempo[] = {0x07, 0x53, 0x00};
        editor.AddTempo(0, tempo);
    }
    void armTracks(const std::vector<int>& tracks)
    {
        told.tracks = tracks;
        for (const int track : tracks) {
            if (editor.song().trk(track)->GetType() == trktype::unused) editor.SetTrkTypePrivate(track, trktype::midi);
            editor.SetTrkRec(track, true);
        }
    }
    /// Arms and starts a take at `top`; the song does not play yet.
    bool begin(std::uint32_t top, const LoopRange& loop = {})
    {
        told.settings = RecordSettings::read(settings);
        told.top = top;
        told.loop = loop;
        told.inFilter = smc.inFilter();
        for (unsigned n = 0; n < 128; ++n) told.dropController[n] = smc.dropsController(n);
        smc.smcLocate(top, false);
        if (!recorder.arm(inbox) || !recorder.begin(top, loop)) return false;
        smc.smcSetLoopStart(loop.start);
        smc.smcSetLoopEnd(loop.on ? loop.end : loop.start);
        return true;
    }
    void play(const std::vector<std::uint8_t>& bytes)
    {
        constexpr std::size_t slice = 200; // of a system exclusive
        for (std::size_t at = 0; at < bytes.size(); at += slice)
            midi.sink->received(std::span{bytes}.subspan(at, std::min(slice, bytes.size() - at)), clock.now());
    }
    /// Hands over up to `most` messages, in order.
    void pump(std::size_t most = 1000)
    {
        for (; most > 0 && !inbox.waiting.empty(); --most) {
            const LoomRingEntry* entry = inbox.waiting.front();
            inbox.waiting.pop_front();
            note(*entry);
            m_next = indexOf(entry) + 1U;
            recorder.received(*entry);
        }
    }
    void passed(std::uint32_t tick)
    {
        told.items.push_back({.passed = true, .tick = tick, .bytes = {}});
        recorder.passed(tick, told.loop);
    }
    /// Ends the take as it stands, with what has not been handed over yet.
    void end()
    {
        smc.smcRecStop();
        for (; m_next % loomRingEntries != loom.getLoomWrdpt(); ++m_next)
            note(loom.getLoomRecdata()[m_next % loomRingEntries]);
        told.stop = smc.smcGetPlayCount();
        recorder.end(told.loop);
        ended = true;
    }
    bool ended = false;

private:
    [[nodiscard]] unsigned indexOf(const LoomRingEntry* entry) const
    {
        return static_cast<unsigned>(entry - loom.getLoomRecdata());
    }
    void note(const LoomRingEntry& entry)
    {
        if (ended) return;
        const bool isLong = entry.status >= 0xF0;
        const std::uint32_t size = entry.status == 0xF0 ? entry.length : entry.size;
        told.items.push_back(
            {.tick = entry.time,
             .status = entry.status,
             .data1 = entry.data1,
             .data2 = isLong ? std::uint8_t{0} : entry.data2,
             .bytes = isLong ? std::vector(entry.data, entry.data + size) : std::vector<std::uint8_t>{}});
    }

    unsigned m_next = 0;
};

} // namespace tessaro::test
