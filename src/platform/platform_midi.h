// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "base/messages.h"
#include "platform/audio/sound_status.h"
#include "realtime/loom/midi_system.h"

#include <memory>
#include <string>
#include <vector>

namespace tessaro {

class TypedKeys;

/// What PlatformMidi looks for, and where.
struct PlatformOptions {
    std::string soundFont{};      ///< file name; empty: the first General MIDI SoundFont found in the usual folders
    std::string jackServer{};     ///< name of a JACK server; empty: the default one
    double gain = 0.4;            ///< of the built-in synth, 0 to 10
    bool jack = true;             ///< MIDI and sound through JACK where a server runs
    bool alsa = true;             ///< ports of the ALSA sequencer
    bool soundDevices = true;     ///< false: the synth plays to JACK or to nothing
    bool openSoundAtOnce = false; ///< false: the audio device opens when the built-in synth is first opened
};

/// All MIDI devices of the machine as one pair of lists. Output driver 0 is always the built-in synth; behind
/// it stand JACK's ports, those of the ALSA sequencer, among the inputs the computer's keyboard, and an in-process
/// loopback as the last. Two opens of one output share it. User interface thread; an own background thread notices what
/// comes and goes. Outlives what it has opened. A library, server or device that is missing is told in sentence() and
/// is no failure.
class TESSARO_API PlatformMidi : public MidiSystem {
public:
    explicit PlatformMidi(Clock& clock, const PlatformOptions& options = {});
    ~PlatformMidi() override;
    PlatformMidi(const PlatformMidi&) = delete;
    PlatformMidi& operator=(const PlatformMidi&) = delete;

    void refresh() override;
    [[nodiscard]] std::vector<std::string> outputs() const override;
    [[nodiscard]] std::vector<std::string> inputs() const override;
    [[nodiscard]] bool sounds(std::size_t driver) const override;
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& sink,
                                                    std::size_t bufferSize) override;

    /// The input that the program plays from the computer's keyboard.
    [[nodiscard]] TypedKeys& typedKeys() noexcept;

    /// Names of the audio devices, as of this call. May take a few tenths of a second.
    [[nodiscard]] std::vector<std::string> waveOutputs() const;
    [[nodiscard]] std::vector<std::string> waveInputs() const;

    /// Who is told of MIDI devices that come and go: msg::devicesChanged with wParam 0x8004 as soon as one is gone, and
    /// with 0x8000 once nothing has come or gone for a third of a second, at the latest 2 seconds after the first
    /// change; also behind a removal, for what still stands. Null for nobody. The target outlives this object, or is
    /// taken away before it goes.
    void setChangeListener(MessageTarget* target);

    /// Which sound is in use, and which MIDI services, as "JACK". Any thread but a real-time one.
    [[nodiscard]] SoundStatus soundStatus() const;
    [[nodiscard]] std::vector<std::string> midiServices() const;
    /// Both in one English sentence. Any thread but a real-time one.
    [[nodiscard]] std::string sentence() const;
    /// Opens the audio device and waits until frames flow, at most this long. False when none does.
    bool waitForSound(Nanos atMost);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace tessaro
