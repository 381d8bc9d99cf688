// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jack/jack_client.h"
#include "platform/midi/midi_backend.h"
#include "platform/rt_slots.h"

#include <vector>

namespace tessaro {

/// MIDI through JACK: a driver for each MIDI port of the other clients, and one free port each way that anything
/// can connect to. Messages leave at the frame of their due time plus one period, in order, and those that do not
/// fit in a period follow in the next. Open ports survive the server: when one is back they are registered anew and
/// connected again by name; what is sent meanwhile is lost.
class JackMidi final : public MidiBackend, private JackPart {
public:
    /// Both outlive it.
    JackMidi(JackClient& client, const Clock& clock);
    ~JackMidi() override;

    [[nodiscard]] std::vector<std::string> outputs() override;
    [[nodiscard]] std::vector<std::string> inputs() override;
    [[nodiscard]] bool sounds(const std::string& output) override;
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(const std::string& name) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(const std::string& name, MidiInSink& sink) override;
    bool poll(Nanos now) override;
    [[nodiscard]] std::string service() const override { return m_client.running() ? "JACK" : ""; }

private:
    class Port;
    class Out;
    class In;
    struct Cycle;

    void connected(jack_client_t* client) override;
    void activated(jack_client_t* client) override;
    void disconnected() noexcept override;
    void process(jack_client_t* client, jack_nframes_t frames) noexcept override;

    template <class P, std::size_t N>
    std::unique_ptr<P> open(std::unique_ptr<P> port, RtSlots<P, N>& slots);
    template <class P, std::size_t N>
    void close(P& port, RtSlots<P, N>& slots);
    [[nodiscard]] Cycle cycleOf(jack_client_t* client, jack_nframes_t frames) const noexcept;
    void followOffset() noexcept;

    JackClient& m_client;
    const Clock& m_clock;
    // Under the client's lock, apart from what the slots show to JACK's thread.
    std::vector<Port*> m_open;
    unsigned m_serial = 0;
    jack_port_t* m_freeOut = nullptr;
    jack_port_t* m_freeIn = nullptr;
    Nanos m_offset{}; ///< engine's clock less JACK's; JACK's thread
    RtSlots<Out, 128> m_outs;
    RtSlots<In, 16> m_ins;
};

} // namespace tessaro
