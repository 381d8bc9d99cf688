// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/synth/synth.h"

#include "platform/synth/sound_font.h"

#include <fluidsynth.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string_view>
#include <utility>

namespace tessaro {

namespace {

constexpr unsigned lowestRate = 8000;
constexpr unsigned highestRate = 96000;
constexpr int fullVolume = 0x3FFF;

struct SettingsDeleter {
    void operator()(fluid_settings_t* settings) const noexcept { delete_fluid_settings(settings); }
};
struct SynthDeleter {
    void operator()(fluid_synth_t* synth) const noexcept { delete_fluid_synth(synth); }
};
using Settings = std::unique_ptr<fluid_settings_t, SettingsDeleter>;

Settings makeSettings(const SynthOptions& options)
{
    for (const int level : {FLUID_PANIC, FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG})
        fluid_set_log_function(level, nullptr, nullptr);
    Settings settings(new_fluid_settings());
    if (!settings) return settings;
    fluid_settings_t* s = settings.get();
    fluid_settings_setint(s, "synth.device-id", 16); // the one that reset messages are addressed to
    fluid_settings_setint(s, "synth.threadsafe-api", 0);
    fluid_settings_setint(s, "synth.lock-memory", 0);
    fluid_settings_setint(s, "synth.midi-channels", 16);
    fluid_settings_setnum(s, "synth.sample-rate", options.rate);
    fluid_settings_setnum(s, "synth.gain", options.gain);
    fluid_settings_setint(s, "synth.reverb.active", options.reverb);
    fluid_settings_setint(s, "synth.chorus.active", options.chorus);
    return settings;
}

bool looksLikeSoundFont(const std::string& path)
{
    std::array<char, 12> head{};
    std::ifstream file(path, std::ios::binary);
    return file.read(head.data(), head.size()) && std::string_view(head.data(), 4) == "RIFF"
        && std::string_view(head.data() + 8, 4) == "sfbk";
}

bool startsWith(std::span<const std::uint8_t> bytes, std::initializer_list<int> pattern)
{
    constexpr int any = -1;
    return bytes.size() >= pattern.size()
        && std::equal(pattern.begin(), pattern.end(), bytes.begin(), [](int p, int b) { return p == any || p == b; });
}

} // namespace

struct Synth::Library {
    Settings settings; // outlives the synth
    std::unique_ptr<fluid_synth_t, SynthDeleter> synth;
};

std::unique_ptr<Synth> Synth::create(const SynthOptions& options, std::string& why)
{
    SynthOptions chosen = options;
    if (chosen.soundFont.empty()) chosen.soundFont = findSoundFont();
    if (chosen.soundFont.empty()) {
        why = "no SoundFont was found in /usr/share/sounds/sf2";
        return nullptr;
    }
    if (chosen.rate < lowestRate || chosen.rate > highestRate) {
        why = "the synth cannot play at " + std::to_string(chosen.rate) + " Hz";
        return nullptr;
    }
    if (!looksLikeSoundFont(chosen.soundFont)) {
        why = chosen.soundFont + " is not a SoundFont";
        return nullptr;
    }
    auto library = std::make_unique<Library>();
    library->settings = makeSettings(chosen);
    if (library->settings) library->synth.reset(new_fluid_synth(library->settings.get()));
    if (!library->synth) {
        why = "the synth cannot be started";
        return nullptr;
    }
    if (fluid_synth_sfload(library->synth.get(), chosen.soundFont.c_str(), 1) == FLUID_FAILED) {
        why = "the SoundFont " + chosen.soundFont + " cannot be used";
        return nullptr;
    }
    return std::unique_ptr<Synth>(new Synth(std::move(library), chosen));
}

Synth::Synth(std::unique_ptr<Library> library, const SynthOptions& options)
    : m_library(std::move(library))
    , m_soundFont(options.soundFont)
    , m_rate(options.rate)
    , m_gain(options.gain)
{
}

Synth::~Synth() = default;

std::uint64_t Synth::gridFrame(double seconds, unsigned rate) noexcept
{
    const double blocks = std::floor(seconds * rate / grid + 0.5);
    return blocks <= 0 ? 0 : static_cast<std::uint64_t>(blocks) * grid;
}

void Synth::apply(std::span<const std::uint8_t> message) noexcept
{
    if (message.empty() || message[0] >= 0xF8) return;
    if (message[0] < 0x80 || message[0] == 0xF0 || message[0] == 0xF7) return collectSysex(message);
    m_inSysex = false;
    const int kind = message[0] & 0xF0;
    const int channel = message[0] & 0x0F;
    const std::size_t length = kind == 0xC0 || kind == 0xD0 ? 2 : 3;
    if (kind == 0xF0 || message.size() < length) return;
    const int data1 = message[1] & 0x7F;
    const int data2 = length > 2 ? message[2] & 0x7F : 0;
    fluid_synth_t* synth = m_library->synth.get();
    switch (kind) {
    case 0x80: noteOff(channel, data1); break;
    case 0x90: noteOn(channel, data1, data2); break;
    case 0xA0: fluid_synth_key_pressure(synth, channel, data1, data2); break;
    case 0xB0: fluid_synth_cc(synth, channel, data1, data2); break;
    case 0xC0: fluid_synth_program_change(synth, channel, data1); break;
    case 0xD0: fluid_synth_channel_pressure(synth, channel, data1); break;
    default: fluid_synth_pitch_bend(synth, channel, data1 | data2 << 7); break;
    }
}

void Synth::noteOn(int channel, int key, int velocity) noexcept
{
    if (velocity == 0) return noteOff(channel, key);
    if (starts(channel, key, velocity) || key >= lowestDrumKey || !playsDrums(channel)) return;
    for (const std::uint8_t like : drumKeysLike(key)) {
        if (!starts(channel, like, velocity)) continue;
        m_soundsAs[static_cast<std::size_t>(channel)][static_cast<std::size_t>(key)] = like;
        return;
    }
}

void Synth::noteOff(int channel, int key) noexcept
{
    fluid_synth_t* synth = m_library->synth.get();
    fluid_synth_noteoff(synth, channel, key);
    if (key >= lowestDrumKey) return;
    std::uint8_t& like = m_soundsAs[static_cast<std::size_t>(channel)][static_cast<std::size_t>(key)];
    if (like != 0) fluid_synth_noteoff(synth, channel, std::exchange(like, std::uint8_t{0}));
}

// Whether the SoundFont has a sound for the key.
bool Synth::starts(int channel, int key, int velocity) noexcept
{
    const int before = voices();
    fluid_synth_noteon(m_library->synth.get(), channel, key, velocity);
    return voices() > before;
}

bool Synth::playsDrums(int channel) const noexcept
{
    constexpr int drumBank = 128;
    int font = 0;
    int bank = 0;
    int program = 0;
    fluid_synth_get_program(m_library->synth.get(), channel, &font, &bank, &program);
    return bank == drumBank;
}

void Synth::collectSysex(std::span<const std::uint8_t> slice) noexcept
{
    if (slice[0] == 0xF0) {
        m_inSysex = true;
        m_sysexSize = 0;
    }
    for (const std::uint8_t byte : slice) {
        if (byte == 0xF0 || !m_inSysex) continue;
        if (byte == 0xF7) {
            if (slice.front() == 0xF7 && &byte == &slice.front() && slice.size() > 1) continue; // marks a later slice
            m_inSysex = false;
            if (m_sysexSize <= m_sysex.size()) applySysex({m_sysex.data(), m_sysexSize});
        } else if (byte < 0x80) {
            if (m_sysexSize < m_sysex.size()) m_sysex[m_sysexSize] = byte;
            ++m_sysexSize;
        }
    }
}

void Synth::applySysex(std::span<const std::uint8_t> body) noexcept
{
    if (startsWith(body, {0x7F, -1, 0x04, 0x01, -1, -1})) {
        setMasterVolume(body[4] | body[5] << 7);
        return;
    }
    if (startsWith(body, {0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x04, -1})) {
        setMasterVolume(body[7] * fullVolume / 0x7F);
        return;
    }
    const bool resets = startsWith(body, {0x7E, -1, 0x09})
                     || startsWith(body, {0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F})
                     || startsWith(body, {0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E});
    if (resets) setMasterVolume(fullVolume);
    int handled = 0;
    fluid_synth_sysex(m_library->synth.get(), reinterpret_cast<const char*>(body.data()), static_cast<int>(body.size()),
                      nullptr, nullptr, &handled, 0);
}

// The usual curve: 40 dB for each factor of 10.
void Synth::setMasterVolume(int volume14) noexcept
{
    const double part = static_cast<double>(volume14) / fullVolume;
    fluid_synth_set_gain(m_library->synth.get(), static_cast<float>(m_gain * part * part));
}

void Synth::render(float* left, float* right, std::size_t frames) noexcept
{
    fluid_synth_write_float(m_library->synth.get(), static_cast<int>(frames), left, 0, 1, right, 0, 1);
    m_position += frames;
}

void Synth::renderInterleaved(float* frames, std::size_t count) noexcept
{
    fluid_synth_write_float(m_library->synth.get(), static_cast<int>(count), frames, 0, 2, frames, 1, 2);
    m_position += count;
}

int Synth::voices() const noexcept { return fluid_synth_get_active_voice_count(m_library->synth.get()); }

bool Synth::setRate(unsigned rate) noexcept
{
    if (rate < lowestRate || rate > highestRate) return false;
    if (rate == m_rate) return true;
    m_rate = rate;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // the library has no other way for a synth in use
    fluid_synth_set_sample_rate(m_library->synth.get(), static_cast<float>(rate));
#pragma GCC diagnostic pop
    return true;
}

} // namespace tessaro
