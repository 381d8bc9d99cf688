// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/midi/alsa_calls.h"
#include "platform/recording_sink.h"

#include <deque>
#include <map>

namespace tessaro {

/// A kernel with an ALSA sequencer, as far as our calls go. One at a time.
class FakeAlsa {
public:
    struct Port {
        std::string name;
        unsigned capabilities;
        bool hardware;
    };
    struct Client {
        std::string name;
        std::vector<Port> ports;
    };

    FakeAlsa();
    ~FakeAlsa();
    FakeAlsa(const FakeAlsa&) = delete;
    FakeAlsa& operator=(const FakeAlsa&) = delete;

    [[nodiscard]] AlsaCalls calls() const;

    /// From another client to the port of ours that is connected to it.
    void arrive(int client, int port, snd_seq_event_t event);
    void announce(snd_seq_event_type_t type);
    void overrun();
    /// What has been sent to this port.
    [[nodiscard]] Bytes sentTo(int client, int port) const;

    bool present = true;
    std::map<int, Client> clients;
    std::atomic<int> refuse{0}; ///< so many outputs find the buffers full
    std::atomic<std::size_t> longest{0};
    std::atomic<bool> closed{false};

private:
    using Address = std::pair<int, int>;
    static constexpr int ownClient = 128;
    static FakeAlsa* s_now;

    int put(const snd_seq_event_t& event);
    int take(snd_seq_event_t** event);
    void wakeReader();

    mutable std::mutex m_lock;
    int m_event;
    int m_nextPort = 0;
    std::map<int, Address> m_destinations;
    std::map<Address, int> m_sources;
    std::map<Address, Bytes> m_sent;
    std::deque<snd_seq_event_t> m_arrived;
    bool m_overrun = false;
    snd_seq_event_t m_current{};
};

} // namespace tessaro
