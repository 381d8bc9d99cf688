// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <jack/jack.h>
#include <jack/midiport.h>
#include <sys/types.h>

#include <atomic>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

/// A JACK server of our own without a sound card. It dies with this program.
class JackServer {
public:
    [[nodiscard]] static bool installed();

    JackServer();
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;

    [[nodiscard]] const std::string& name() const { return m_name; }
    /// Returns when clients can connect; false when they never can.
    bool start();
    void kill(); ///< without a chance to say goodbye
    void stop();

private:
    void end(int signal);
    [[nodiscard]] bool answers() const;

    const std::string m_name;
    pid_t m_process = -1;
    bool m_killed = false; ///< and not started since
};

/// Another program in the JACK graph, with one MIDI input that records and one MIDI output.
class JackListener {
public:
    struct Event {
        double micros;   ///< JACK's time of its frame
        std::size_t end; ///< of its bytes in the stream
    };

    explicit JackListener(const JackServer& server);
    ~JackListener();
    JackListener(const JackListener&) = delete;
    JackListener& operator=(const JackListener&) = delete;

    [[nodiscard]] jack_client_t* client() const { return m_client; }
    [[nodiscard]] std::span<const Event> events() const { return {m_events.data(), m_count.load()}; }
    /// The bytes of all events.
    [[nodiscard]] std::vector<unsigned char> stream() const;
    /// Puts a note-on of this key on the output, in the next period.
    void play(unsigned char key) { m_key.store(key); }
    /// Times that somebody missed a period; messages may be lost then.
    [[nodiscard]] int overruns() const { return m_overruns.load(); }

private:
    void playKey(jack_nframes_t frames);
    static int process(jack_nframes_t frames, void* self);

    jack_client_t* m_client = nullptr;
    jack_port_t* m_in = nullptr;
    jack_port_t* m_out = nullptr;
    std::vector<Event> m_events;
    std::vector<unsigned char> m_bytes;
    std::atomic<std::size_t> m_count{0};
    std::atomic<unsigned char> m_key{0};
    std::atomic<int> m_overruns{0};
};

} // namespace tessaro
