// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/jack_audio.h"

namespace tessaro {

std::unique_ptr<AudioOut> JackAudio::open(JackClient& client, const Clock& clock)
{
    if (!client.running()) return nullptr;
    std::unique_ptr<JackAudio> out(new JackAudio(client, clock));
    if (!client.add(*out) || !out->m_right) return nullptr;
    return out;
}

JackAudio::JackAudio(JackClient& client, const Clock& clock)
    : AudioOut(std::make_shared<AudioTap>(clock), 0, 0)
    , m_client(client)
{
}

JackAudio::~JackAudio()
{
    tap().detach();
    m_client.remove(*this);
    m_client.with([this](jack_client_t* client) {
        for (jack_port_t* port : {m_left, m_right})
            if (client && port) jack_port_unregister(client, port);
    });
}

void JackAudio::connected(jack_client_t* client)
{
    if (tap().failed()) return;
    m_left = jack_port_register(client, "left", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput, 0);
    if (m_left) m_right = jack_port_register(client, "right", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput, 0);
    setFormat(jack_get_sample_rate(client), jack_get_buffer_size(client));
}

void JackAudio::activated(jack_client_t* client)
{
    if (!m_right) return;
    const std::unique_ptr<const char*, void (*)(void*)> speakers(
        jack_get_ports(client, nullptr, JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput | JackPortIsPhysical), &jack_free);
    if (!speakers || !speakers.get()[0]) return;
    const char* left = speakers.get()[0];
    const char* right = speakers.get()[1];
    jack_connect(client, jack_port_name(m_left), left);
    jack_connect(client, jack_port_name(m_right), right ? right : left);
}

void JackAudio::disconnected() noexcept
{
    m_left = m_right = nullptr;
    tap().fail();
}

void JackAudio::process(jack_client_t*, jack_nframes_t frames) noexcept
{
    if (!m_left || !m_right) return;
    tap().pull(static_cast<float*>(jack_port_get_buffer(m_left, frames)),
               static_cast<float*>(jack_port_get_buffer(m_right, frames)), frames);
}

} // namespace tessaro
