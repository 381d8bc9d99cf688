// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/recording_sink.h"
#include "streams/random_stream.h"
#include "streams/studio.h"

#include <jack/jack.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace tessaro::test {

/// Another program that plays a performance at its times and hears what is sent to it.
class StreamClient {
public:
    virtual ~StreamClient() = default;
    /// Begins to play, and returns; the performance outlives that. Not while another one is under way.
    virtual void play(std::span<const Played> performance) = 0;
    /// All has been sent.
    [[nodiscard]] virtual bool done() const = 0;
    /// When each message left, on the engine's clock.
    [[nodiscard]] virtual std::vector<Nanos> sentAt() = 0;
    /// From now on everything that comes in is kept.
    virtual void listen() = 0;
    [[nodiscard]] virtual std::size_t heardCount() const = 0;
    /// Whole messages with their times on the engine's clock.
    [[nodiscard]] virtual std::vector<Played> heard() const = 0;
    /// Times that the way itself was late, and may have lost something.
    [[nodiscard]] virtual int overruns() const { return 0; }
};

/// At the other end of the cable inside the program, on a thread of its own.
class CableClient final : public StreamClient {
public:
    CableClient(Loopback& loopback, RealClock& clock) : m_loopback(loopback), m_clock(clock) {}

    void play(std::span<const Played> performance) override;
    [[nodiscard]] bool done() const override { return m_done; }
    [[nodiscard]] std::vector<Nanos> sentAt() override;
    void listen() override { m_in = m_loopback.openInput(Loopback::name, m_sink); }
    [[nodiscard]] std::size_t heardCount() const override { return m_sink.count; }
    [[nodiscard]] std::vector<Played> heard() const override;

private:
    struct Sink final : MidiInSink {
        void received(std::span<const std::uint8_t> bytes, Nanos when) noexcept override;
        void inputError() noexcept override {}

        mutable std::mutex lock;
        std::vector<Played> messages;
        std::atomic<std::size_t> count{0};
    };

    Loopback& m_loopback;
    RealClock& m_clock;
    std::vector<Nanos> m_sentAt;
    std::atomic<bool> m_done{false};
    std::jthread m_sender;
    Sink m_sink;
    std::unique_ptr<MidiIn> m_in;
};

/// A client of a JACK server, which sends at the very frame.
class JackPlayer final : public StreamClient {
public:
    static constexpr const char* out = "JACK MIDI: player:out";
    static constexpr const char* in = "JACK MIDI: player:in";

    JackPlayer(const std::string& server, RealClock& clock);
    ~JackPlayer() override;

    [[nodiscard]] bool connected() const { return m_client != nullptr; }
    void play(std::span<const Played> performance) override;
    [[nodiscard]] bool done() const override { return m_next == m_performance.size(); }
    [[nodiscard]] std::vector<Nanos> sentAt() override;
    void listen() override { m_listening = true; }
    [[nodiscard]] std::size_t heardCount() const override { return m_heardCount; }
    [[nodiscard]] std::vector<Played> heard() const override;
    /// Periods that came late; where somebody missed one, what it carried is lost.
    [[nodiscard]] int overruns() const override { return m_overruns; }

private:
    struct Cycle {
        double start; ///< JACK's time in us
        double length;
        jack_nframes_t frames;
    };
    struct Heard {
        double micros;
        std::size_t end; ///< of its bytes in the stream
    };
    static int process(jack_nframes_t frames, void* self);
    void send(void* buffer, const Cycle& cycle);
    void hear(void* buffer, const Cycle& cycle);
    [[nodiscard]] Nanos onEngineClock(double micros) const;

    RealClock& m_clock;
    jack_client_t* m_client = nullptr;
    jack_port_t* m_out = nullptr;
    jack_port_t* m_in = nullptr;
    Nanos m_offset{}; ///< engine's clock less JACK's

    std::vector<Played> m_performance; ///< not changed while it plays
    double m_start = 0;
    std::vector<double> m_sentMicros;
    std::atomic<bool> m_playing{false};
    std::atomic<std::size_t> m_next{0};

    std::vector<Heard> m_heard;
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_pieces = 0;
    std::atomic<std::size_t> m_heardCount{0}; ///< whole messages
    std::atomic<bool> m_listening{false};
    std::atomic<int> m_overruns{0};
    std::atomic<unsigned> m_periods{0};
    std::atomic<bool> m_lost{false}; ///< the server has gone
};

} // namespace tessaro::test
