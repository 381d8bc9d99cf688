// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/alsa_midi.h"

#include "platform/midi/timed_messages.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace tessaro {

namespace {

constexpr std::chrono::milliseconds longestClose{500};
constexpr std::size_t ringBytes = std::size_t{1} << 20;
constexpr Nanos byteOnCable = std::chrono::microseconds(320); ///< 31,250 bits a second
constexpr Nanos fullPause = std::chrono::milliseconds(1);
constexpr unsigned writable = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr unsigned readable = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;
constexpr unsigned portType = SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION;

/// Translates between bytes and sequencer events; short messages only.
class Translator {
public:
    Translator()
    {
        if (snd_midi_event_new(longest, &m_state) < 0) throw std::bad_alloc();
        snd_midi_event_no_status(m_state, 1);
    }
    ~Translator() { snd_midi_event_free(m_state); }
    Translator(const Translator&) = delete;
    Translator& operator=(const Translator&) = delete;

    /// False when the bytes are not one whole message.
    bool encode(std::span<const std::uint8_t> bytes, snd_seq_event_t& event) noexcept
    {
        snd_midi_event_reset_encode(m_state);
        const auto size = static_cast<long>(bytes.size());
        return snd_midi_event_encode(m_state, bytes.data(), size, &event) == size && event.type != SND_SEQ_EVENT_NONE;
    }

    /// Empty for events that are not MIDI messages. Valid until the next call.
    std::span<const std::uint8_t> decode(const snd_seq_event_t& event) noexcept
    {
        snd_midi_event_reset_decode(m_state);
        const long size = snd_midi_event_decode(m_state, m_bytes.data(), static_cast<long>(m_bytes.size()), &event);
        return {m_bytes.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
    }

private:
    static constexpr std::size_t longest = 64; ///< an event may stand for several messages
    snd_midi_event_t* m_state = nullptr;
    std::array<std::uint8_t, longest> m_bytes{};
};

std::string driverName(const std::string& client, const std::string& port)
{
    return "ALSA: " + (port.starts_with(client) ? port : client + ": " + port);
}

} // namespace

class AlsaMidi::Out final : public MidiOut {
public:
    Out(AlsaMidi& owner, int port, bool hardware)
        : m_owner(owner)
        , m_port(port)
        , m_pace(hardware ? byteOnCable : Nanos::zero())
        , m_ring(ringBytes)
    {
    }

    ~Out() override
    {
        m_ring.drain(longestClose); // the note-offs of a stop above all
        m_owner.m_outs.remove(*this);
        m_owner.m_calls.deletePort(m_owner.m_seq, m_port);
    }

    bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override
    {
        if (!m_ring.push(bytes, due)) return false;
        m_owner.m_sender->wake();
        return true;
    }

    [[nodiscard]] bool busy() const noexcept override { return m_ring.holdsSysex(); }

    /// Sends what is due, and tells when to be called again. Sender's thread.
    Nanos transmit(Nanos now) noexcept
    {
        while (const TimedMessages::Record message = m_ring.front()) {
            const Nanos earliest = std::max(message.due, m_cableFree);
            if (earliest > now) return earliest;
            const std::size_t size = nextSize(message.bytes);
            const int result = put(message.bytes.subspan(m_sent, size));
            if (result == -EAGAIN || result == -ENOMEM) return now + fullPause;
            if (size > 3) m_cableFree = now + m_pace * static_cast<std::int64_t>(size);
            m_sent += size;
            if (m_sent < message.bytes.size()) continue;
            m_sent = 0;
            m_ring.pop();
        }
        return Nanos::max();
    }

private:
    [[nodiscard]] std::size_t nextSize(std::span<const std::uint8_t> bytes) const noexcept
    {
        return std::min(bytes.size() - m_sent, piece);
    }

    int put(std::span<const std::uint8_t> bytes) noexcept
    {
        snd_seq_event_t event;
        snd_seq_ev_clear(&event);
        const bool sysex = bytes.size() > 3 || bytes[0] < 0x80 || bytes[0] == 0xF0 || bytes[0] == 0xF7;
        if (sysex)
            snd_seq_ev_set_sysex(&event, static_cast<unsigned>(bytes.size()), const_cast<std::uint8_t*>(bytes.data()));
        else if (!m_translator.encode(bytes, event))
            return 0; // nothing that the sequencer could carry
        snd_seq_ev_set_source(&event, static_cast<unsigned char>(m_port));
        snd_seq_ev_set_subs(&event);
        snd_seq_ev_set_direct(&event);
        return m_owner.m_calls.output(m_owner.m_seq, &event);
    }

    AlsaMidi& m_owner;
    const int m_port;
    const Nanos m_pace; ///< time that a byte of a system exclusive takes
    TimedMessages m_ring;
    // The sender's.
    Translator m_translator;
    std::size_t m_sent = 0; ///< bytes of the oldest message
    Nanos m_cableFree{};
};

class AlsaMidi::In final : public MidiIn {
public:
    In(AlsaMidi& owner, int port, MidiInSink& sink) : m_owner(owner), m_port(port), m_sink(sink) {}
    ~In() override
    {
        m_owner.m_ins.remove(*this);
        m_owner.m_calls.deletePort(m_owner.m_seq, m_port);
    }

    [[nodiscard]] int port() const noexcept { return m_port; }
    [[nodiscard]] MidiInSink& sink() const noexcept { return m_sink; }

private:
    AlsaMidi& m_owner;
    const int m_port;
    MidiInSink& m_sink;
};

/// The thread that takes what comes in, announcements of the system included.
class AlsaMidi::Reader {
public:
    explicit Reader(AlsaMidi& owner) : m_owner(owner), m_stop(eventfd(0, EFD_CLOEXEC))
    {
        m_thread = std::thread([this] { run(); });
    }

    ~Reader()
    {
        eventfd_write(m_stop, 1);
        m_thread.join();
        ::close(m_stop);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

private:
    void run() noexcept
    {
        sched_param priority{};
        priority.sched_priority = 15; // granted or not, it works
        pthread_setschedparam(pthread_self(), SCHED_FIFO, &priority);
        std::array<pollfd, 8> waited{};
        waited[0] = {m_stop, POLLIN, 0};
        const int count = m_owner.m_calls.pollDescriptors(m_owner.m_seq, &waited[1], waited.size() - 1, POLLIN);
        const auto all = static_cast<nfds_t>(1 + std::max(count, 0));
        while (true) {
            if (::poll(waited.data(), all, -1) < 0 && errno != EINTR) return;
            if (waited[0].revents & POLLIN) return;
            const auto broken = [](const pollfd& fd) { return (fd.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0; };
            if (std::any_of(waited.begin() + 1, waited.begin() + static_cast<std::ptrdiff_t>(all), broken)) return;
            readAll();
        }
    }

    void readAll() noexcept
    {
        snd_seq_event_t* event = nullptr;
        while (true) {
            const int result = m_owner.m_calls.input(m_owner.m_seq, &event);
            if (result == -ENOSPC)
                m_owner.m_ins.forEach([](In& in) { in.sink().inputError(); });
            else if (result < 0)
                return;
            else if (event)
                take(*event);
        }
    }

    void take(const snd_seq_event_t& event) noexcept
    {
        if (event.type >= SND_SEQ_EVENT_CLIENT_START && event.type <= SND_SEQ_EVENT_PORT_CHANGE) {
            m_owner.m_news.store(true, std::memory_order_release);
            return;
        }
        const bool sysex = event.type == SND_SEQ_EVENT_SYSEX;
        const std::span<const std::uint8_t> bytes =
            sysex ? std::span(static_cast<const std::uint8_t*>(event.data.ext.ptr), event.data.ext.len)
                  : m_translator.decode(event);
        if (bytes.empty()) return;
        const Nanos now = m_owner.m_clock.now();
        m_owner.m_ins.forEach([&](In& in) {
            if (in.port() == event.dest.port) in.sink().received(bytes, now);
        });
    }

    AlsaMidi& m_owner;
    const int m_stop;
    Translator m_translator;
    std::thread m_thread;
};

AlsaMidi::AlsaMidi(const AlsaCalls& calls, Clock& clock) : m_calls(calls), m_clock(clock) { start(); }

AlsaMidi::~AlsaMidi()
{
    m_reader.reset();
    m_sender.reset();
    if (m_seq) m_calls.close(m_seq);
}

// True when the sequencer is there; it may come later than the program.
bool AlsaMidi::start()
{
    if (m_seq) return true;
    if (m_calls.open(&m_seq, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK) < 0) {
        m_seq = nullptr;
        return false;
    }
    m_calls.setClientName(m_seq, "Tessaro");
    const int news = m_calls.createPort(m_seq, "news", SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_NO_EXPORT, portType);
    m_calls.connectFrom(m_seq, news, SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE);
    m_sender = m_clock.start(Urgency::engine, [this](Nanos now) { return transmit(now); });
    m_reader = std::make_unique<Reader>(*this);
    return true;
}

bool AlsaMidi::poll(Nanos) { return m_news.exchange(false, std::memory_order_acq_rel); }

Nanos AlsaMidi::transmit(Nanos now) noexcept
{
    Nanos next = Nanos::max();
    m_outs.forEach([&](Out& out) { next = std::min(next, out.transmit(now)); });
    return next;
}

std::vector<AlsaMidi::Device> AlsaMidi::devices(unsigned capabilities)
{
    std::vector<Device> found;
    if (!start()) return found;
    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    snd_seq_client_info_set_client(client, -1);
    const int own = m_calls.clientId(m_seq);
    while (m_calls.nextClient(m_seq, client) >= 0) {
        const int id = snd_seq_client_info_get_client(client);
        if (id != own && id != SND_SEQ_CLIENT_SYSTEM) addDevices(found, client, capabilities);
    }
    return found;
}

void AlsaMidi::addDevices(std::vector<Device>& found, snd_seq_client_info_t* client, unsigned capabilities)
{
    const int id = snd_seq_client_info_get_client(client);
    snd_seq_port_info_t* port = nullptr;
    snd_seq_port_info_alloca(&port);
    snd_seq_port_info_set_client(port, id);
    snd_seq_port_info_set_port(port, -1);
    while (m_calls.nextPort(m_seq, port) >= 0) {
        const unsigned has = snd_seq_port_info_get_capability(port);
        if ((has & capabilities) != capabilities || (has & SND_SEQ_PORT_CAP_NO_EXPORT)) continue;
        const std::string plain = driverName(snd_seq_client_info_get_name(client), snd_seq_port_info_get_name(port));
        std::string name = plain;
        const auto taken = [&] {
            return std::any_of(found.begin(), found.end(), [&](auto& d) { return d.name == name; });
        };
        for (int number = 2; taken(); ++number) name = plain + " " + std::to_string(number);
        const bool hardware = (snd_seq_port_info_get_type(port) & SND_SEQ_PORT_TYPE_HARDWARE) != 0;
        found.push_back({std::move(name), id, snd_seq_port_info_get_port(port), hardware});
    }
}

std::optional<AlsaMidi::Device> AlsaMidi::find(const std::string& name, unsigned capabilities)
{
    for (Device& device : devices(capabilities))
        if (device.name == name) return std::move(device);
    return {};
}

std::vector<std::string> AlsaMidi::outputs()
{
    std::vector<std::string> names;
    for (Device& device : devices(writable)) names.push_back(std::move(device.name));
    return names;
}

std::vector<std::string> AlsaMidi::inputs()
{
    std::vector<std::string> names;
    for (Device& device : devices(readable)) names.push_back(std::move(device.name));
    return names;
}

std::unique_ptr<MidiOut> AlsaMidi::openOutput(const std::string& name)
{
    const std::optional<Device> device = find(name, writable);
    if (!device) return nullptr;
    const int port = m_calls.createPort(m_seq, "out", readable, portType);
    if (port < 0) return nullptr;
    auto out = std::make_unique<Out>(*this, port, device->hardware);
    if (m_calls.connectTo(m_seq, port, device->client, device->port) < 0 || !m_outs.add(*out)) return nullptr;
    return out;
}

std::unique_ptr<MidiIn> AlsaMidi::openInput(const std::string& name, MidiInSink& sink)
{
    const std::optional<Device> device = find(name, readable);
    if (!device) return nullptr;
    const int port = m_calls.createPort(m_seq, "in", writable, portType);
    if (port < 0) return nullptr;
    auto in = std::make_unique<In>(*this, port, sink);
    if (!m_ins.add(*in) || m_calls.connectFrom(m_seq, port, device->client, device->port) < 0) return nullptr;
    return in;
}

} // namespace tessaro
