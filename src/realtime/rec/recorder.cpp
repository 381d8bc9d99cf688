// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/recorder.h"

#include "realtime/play/smc.h"
#include "realtime/rec/blk_selection.h"
#include "realtime/rec/step_palette.h"

namespace tessaro {

struct Recorder::Parts {
    explicit Parts(const RecorderPorts& p) : ports(p) {}

    RecorderPorts ports;
    RecordSettings settings;
    RecState state = RecState::idle;
};

Recorder::Recorder(const RecorderPorts& ports) : m_parts(std::make_unique<Parts>(ports)) {}
Recorder::~Recorder() = default;

void Recorder::setSelection(BlkSelection*) noexcept {}
void Recorder::setPalette(StepPalette*) noexcept {}
void Recorder::setKeeper(TakeKeeper*) noexcept {}

RecState Recorder::state() const noexcept { return m_parts->state; }
bool Recorder::IsStepRec() const noexcept { return IsRecButton() && m_parts->settings.mode == RecMode::step; }
const CBlk* Recorder::GetRecBlk(POSITION) const { return nullptr; }
std::uint32_t Recorder::topTick() const noexcept { return 0; }
std::uint32_t Recorder::lastTick() const noexcept { return 0; }
bool Recorder::arm(MessageTarget&) { return false; }
bool Recorder::begin(std::uint32_t, const LoopRange&) { return false; }
void Recorder::received(const LoomRingEntry&) { m_parts->ports.smc.smcIncRrdpt(); }
void Recorder::passed(std::uint32_t, const LoopRange&) {}
void Recorder::end(const LoopRange&) {}
std::uint32_t Recorder::stepTick() const noexcept { return 0; }
void Recorder::setStepTick(std::uint32_t) noexcept {}
void Recorder::rest() {}
bool Recorder::restore(const std::string&) { return false; }

} // namespace tessaro
