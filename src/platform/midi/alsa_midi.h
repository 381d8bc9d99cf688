// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/midi/alsa_calls.h"
#include "platform/midi/midi_backend.h"
#include "platform/rt_slots.h"

#include <atomic>
#include <optional>
#include <thread>

namespace tessaro {

/// MIDI through the ALSA sequencer: a driver for each port of the other clients. Messages leave as soon as they are
/// sent, through a thread of their own that waits where the kernel's buffers are full; a system exclusive goes in
/// pieces, to hardware at the pace of a MIDI cable. What comes in is stamped on arrival. Without a sequencer there
/// are no drivers.
class AlsaMidi final : public MidiBackend {
public:
    static constexpr std::size_t piece = 256; ///< bytes of a system exclusive in one event

    /// The clock outlives it.
    AlsaMidi(const AlsaCalls& calls, Clock& clock);
    ~AlsaMidi() override;

    [[nodiscard]] std::vector<std::string> outputs() override;
    [[nodiscard]] std::vector<std::string> inputs() override;
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(const std::string& name) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(const std::string& name, MidiInSink& sink) override;
    bool poll(Nanos now) override;
    [[nodiscard]] std::string service() const override { return m_seq ? "ALSA" : ""; }

private:
    class Out;
    class In;
    class Reader;

    /// A port of another client.
    struct Device {
        std::string name;
        int client;
        int port;
        bool hardware;
    };

    bool start();
    [[nodiscard]] std::vector<Device> devices(unsigned capabilities);
    void addDevices(std::vector<Device>& found, snd_seq_client_info_t* client, unsigned capabilities);
    [[nodiscard]] std::optional<Device> find(const std::string& name, unsigned capabilities);
    Nanos transmit(Nanos now) noexcept;

    const AlsaCalls m_calls;
    Clock& m_clock;
    snd_seq_t* m_seq = nullptr;
    std::atomic<bool> m_news{false};
    RtSlots<Out, 128> m_outs;
    RtSlots<In, 16> m_ins;
    std::unique_ptr<TimedTask> m_sender;
    std::unique_ptr<Reader> m_reader;
};

} // namespace tessaro
