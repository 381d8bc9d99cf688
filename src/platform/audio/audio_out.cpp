// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/audio_out.h"

#include <algorithm>
#include <utility>

namespace tessaro {

AudioSource::~AudioSource() = default;

void AudioTap::attach(AudioSource& source, unsigned rate) noexcept
{
    m_rate.store(rate, std::memory_order_relaxed);
    m_attached = &source;
    m_source.add(source);
}

void AudioTap::detach() noexcept
{
    if (!m_attached) return;
    m_source.remove(*m_attached);
    m_attached = nullptr;
}

void AudioTap::pull(float* left, float* right, std::size_t frames) noexcept
{
    bool played = false;
    m_source.forEach([&](AudioSource& source) {
        const unsigned rate = m_rate.load(std::memory_order_relaxed);
        source.render(left, right, frames, m_time.next(m_clock.now(), frames, rate));
        played = true;
    });
    if (!played) {
        m_time.reset();
        std::fill_n(left, frames, 0.0F);
        std::fill_n(right, frames, 0.0F);
    }
    m_frames.fetch_add(frames, std::memory_order_release);
}

AudioOut::AudioOut(std::shared_ptr<AudioTap> tap, unsigned rate, std::size_t period)
    : m_tap(std::move(tap))
    , m_rate(rate)
    , m_period(period)
{
}

AudioOut::~AudioOut() { m_tap->detach(); }

void AudioOut::setFormat(unsigned rate, std::size_t period) noexcept
{
    m_rate = rate;
    m_period = period;
}

} // namespace tessaro
