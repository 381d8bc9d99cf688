// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/audio/audio_out.h"
#include "platform/jack/jack_client.h"

namespace tessaro {

/// Two output ports of the program's JACK client, connected to the first two physical outputs. It fails for good
/// when the server ends.
class JackAudio final : public AudioOut, private JackPart {
public:
    /// Null when no server runs.
    [[nodiscard]] static std::unique_ptr<AudioOut> open(JackClient& client, const Clock& clock);
    ~JackAudio() override;

private:
    JackAudio(JackClient& client, const Clock& clock);
    void connected(jack_client_t* client) override;
    void activated(jack_client_t* client) override;
    void disconnected() noexcept override;
    void process(jack_client_t* client, jack_nframes_t frames) noexcept override;

    JackClient& m_client;
    jack_port_t* m_left = nullptr;
    jack_port_t* m_right = nullptr;
};

} // namespace tessaro
