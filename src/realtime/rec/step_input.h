// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "realtime/rec/recorder.h"
#include "realtime/rec/step_palette.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

class CBlk;
class CEditor;
class Smc;
class Strings;
struct LoomRingEntry;

/// Step input: notes are entered one after another while nothing plays. The keys that were pressed together become one
/// chord when the last of them is released, each chord an editing step of its own; length, velocity and the way to the
/// next chord are the palette's. User interface thread; song ticks.
class TESSARO_API StepInput {
public:
    /// Both outlive it.
    StepInput(Smc& smc, const Strings& strings) : m_smc(smc), m_strings(strings) {}

    /// Null for the usual choice; otherwise borrowed until replaced.
    void setPalette(StepPalette* palette) noexcept { m_palette = palette ? palette : &m_usual; }

    /// Begins at `tick` on the first armed MIDI track of the song, in the block that stands there, or in a new one.
    /// False without such a track, and when no block can be made.
    bool begin(std::uint32_t tick, const LoopRange& loop);
    /// Takes in what was received, of which only notes count; the entry stays the caller's.
    void received(const LoomRingEntry& entry);
    /// Leaves one step empty.
    void rest() { advance(); }
    /// The song goes to where the next note would have gone.
    void end();

    [[nodiscard]] std::uint32_t tick() const noexcept { return m_tick; }
    void setTick(std::uint32_t tick) noexcept { m_tick = tick; }
    /// The block that the last note went to, null for any other track and when it is gone.
    [[nodiscard]] const CBlk* GetRecBlk(POSITION trk) const;

private:
    struct Key {
        std::uint8_t status = 0; ///< 0x90 and the channel; 0 for none
        std::uint8_t note = 0;
        bool operator==(const Key&) const = default;
    };
    static constexpr std::size_t mostKeys = 128;

    void press(const Key& key);
    void release(const Key& key);
    bool enterChord();
    void advance();
    [[nodiscard]] bool findBlk();
    bool makeBlk();
    bool makeFirstBlk();

    Smc& m_smc;
    const Strings& m_strings;
    StepChoice m_usual;
    StepPalette* m_palette = &m_usual;

    CEditor* m_editor = nullptr; ///< null while no step input runs
    POSITION m_trk = nullptr;
    POSITION m_blk = nullptr; ///< may be gone
    std::uint32_t m_tick = 0;
    LoopRange m_loop;
    std::vector<Key> m_recNotes; ///< pressed
    std::vector<Key> m_recChord; ///< released, waiting for the last one
};

} // namespace tessaro
