// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "platform/rt_slots.h"

#include <jack/jack.h>

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

namespace tessaro {

/// Something that plays along in the program's JACK client.
class JackPart {
public:
    virtual ~JackPart();
    /// A client has been made; ports may be registered. `process` is not called before this returns.
    virtual void connected(jack_client_t* client) = 0;
    /// The client has been activated; ports may be connected.
    virtual void activated([[maybe_unused]] jack_client_t* client) {}
    /// The client is gone, its ports with it, and `process` is not called.
    virtual void disconnected() noexcept = 0;
    /// One period. JACK's thread: no waiting.
    virtual void process(jack_client_t* client, jack_nframes_t frames) noexcept = 0;
};

/// The program's one connection to a JACK server. It never starts a server; it notices when the server ends, and
/// makes a new client when a server is back, with all parts joining again. Parts are told on the thread that
/// polls, or on the one that adds them, never on two at once.
class JackClient {
public:
    static constexpr Nanos retryAfter = std::chrono::seconds(1);
    static constexpr std::size_t maxParts = 4;

    /// An empty name means the default server. Does not connect yet.
    explicit JackClient(std::string server);
    ~JackClient(); ///< after the parts have been removed
    JackClient(const JackClient&) = delete;
    JackClient& operator=(const JackClient&) = delete;

    /// Connects where needed. True when ports may have come or gone since the last call. One thread polls.
    bool poll(Nanos now);
    /// A server runs and calls back. Any thread.
    [[nodiscard]] bool running() const noexcept { return m_running.load(std::memory_order_acquire); }

    /// Any thread but JACK's. The part joins at once when a server runs. False when there are too many.
    bool add(JackPart& part);
    /// After the return the part is not called any more.
    void remove(JackPart& part);

    /// Runs `use` with the client while nobody else changes it, or with null when there is none.
    template <class Use>
    auto with(Use&& use)
    {
        const std::lock_guard guard(m_lock);
        return use(running() ? m_client : nullptr);
    }

private:
    void connect();
    void disconnect();

    static int onProcess(jack_nframes_t frames, void* self) noexcept;
    static void onShutdown(void* self) noexcept;
    static void onPort(jack_port_id_t, int, void* self) noexcept;
    static void onRename(jack_port_id_t, const char*, const char*, void* self) noexcept;

    const std::string m_server;
    std::mutex m_lock; ///< of what follows
    jack_client_t* m_client = nullptr;
    std::vector<JackPart*> m_parts;
    Nanos m_nextTry{Nanos::min()};

    RtSlots<JackPart, maxParts> m_processed;
    std::atomic<bool> m_running{false};
    std::atomic<bool> m_lost{false};
    std::atomic<bool> m_news{false};
};

} // namespace tessaro
