// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/fake_alsa.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>

namespace tessaro {

FakeAlsa* FakeAlsa::s_now = nullptr;

FakeAlsa::FakeAlsa() : m_event(eventfd(0, EFD_NONBLOCK)) { s_now = this; }

FakeAlsa::~FakeAlsa()
{
    ::close(m_event);
    s_now = nullptr;
}

AlsaCalls FakeAlsa::calls() const
{
    return {.open =
                [](snd_seq_t** seq, const char*, int, int) {
                    if (!s_now->present) return -ENOENT;
                    *seq = reinterpret_cast<snd_seq_t*>(s_now);
                    return 0;
                },
            .close =
                [](snd_seq_t*) {
                    s_now->closed = true;
                    return 0;
                },
            .setClientName = [](snd_seq_t*, const char*) { return 0; },
            .clientId = [](snd_seq_t*) { return ownClient; },
            .createPort = [](snd_seq_t*, const char*, unsigned, unsigned) { return s_now->m_nextPort++; },
            .deletePort =
                [](snd_seq_t*, int port) {
                    const std::lock_guard guard(s_now->m_lock);
                    s_now->m_destinations.erase(port);
                    std::erase_if(s_now->m_sources, [&](const auto& source) { return source.second == port; });
                    return 0;
                },
            .connectFrom =
                [](snd_seq_t*, int port, int client, int other) {
                    const std::lock_guard guard(s_now->m_lock);
                    s_now->m_sources[{client, other}] = port;
                    return 0;
                },
            .connectTo =
                [](snd_seq_t*, int port, int client, int other) {
                    const std::lock_guard guard(s_now->m_lock);
                    s_now->m_destinations[port] = {client, other};
                    return 0;
                },
            .nextClient =
                [](snd_seq_t*, snd_seq_client_info_t* info) {
                    const auto next = s_now->clients.upper_bound(snd_seq_client_info_get_client(info));
                    if (next == s_now->clients.end()) return -ENOENT;
                    snd_seq_client_info_set_client(info, next->first);
                    snd_seq_client_info_set_name(info, next->second.name.c_str());
                    return 0;
                },
            .nextPort =
                [](snd_seq_t*, snd_seq_port_info_t* info) {
                    const auto& ports = s_now->clients.at(snd_seq_port_info_get_client(info)).ports;
                    const int next =
                        static_cast<unsigned char>(snd_seq_port_info_get_port(info) + 1); // wraps, as the kernel's
                    if (next >= static_cast<int>(ports.size())) return -ENOENT;
                    const Port& port = ports[static_cast<std::size_t>(next)];
                    snd_seq_port_info_set_port(info, next);
                    snd_seq_port_info_set_name(info, port.name.c_str());
                    snd_seq_port_info_set_capability(info, port.capabilities);
                    snd_seq_port_info_set_type(info, port.hardware ? SND_SEQ_PORT_TYPE_HARDWARE : 0);
                    return 0;
                },
            .output = [](snd_seq_t*, snd_seq_event_t* event) { return s_now->put(*event); },
            .input = [](snd_seq_t*, snd_seq_event_t** event) { return s_now->take(event); },
            .pollDescriptors =
                [](snd_seq_t*, pollfd* descriptors, unsigned, short events) {
                    descriptors[0] = {s_now->m_event, events, 0};
                    return 1;
                }};
}

int FakeAlsa::put(const snd_seq_event_t& event)
{
    if (refuse > 0) {
        --refuse;
        return -EAGAIN;
    }
    const std::lock_guard guard(m_lock);
    Bytes& sent = m_sent[m_destinations.at(event.source.port)];
    if (event.type == SND_SEQ_EVENT_SYSEX) {
        const auto* data = static_cast<const std::uint8_t*>(event.data.ext.ptr);
        sent.insert(sent.end(), data, data + event.data.ext.len);
        longest = std::max<std::size_t>(longest, event.data.ext.len);
        return 1;
    }
    snd_midi_event_t* decoder = nullptr;
    snd_midi_event_new(16, &decoder);
    snd_midi_event_no_status(decoder, 1);
    Bytes bytes(16);
    bytes.resize(static_cast<std::size_t>(snd_midi_event_decode(decoder, bytes.data(), 16, &event)));
    sent.insert(sent.end(), bytes.begin(), bytes.end());
    snd_midi_event_free(decoder);
    return 1;
}

int FakeAlsa::take(snd_seq_event_t** event)
{
    const std::lock_guard guard(m_lock);
    if (m_overrun) {
        m_overrun = false;
        return -ENOSPC;
    }
    if (m_arrived.empty()) {
        eventfd_t ignored = 0;
        eventfd_read(m_event, &ignored);
        return -EAGAIN;
    }
    m_current = m_arrived.front();
    m_arrived.pop_front();
    *event = &m_current;
    return 1;
}

void FakeAlsa::wakeReader() { eventfd_write(m_event, 1); }

void FakeAlsa::arrive(int client, int port, snd_seq_event_t event)
{
    const std::lock_guard guard(m_lock);
    const auto source = m_sources.find({client, port});
    if (source == m_sources.end()) return;
    event.dest.port = static_cast<unsigned char>(source->second);
    m_arrived.push_back(event);
    wakeReader();
}

void FakeAlsa::announce(snd_seq_event_type_t type)
{
    snd_seq_event_t event{};
    event.type = type;
    arrive(SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE, event);
}

void FakeAlsa::overrun()
{
    const std::lock_guard guard(m_lock);
    m_overrun = true;
    wakeReader();
}

Bytes FakeAlsa::sentTo(int client, int port) const
{
    const std::lock_guard guard(m_lock);
    const auto sent = m_sent.find({client, port});
    return sent == m_sent.end() ? Bytes() : sent->second;
}

} // namespace tessaro
