// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "platform/synth/synth_options.h"
#include "realtime/loom/midi_system.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

/// The built-in synth as the only MIDI device of a machine without time: output 0 collects messages, and the
/// caller renders them in step with its clock, each on the synth's 64-frame grid. The same messages give the
/// same frames. One thread renders; `send` may come from another one.
class TESSARO_API OfflineRenderer : public MidiSystem {
public:
    /// Takes rendered stereo frames, left and right in turn. False ends the rendering.
    using FrameSink = std::function<bool(std::span<const float> interleaved)>;

    /// Null, and a plain reason in `why`, when the SoundFont cannot be used.
    [[nodiscard]] static std::unique_ptr<OfflineRenderer> create(const SynthOptions& options, std::string& why);
    ~OfflineRenderer() override;

    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override;
    [[nodiscard]] std::vector<std::string> inputs() const override { return {}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink&, std::size_t) override;

    /// Time 0 of the rendering on the clock that stamps the messages; 0 when never called.
    void setStart(Nanos start) noexcept;
    /// Renders what lies before `until`, on the clock that stamps the messages. To be called at least once in
    /// every few milliseconds of that clock: the messages of the time between wait in a buffer of 4 MiB. False
    /// when the sink refused.
    bool renderUntil(Nanos until, const FrameSink& sink);
    /// Renders on until all has faded to silence, at most `longest`.
    bool renderTail(const FrameSink& sink, Nanos longest = std::chrono::seconds(4));

    [[nodiscard]] std::uint64_t frames() const noexcept; ///< rendered so far
    [[nodiscard]] unsigned rate() const noexcept;
    [[nodiscard]] std::string soundFont() const; ///< the file in use

private:
    struct State;
    explicit OfflineRenderer(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

} // namespace tessaro
