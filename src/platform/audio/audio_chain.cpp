// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/audio_chain.h"

#include <utility>

namespace tessaro {

AudioChain::AudioChain(std::vector<AudioWay> ways, AudioSource& source) : m_ways(std::move(ways)), m_source(source) {}

AudioChain::~AudioChain() = default;

void AudioChain::Device::start(std::size_t asWay, Nanos now) noexcept
{
    way = asWay;
    frames = windowFrames = out->tap().frames();
    lastMove = windowStart = now;
}

bool AudioChain::Device::moved(Nanos now) noexcept
{
    const std::uint64_t count = out->tap().frames();
    checkPace(now);
    if (count == frames) return false;
    frames = count;
    lastMove = now;
    ++moves;
    return true;
}

// Filling up a buffer of a second or two is no race.
void AudioChain::Device::checkPace(Nanos now) noexcept
{
    constexpr Nanos window = std::chrono::seconds(1);
    constexpr int tooFast = 4;
    if (now - windowStart < window) return;
    const std::uint64_t count = out->tap().frames();
    const double expected = std::chrono::duration<double>(now - windowStart).count() * out->rate();
    races = static_cast<double>(count - windowFrames) > tooFast * expected;
    windowStart = now;
    windowFrames = count;
}

bool AudioChain::Device::dead(Nanos now) const noexcept
{
    return out->tap().failed() || races || now - lastMove >= patience;
}

void AudioChain::poll(Nanos now)
{
    if (m_playing.out) checkPlaying(now);
    if (m_trial.out) checkTrial(now);
    if (!m_trial.out && now >= m_nextRound) startTrial(now);
}

void AudioChain::checkPlaying(Nanos now)
{
    m_playing.moved(now);
    if (!m_playing.dead(now)) return;
    m_flowing.store(false, std::memory_order_release);
    m_candidate = m_playing.out->tap().failed() ? 0 : m_playing.way + 1;
    m_playing = {};
    m_nextRound = now;
    tell({.state = SoundState::lost});
}

void AudioChain::checkTrial(Nanos now)
{
    constexpr int enough = 2;
    if (m_trial.moved(now) && m_trial.moves >= enough && !m_trial.out->tap().failed()) {
        takeOver();
    } else if (m_trial.dead(now)) {
        m_candidate = m_trial.way + 1;
        m_trial = {};
    }
}

// Opens the first of the remaining ways that opens. With a device in use only better ways count.
void AudioChain::startTrial(Nanos now)
{
    const std::size_t end = m_playing.out ? m_playing.way : m_ways.size();
    for (; m_candidate < end; ++m_candidate) {
        m_trial.out = m_ways[m_candidate].open();
        if (!m_trial.out) continue;
        m_trial.start(m_candidate, now);
        return;
    }
    m_candidate = 0;
    m_nextRound = now + retryAfter;
    if (!m_playing.out) tell({.state = SoundState::none});
}

void AudioChain::takeOver()
{
    const std::size_t way = m_trial.way;
    if (m_playing.out) m_playing.out->tap().detach();
    const unsigned rate = m_trial.out->rate();
    if (!m_source.prepare(rate, m_trial.out->period())) {
        m_candidate = way + 1;
        m_trial = {};
        if (m_playing.out && m_source.prepare(m_playing.out->rate(), m_playing.out->period()))
            m_playing.out->tap().attach(m_source, m_playing.out->rate());
        return;
    }
    m_trial.out->tap().attach(m_source, rate);
    m_playing = std::exchange(m_trial, {});
    m_flowing.store(true, std::memory_order_release);
    m_candidate = 0;
    m_nextRound = m_playing.lastMove + retryAfter;
    const std::string& name = m_ways[way].name;
    tell({.state = name.empty() ? SoundState::silent : SoundState::playing, .device = name, .rate = rate});
}

void AudioChain::tell(SoundStatus status)
{
    const std::lock_guard guard(m_lock);
    m_status = std::move(status);
}

SoundStatus AudioChain::status() const
{
    const std::lock_guard guard(m_lock);
    return m_status;
}

} // namespace tessaro
