// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/audio/audio_out.h"
#include "platform/midi/timed_messages.h"
#include "platform/synth/synth.h"
#include "realtime/loom/midi_system.h"

#include <array>

namespace tessaro {

/// The built-in synth as a live instrument: a MIDI output for the engine's thread and a source of sound for an
/// audio device. Each message sounds at its due time plus one latency that stays the same while the device does;
/// the device's thread owns the synth.
class LiveSynth final : public MidiOut, public AudioSource {
public:
    explicit LiveSynth(std::unique_ptr<Synth> synth);

    bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override;
    [[nodiscard]] bool busy() const noexcept override { return m_ring.holdsSysex(); }

    bool prepare(unsigned rate, std::size_t period) override;
    void render(float* left, float* right, std::size_t frames, Nanos when) noexcept override;

    /// From the due time of a message to the time of its frame.
    [[nodiscard]] Nanos latency() const noexcept { return m_latency; }

private:
    std::size_t takeCarry(float* left, float* right, std::size_t frames) noexcept;
    void applyDue(Nanos when, std::uint64_t firstFrame) noexcept;
    [[nodiscard]] std::uint64_t placeOf(Nanos due, Nanos when, std::uint64_t firstFrame) const noexcept;
    void renderMore(float* left, float* right, std::size_t frames, std::size_t& done) noexcept;

    std::unique_ptr<Synth> m_synth;
    TimedMessages m_ring;
    Nanos m_latency{};
    std::uint64_t m_nextEvent = 0; ///< frame of the next waiting message
    // The end of a rendered grid block that the device has not asked for yet.
    std::array<float, Synth::grid> m_carryLeft{};
    std::array<float, Synth::grid> m_carryRight{};
    std::size_t m_carried = 0; ///< frames, at the arrays' end
};

} // namespace tessaro
