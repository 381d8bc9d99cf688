// SPDX-License-Identifier: GPL-3.0-or-later
#include "streams/stream_client.h"

#include <jack/midiport.h>

#include <algorithm>
#include <cmath>

namespace tessaro::test {

namespace {
constexpr auto headStart = std::chrono::milliseconds(20);
} // namespace

void CableClient::play(std::span<const Played> performance)
{
    m_sentAt.clear();
    m_sentAt.reserve(performance.size());
    m_done = false;
    m_sender = std::jthread([this, performance] {
        const auto out = m_loopback.openOutput(Loopback::name);
        const Nanos start = m_clock.now() + headStart;
        for (const Played& message : performance) {
            m_clock.sleepUntil(start + message.at);
            m_sentAt.push_back(m_clock.now());
            out->send(message.bytes, m_sentAt.back());
        }
        m_done = true;
    });
}

std::vector<Nanos> CableClient::sentAt()
{
    m_sender.join();
    return m_sentAt;
}

void CableClient::Sink::received(std::span<const std::uint8_t> bytes, Nanos when) noexcept
{
    const std::lock_guard guard(lock);
    messages.push_back({when, {bytes.begin(), bytes.end()}});
    ++count;
}

std::vector<Played> CableClient::heard() const
{
    const std::lock_guard guard(m_sink.lock);
    return m_sink.messages;
}

JackPlayer::JackPlayer(const std::string& server, RealClock& clock)
    : m_clock(clock)
    , m_heard(1'000'000)
    , m_bytes(20'000'000)
{
    const auto options = static_cast<jack_options_t>(JackNoStartServer | JackServerName);
    waitFor([&] { return (m_client = jack_client_open("player", options, nullptr, server.c_str())) != nullptr; });
    if (!m_client) return;
    m_out = jack_port_register(m_client, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    m_in = jack_port_register(m_client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    jack_set_process_callback(m_client, &JackPlayer::process, this);
    jack_set_xrun_callback(
        m_client, [](void* self) { return ++static_cast<JackPlayer*>(self)->m_overruns, 0; }, this);
    jack_on_shutdown(
        m_client, [](void* self) { static_cast<JackPlayer*>(self)->m_lost = true; }, this);
    jack_activate(m_client);
    const Nanos before = m_clock.now();
    const Nanos jack = std::chrono::microseconds(jack_get_time());
    m_offset = before + (m_clock.now() - before) / 2 - jack;
}

JackPlayer::~JackPlayer()
{
    // The library cannot close the second client of a process whose server has died; its last period is over.
    if (m_client && !m_lost)
        jack_client_close(m_client);
    else
        static_cast<void>(m_periods.load());
}

void JackPlayer::play(std::span<const Played> performance)
{
    m_performance.assign(performance.begin(), performance.end());
    m_sentMicros.resize(performance.size());
    m_next = 0;
    m_start = static_cast<double>(jack_get_time()) + std::chrono::duration<double, std::micro>(headStart).count();
    m_playing.store(true, std::memory_order_release);
}

int JackPlayer::process(jack_nframes_t frames, void* self)
{
    auto& player = *static_cast<JackPlayer*>(self);
    jack_nframes_t first = 0;
    jack_time_t start = 0;
    jack_time_t next = 0;
    float length = 0;
    jack_get_cycle_times(player.m_client, &first, &start, &next, &length);
    const Cycle cycle{static_cast<double>(start), static_cast<double>(length), frames};
    void* buffer = jack_port_get_buffer(player.m_out, frames);
    jack_midi_clear_buffer(buffer);
    if (player.m_playing.load(std::memory_order_acquire)) player.send(buffer, cycle);
    if (player.m_listening) player.hear(jack_port_get_buffer(player.m_in, frames), cycle);
    ++player.m_periods;
    return 0;
}

void JackPlayer::send(void* buffer, const Cycle& cycle)
{
    std::size_t next = m_next;
    for (; next < m_performance.size(); ++next) {
        const Played& message = m_performance[next];
        const double wanted = m_start + static_cast<double>(message.at.count()) / 1e3;
        const double place = std::max(0.0, (wanted - cycle.start) / cycle.length * cycle.frames);
        if (place >= cycle.frames) break;
        const auto frame = static_cast<jack_nframes_t>(place);
        if (jack_midi_event_write(buffer, frame, message.bytes.data(), message.bytes.size()) != 0) break;
        m_sentMicros[next] = cycle.start + frame * cycle.length / cycle.frames;
    }
    if (next == m_performance.size()) m_playing = false;
    m_next = next; // and then play() may change the performance
}

void JackPlayer::hear(void* buffer, const Cycle& cycle)
{
    for (jack_nframes_t i = 0; i < jack_midi_get_event_count(buffer); ++i) {
        jack_midi_event_t event;
        jack_midi_event_get(&event, buffer, i);
        const std::size_t begin = m_pieces == 0 ? 0 : m_heard[m_pieces - 1].end;
        if (m_pieces == m_heard.size() || begin + event.size > m_bytes.size()) return;
        std::copy_n(event.buffer, event.size, m_bytes.begin() + static_cast<std::ptrdiff_t>(begin));
        m_heard[m_pieces++] = {cycle.start + event.time * cycle.length / cycle.frames, begin + event.size};
        const std::uint8_t last = m_bytes[begin + event.size - 1];
        const bool sysex = m_bytes[begin] == 0xF0 || m_bytes[begin] < 0x80 || m_bytes[begin] == 0xF7;
        if (!sysex || last == 0xF7) ++m_heardCount;
    }
}

std::vector<Nanos> JackPlayer::sentAt()
{
    std::vector<Nanos> times;
    for (const double micros : m_sentMicros) times.push_back(onEngineClock(micros));
    return times;
}

std::vector<Played> JackPlayer::heard() const
{
    std::vector<Played> all;
    std::size_t begin = 0;
    bool open = false;
    const std::size_t whole = m_heardCount;
    for (std::size_t i = 0; all.size() < whole || open; ++i) {
        const auto from = m_bytes.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto to = m_bytes.begin() + static_cast<std::ptrdiff_t>(m_heard[i].end);
        if (!open) all.push_back({onEngineClock(m_heard[i].micros), {}});
        Bytes& bytes = all.back().bytes;
        bytes.insert(bytes.end(), from, to);
        open = bytes[0] == 0xF0 && bytes.back() != 0xF7;
        begin = m_heard[i].end;
    }
    return all;
}

Nanos JackPlayer::onEngineClock(double micros) const { return Nanos(std::llround(micros * 1e3)) + m_offset; }

} // namespace tessaro::test
