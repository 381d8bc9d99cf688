// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/platform_midi.h"

#include "platform/audio/audio_chain.h"
#include "platform/audio/jack_audio.h"
#include "platform/audio/null_audio.h"
#include "platform/audio/rt_audio_out.h"
#include "platform/device_news.h"
#include "platform/jack/jack_client.h"
#include "platform/midi/alsa_midi.h"
#include "platform/midi/jack_midi.h"
#include "platform/midi/keyboard_port.h"
#include "platform/midi/loopback.h"
#include "platform/synth/live_synth.h"
#include "platform/watch.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace tessaro {

namespace {

constexpr const char* synthName = "Tessaro Synth";
constexpr auto watchInterval = std::chrono::milliseconds(100);

/// One of several handles on an open output.
class SharedOut final : public MidiOut {
public:
    explicit SharedOut(std::shared_ptr<MidiOut> out) : m_out(std::move(out)) {}
    bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override { return m_out->send(bytes, due); }
    [[nodiscard]] bool busy() const noexcept override { return m_out->busy(); }

private:
    std::shared_ptr<MidiOut> m_out;
};

/// A driver of the lists. The built-in synth has no backend.
struct Driver {
    std::string name;
    MidiBackend* backend = nullptr;
};

std::vector<std::string> namesOf(const std::vector<Driver>& drivers)
{
    std::vector<std::string> names;
    for (const Driver& driver : drivers) names.push_back(driver.name);
    return names;
}

Nanos steadyNow() { return std::chrono::steady_clock::now().time_since_epoch(); }

} // namespace

struct PlatformMidi::Parts {
    Parts(Clock& theClock, const PlatformOptions& theOptions);

    void refresh();
    std::vector<std::string> portNames();
    void look();
    void tell(Nanos now, bool changed);
    std::shared_ptr<MidiOut> openDriver(const Driver& driver);
    bool openSound();
    std::vector<AudioWay> audioWays();

    Clock& clock;
    const PlatformOptions options;
    std::unique_ptr<JackClient> jack;
    std::vector<std::unique_ptr<MidiBackend>> backends;
    KeyboardPort* keyboard = nullptr; ///< one of them
    std::shared_ptr<LiveSynth> synth;
    std::string synthTrouble;
    std::unique_ptr<AudioChain> chain;
    std::atomic<AudioChain*> polledChain{nullptr}; ///< shows the chain to the background thread

    mutable std::mutex lock; ///< of the backends' lists and of what follows
    std::vector<Driver> outs;
    std::vector<Driver> ins;
    std::map<std::string, std::weak_ptr<MidiOut>> open;
    DeviceNews news;
    MessageTarget* listener = nullptr;

    std::unique_ptr<Watch> watch; ///< the last to come, the first to go
};

PlatformMidi::Parts::Parts(Clock& theClock, const PlatformOptions& theOptions) : clock(theClock), options(theOptions)
{
    silenceAlsa();
    if (options.jack) {
        jack = std::make_unique<JackClient>(options.jackServer);
        backends.push_back(std::make_unique<JackMidi>(*jack, clock));
    }
    if (options.alsa) backends.push_back(std::make_unique<AlsaMidi>(alsaLibraryCalls(), clock));
    auto keys = std::make_unique<KeyboardPort>(clock);
    keyboard = keys.get();
    backends.push_back(std::move(keys));
    backends.push_back(std::make_unique<Loopback>());
    for (const auto& backend : backends) backend->poll(steadyNow());
    refresh();
    news.reset(portNames());
}

void PlatformMidi::Parts::refresh()
{
    outs = {{synthName, nullptr}};
    ins.clear();
    for (const auto& backend : backends) {
        for (std::string& name : backend->outputs()) outs.push_back({std::move(name), backend.get()});
        for (std::string& name : backend->inputs()) ins.push_back({std::move(name), backend.get()});
    }
}

std::vector<std::string> PlatformMidi::Parts::portNames()
{
    std::vector<std::string> names;
    for (const auto& backend : backends) {
        for (std::string& name : backend->outputs()) names.push_back("> " + std::move(name));
        for (std::string& name : backend->inputs()) names.push_back("< " + std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The errand of the background thread.
void PlatformMidi::Parts::look()
{
    const Nanos now = steadyNow();
    bool changed = false;
    for (const auto& backend : backends) changed |= backend->poll(now);
    tell(now, changed);
    if (AudioChain* polled = polledChain.load(std::memory_order_acquire)) polled->poll(now);
}

void PlatformMidi::Parts::tell(Nanos now, bool changed)
{
    const std::lock_guard guard(lock);
    const DeviceNews::Due due = changed ? news.look(now, portNames()) : news.look(now);
    if (!listener) return;
    if (due.removal) listener->post({.id = msg::devicesChanged, .wParam = DeviceNews::removal});
    if (due.arrival) listener->post({.id = msg::devicesChanged, .wParam = DeviceNews::arrival});
}

std::shared_ptr<MidiOut> PlatformMidi::Parts::openDriver(const Driver& driver)
{
    if (!driver.backend) return openSound() ? synth : nullptr;
    std::weak_ptr<MidiOut>& slot = open[driver.name];
    std::shared_ptr<MidiOut> out = slot.lock();
    if (!out) out = driver.backend->openOutput(driver.name);
    slot = out;
    return out;
}

// False when the synth cannot be had; a device it always gets.
bool PlatformMidi::Parts::openSound()
{
    if (chain) return true;
    std::unique_ptr<Synth> made = Synth::create({.soundFont = options.soundFont, .gain = options.gain}, synthTrouble);
    if (!made) return false;
    synthTrouble.clear();
    synth = std::make_shared<LiveSynth>(std::move(made));
    chain = std::make_unique<AudioChain>(audioWays(), *synth);
    polledChain.store(chain.get(), std::memory_order_release);
    if (watch) watch->wake();
    return true;
}

std::vector<AudioWay> PlatformMidi::Parts::audioWays()
{
    std::vector<AudioWay> ways;
    if (jack) ways.push_back({"JACK", [this] { return JackAudio::open(*jack, clock); }});
    if (options.soundDevices) {
        ways.push_back({"PulseAudio", [this] { return RtAudioOut::open(SoundService::pulse, clock); }});
        ways.push_back({"ALSA", [this] { return RtAudioOut::open(SoundService::alsa, clock); }});
    }
    ways.push_back({"", [this] { return std::make_unique<NullAudio>(clock); }});
    return ways;
}

PlatformMidi::PlatformMidi(Clock& clock, const PlatformOptions& options)
    : m_parts(std::make_unique<Parts>(clock, options))
{
    if (options.openSoundAtOnce) m_parts->openSound();
    m_parts->watch = std::make_unique<Watch>(watchInterval, [parts = m_parts.get()] { parts->look(); });
}

PlatformMidi::~PlatformMidi() = default;

void PlatformMidi::refresh()
{
    const std::lock_guard guard(m_parts->lock);
    m_parts->refresh();
}

std::vector<std::string> PlatformMidi::outputs() const { return namesOf(m_parts->outs); }

std::vector<std::string> PlatformMidi::inputs() const { return namesOf(m_parts->ins); }

bool PlatformMidi::sounds(std::size_t driver) const
{
    const std::lock_guard guard(m_parts->lock);
    if (driver >= m_parts->outs.size()) return false;
    const Driver& asked = m_parts->outs[driver];
    return !asked.backend || asked.backend->sounds(asked.name);
}

TypedKeys& PlatformMidi::typedKeys() noexcept { return *m_parts->keyboard; }

std::unique_ptr<MidiOut> PlatformMidi::openOutput(std::size_t driver)
{
    const std::lock_guard guard(m_parts->lock);
    if (driver >= m_parts->outs.size()) return nullptr;
    std::shared_ptr<MidiOut> out = m_parts->openDriver(m_parts->outs[driver]);
    return out ? std::make_unique<SharedOut>(std::move(out)) : nullptr;
}

std::unique_ptr<MidiIn> PlatformMidi::openInput(std::size_t driver, MidiInSink& sink, std::size_t)
{
    const std::lock_guard guard(m_parts->lock);
    if (driver >= m_parts->ins.size()) return nullptr;
    const Driver& chosen = m_parts->ins[driver];
    return chosen.backend->openInput(chosen.name, sink);
}

std::vector<std::string> PlatformMidi::waveOutputs() const
{
    std::vector<std::string> names =
        m_parts->options.soundDevices ? listSoundDevices().outputs : std::vector<std::string>();
    if (m_parts->jack && m_parts->jack->running()) names.insert(names.begin(), "JACK");
    return names;
}

std::vector<std::string> PlatformMidi::waveInputs() const
{
    std::vector<std::string> names =
        m_parts->options.soundDevices ? listSoundDevices().inputs : std::vector<std::string>();
    if (m_parts->jack && m_parts->jack->running()) names.insert(names.begin(), "JACK");
    return names;
}

void PlatformMidi::setChangeListener(MessageTarget* target)
{
    const std::lock_guard guard(m_parts->lock);
    m_parts->listener = target;
}

SoundStatus PlatformMidi::soundStatus() const
{
    const std::lock_guard guard(m_parts->lock);
    if (m_parts->chain) return m_parts->chain->status();
    if (!m_parts->synthTrouble.empty()) return {.state = SoundState::none, .trouble = m_parts->synthTrouble};
    return {};
}

std::vector<std::string> PlatformMidi::midiServices() const
{
    const std::lock_guard guard(m_parts->lock);
    std::vector<std::string> services;
    for (const auto& backend : m_parts->backends)
        if (std::string service = backend->service(); !service.empty()) services.push_back(std::move(service));
    return services;
}

std::string PlatformMidi::sentence() const
{
    std::string services;
    for (const std::string& service : midiServices()) services += (services.empty() ? "" : " and ") + service;
    return sentenceOf(soundStatus()) + "; " + (services.empty() ? "no MIDI service was found" : "MIDI: " + services)
         + ".";
}

bool PlatformMidi::waitForSound(Nanos atMost)
{
    {
        const std::lock_guard guard(m_parts->lock);
        if (!m_parts->openSound()) return false;
    }
    for (const Nanos end = steadyNow() + atMost; !m_parts->chain->flowing();) {
        if (steadyNow() >= end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace tessaro
