// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/synth/low_drum_keys.h"
#include "platform/synth/synth_options.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tessaro {

/// The built-in General MIDI synth: takes MIDI bytes and renders frames. A message takes effect at the frame
/// rendered next, so its owner renders up to the place of a message first. That place lies on a grid of 64
/// frames. Drum keys below those of General MIDI sound as their like where the SoundFont has nothing for them, so that
/// the usual metronome is heard. One owner thread at a time. After creation only rendering allocates, a little, inside
/// the library.
class Synth {
public:
    static constexpr std::size_t grid = 64; ///< frames

    /// Null, and a plain reason in `why`, when there is no usable SoundFont.
    [[nodiscard]] static std::unique_ptr<Synth> create(const SynthOptions& options, std::string& why);
    ~Synth();
    Synth(const Synth&) = delete;
    Synth& operator=(const Synth&) = delete;

    /// The frame on the grid that is nearest to this time after frame 0; 0 for times before it.
    [[nodiscard]] static std::uint64_t gridFrame(double seconds, unsigned rate) noexcept;

    /// One message with its status byte, or a slice of a system exclusive. Unknown ones are ignored.
    void apply(std::span<const std::uint8_t> message) noexcept;
    /// `frames` is a multiple of the grid.
    void render(float* left, float* right, std::size_t frames) noexcept;
    void renderInterleaved(float* frames, std::size_t count) noexcept;

    [[nodiscard]] std::uint64_t position() const noexcept { return m_position; } ///< frames rendered so far
    [[nodiscard]] int voices() const noexcept;                                   ///< sounding now
    /// False for a rate that the synth cannot do. Keeps programs and controllers; `position` goes on.
    bool setRate(unsigned rate) noexcept;
    [[nodiscard]] unsigned rate() const noexcept { return m_rate; }
    [[nodiscard]] const std::string& soundFont() const noexcept { return m_soundFont; }

private:
    struct Library;
    Synth(std::unique_ptr<Library> library, const SynthOptions& options);
    void noteOn(int channel, int key, int velocity) noexcept;
    void noteOff(int channel, int key) noexcept;
    bool starts(int channel, int key, int velocity) noexcept;
    [[nodiscard]] bool playsDrums(int channel) const noexcept;
    void collectSysex(std::span<const std::uint8_t> slice) noexcept;
    void applySysex(std::span<const std::uint8_t> body) noexcept;
    void setMasterVolume(int volume14) noexcept;

    std::unique_ptr<Library> m_library;
    std::string m_soundFont;
    unsigned m_rate;
    double m_gain;
    std::uint64_t m_position = 0;
    std::array<std::uint8_t, 1024> m_sysex{}; ///< without 0xF0 and 0xF7; longer ones mean nothing to the synth
    std::size_t m_sysexSize = 0;
    bool m_inSysex = false;
    std::array<std::array<std::uint8_t, lowestDrumKey>, 16> m_soundsAs{}; ///< key that sounds for another; 0 for itself
};

} // namespace tessaro
