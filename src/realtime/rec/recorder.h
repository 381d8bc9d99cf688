// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "realtime/play/joins.h"
#include "realtime/rec/record_settings.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tessaro {

class BlkSelection;
class CBlk;
class CEditor;
class Clock;
class FileOps;
class MessageTarget;
class SettingsStore;
class Smc;
class StepPalette;
class Strings;
class TakeKeeper;
class UserPort;
struct LoomRingEntry;

/// All that recording asks of its surroundings; everything outlives it.
struct RecorderPorts {
    Smc& smc;
    Clock& clock;
    SettingsStore& profile; ///< section System
    UserPort& user;
    const Strings& strings;
    FileOps* disk = nullptr; ///< null for the machine's own
};

/// The loop as the control panel has it; song ticks.
struct LoopRange {
    bool on = false;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

enum class RecState { idle, armed, recording };

/// Recording, from the record button to the finished take: arms, takes what the engine received into blocks of the
/// armed tracks while the song plays, or steps on note by note while nothing plays. A real-time take is one editing
/// step, open as long as the take runs; everything received is written to a journal as well, so that a take
/// survives the program's sudden end. User interface thread; song ticks.
class TESSARO_API Recorder final : public TakeInfo {
public:
    explicit Recorder(const RecorderPorts& ports);
    ~Recorder() override;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Null for none; otherwise borrowed until replaced. Not while a take runs.
    void setSelection(BlkSelection* selection) noexcept;
    void setPalette(StepPalette* palette) noexcept;
    void setKeeper(TakeKeeper* keeper) noexcept;

    [[nodiscard]] RecState state() const noexcept;
    /// Armed or recording.
    [[nodiscard]] bool IsRecButton() const noexcept { return state() != RecState::idle; }
    /// The same, in step input.
    [[nodiscard]] bool IsStepRec() const noexcept;
    [[nodiscard]] bool recordsInTime() const override { return IsRecButton() && !IsStepRec(); }
    /// The block that a take fills on this track, null for none.
    [[nodiscard]] const CBlk* GetRecBlk(POSITION trk) const override;
    /// Where the take began; its highest tick so far.
    [[nodiscard]] std::uint32_t topTick() const noexcept;
    [[nodiscard]] std::uint32_t lastTick() const noexcept;

    /// The record button goes on: what comes in goes to `owner` as message 0x432. False without a song or an armed
    /// track, the latter after saying so.
    bool arm(MessageTarget& owner);
    /// The armed recorder starts, with the song at `tick`: a real-time take, before the transport runs, or step input.
    /// False when there is no block to record into; then it is idle again.
    bool begin(std::uint32_t tick, const LoopRange& loop);
    /// Message 0x432: takes the entry in and frees it. In any state.
    void received(const LoomRingEntry& entry);
    /// The play position has come to `tick`; now and then while a take runs.
    void passed(std::uint32_t tick, const LoopRange& loop);
    /// Ends whatever runs. The transport has stopped, or goes on behind the end of the editing step.
    void end(const LoopRange& loop);

    /// Step input: where the next note goes, and a rest.
    [[nodiscard]] std::uint32_t stepTick() const noexcept;
    void setStepTick(std::uint32_t tick) noexcept;
    void rest();

    /// Records what a journal holds into the song at hand, from whose copy it was taken, as the take would have been
    /// had it ended where the journal ends. The journal stays, it goes with that copy. False when it cannot be read.
    bool restore(const std::string& journal);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace tessaro
