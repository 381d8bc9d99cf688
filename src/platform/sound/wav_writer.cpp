// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sound/wav_writer.h"

#include <sndfile.h>

#include <array>
#include <cstddef>
#include <utility>

namespace tessaro {

namespace {

constexpr int channels = 2;
constexpr std::uint64_t mostFrames = (0xFFFFFFFFULL - 4096) / (channels * sizeof(std::int16_t));

} // namespace

struct WavWriter::State {
    SNDFILE* file = nullptr;
    std::array<std::int16_t, 16384> samples{}; ///< converted and not yet written
    std::size_t filled = 0;
    std::uint64_t frames = 0;
    std::uint64_t clipped = 0;
    std::string error;

    bool fail(std::string reason)
    {
        if (error.empty()) error = std::move(reason);
        return false;
    }

    bool flush()
    {
        const auto count = static_cast<sf_count_t>(filled / channels);
        filled = 0;
        if (count == 0 || sf_writef_short(file, samples.data(), count) == count) return true;
        return fail(std::string("the sound file cannot be written: ") + sf_strerror(file));
    }

    std::int16_t convert(float sample)
    {
        const float scaled = sample * 32768.0F;
        const float rounded = scaled + (scaled < 0 ? -0.5F : 0.5F);
        if (rounded > -32769.0F && rounded < 32768.0F) return static_cast<std::int16_t>(rounded);
        ++clipped;
        return scaled < 0 ? std::int16_t{-32768} : std::int16_t{32767};
    }
};

WavWriter::WavWriter() : m_state(std::make_unique<State>()) {}

WavWriter::~WavWriter() { close(); }

bool WavWriter::open(const std::string& path, unsigned rate)
{
    close();
    *m_state = State();
    SF_INFO info{};
    info.samplerate = static_cast<int>(rate);
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    m_state->file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!m_state->file) return m_state->fail(path + " cannot be written: " + sf_strerror(nullptr));
    return true;
}

bool WavWriter::write(std::span<const float> interleaved)
{
    if (!m_state->file) return m_state->fail("no sound file is open");
    if (!m_state->error.empty()) return false;
    if (m_state->frames + interleaved.size() / channels > mostFrames)
        return m_state->fail("a WAV file cannot hold more than 4 GiB");
    m_state->frames += interleaved.size() / channels;
    for (const float sample : interleaved) {
        m_state->samples[m_state->filled++] = m_state->convert(sample);
        if (m_state->filled == m_state->samples.size() && !m_state->flush()) return false;
    }
    return true;
}

bool WavWriter::close()
{
    if (!m_state->file) return m_state->error.empty();
    if (m_state->error.empty()) m_state->flush();
    sf_write_sync(m_state->file);
    if (const int code = sf_close(m_state->file)) m_state->fail(sf_error_number(code));
    m_state->file = nullptr;
    return m_state->error.empty();
}

std::uint64_t WavWriter::frames() const noexcept { return m_state->frames; }

std::uint64_t WavWriter::clipped() const noexcept { return m_state->clipped; }

const std::string& WavWriter::error() const noexcept { return m_state->error; }

} // namespace tessaro
