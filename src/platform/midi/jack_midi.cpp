// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/jack_midi.h"

#include "platform/midi/timed_messages.h"

#include <jack/midiport.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>
#include <utility>

namespace tessaro {

namespace {

const std::string prefix = "JACK MIDI: ";
const std::string freeOutName = prefix + "Tessaro out";
const std::string freeInName = prefix + "Tessaro in";
constexpr std::size_t ringBytes = std::size_t{1} << 20;
constexpr std::chrono::milliseconds longestClose{500};
constexpr std::size_t sysexPerPeriod = 4096; ///< bytes; kind to receivers with small buffers

/// Whether this is one of the program's own ports of another service, which a bridge shows here. To take it for a
/// device would open it, and so make another one.
bool isBridgedBack(const jack_port_t* port)
{
    const std::string_view own = "Tessaro";
    const std::string_view name = jack_port_name(port);
    if (!name.starts_with(own) && name.find(own) != name.npos) return true;
    const auto longest = static_cast<std::size_t>(jack_port_name_size());
    std::vector<char> first(longest);
    std::vector<char> second(longest);
    char* const aliases[] = {first.data(), second.data()};
    const int count = jack_port_get_aliases(port, aliases);
    return std::any_of(aliases, aliases + std::clamp(count, 0, 2),
                       [&](const char* alias) { return std::string_view(alias).find(own) != std::string_view::npos; });
}

std::vector<std::string> portsOf(jack_client_t* client, unsigned long flags)
{
    std::vector<std::string> names;
    if (!client) return names;
    const std::unique_ptr<const char*, void (*)(void*)> ports(
        jack_get_ports(client, nullptr, JACK_DEFAULT_MIDI_TYPE, flags), &jack_free);
    for (const char** name = ports.get(); name && *name; ++name) {
        const jack_port_t* port = jack_port_by_name(client, *name);
        if (port && !jack_port_is_mine(client, port) && !isBridgedBack(port)) names.push_back(prefix + *name);
    }
    return names;
}

} // namespace

/// One period in terms of the engine's clock.
struct JackMidi::Cycle {
    Nanos start;
    double framesPerNano;
    jack_nframes_t frames;

    /// From the first frame of this period, one period late.
    [[nodiscard]] std::int64_t placeOf(Nanos due) const noexcept
    {
        return frames + std::llround(static_cast<double>((due - start).count()) * framesPerNano);
    }
    [[nodiscard]] Nanos timeOf(jack_nframes_t frame) const noexcept
    {
        return start + Nanos(std::llround(frame / framesPerNano));
    }
};

/// An open port, whether there is a server or not.
class JackMidi::Port {
public:
    Port(JackMidi& owner, std::string driver, unsigned long direction)
        : m_owner(owner)
        , m_driver(std::move(driver))
        , m_direction(direction)
    {
    }
    virtual ~Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    [[nodiscard]] bool isFree() const { return m_driver == freeOutName || m_driver == freeInName; }

    virtual void registerAt(jack_client_t* client)
    {
        if (isFree()) {
            m_port = isOut() ? m_owner.m_freeOut : m_owner.m_freeIn;
            return;
        }
        const std::string name = (isOut() ? "out-" : "in-") + std::to_string(++m_owner.m_serial);
        m_port = jack_port_register(client, name.c_str(), JACK_DEFAULT_MIDI_TYPE, m_direction, 0);
    }

    /// Does nothing for a port that is not there, or connected already.
    void connectAt(jack_client_t* client)
    {
        if (!m_port || isFree()) return;
        const char* mine = jack_port_name(m_port);
        const std::string other = m_driver.substr(prefix.size());
        if (jack_port_connected_to(m_port, other.c_str())) return;
        jack_connect(client, isOut() ? mine : other.c_str(), isOut() ? other.c_str() : mine);
    }

    void unregisterAt(jack_client_t* client)
    {
        if (client && m_port && !isFree()) jack_port_unregister(client, m_port);
        m_port = nullptr;
    }

    void forget() noexcept { m_port = nullptr; }
    [[nodiscard]] jack_port_t* port() const noexcept { return m_port; }

protected:
    [[nodiscard]] JackMidi& owner() const noexcept { return m_owner; }

private:
    [[nodiscard]] bool isOut() const noexcept { return m_direction == JackPortIsOutput; }

    JackMidi& m_owner;
    const std::string m_driver;
    const unsigned long m_direction;
    jack_port_t* m_port = nullptr;
};

class JackMidi::Out final : public MidiOut, public Port {
public:
    Out(JackMidi& owner, const std::string& driver) : Port(owner, driver, JackPortIsOutput), m_ring(ringBytes) {}
    ~Out() override
    {
        finish();
        owner().close(*this, owner().m_outs);
    }

    bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override
    {
        return owner().m_client.running() && m_ring.push(bytes, due);
    }
    [[nodiscard]] bool busy() const noexcept override { return owner().m_client.running() && m_ring.holdsSysex(); }

    /// What was meant for the server before is of no use to the new one.
    void registerAt(jack_client_t* client) override
    {
        m_ring.clear();
        m_sent = 0;
        Port::registerAt(client);
    }

    void process(const Cycle& cycle) noexcept
    {
        if (!port()) return;
        void* buffer = jack_port_get_buffer(port(), cycle.frames);
        if (!isFree()) jack_midi_clear_buffer(buffer);
        m_idle.store(!m_ring.front(), std::memory_order_release);
        std::int64_t at = 0;
        std::size_t sysexLeft = sysexPerPeriod;
        while (const TimedMessages::Record message = m_ring.front()) {
            at = std::max(at, cycle.placeOf(message.due));
            if (at >= cycle.frames) return;
            if (!write(buffer, static_cast<jack_nframes_t>(at), message.bytes, sysexLeft)) return;
            m_sent = 0;
            m_ring.pop();
        }
    }

private:
    /// Lets what was sent be heard, the note-offs of a stop above all; a server that stands still is not waited for
    /// long. The last messages are heard by the end of the period that put them on the port: that is over when a period
    /// has found nothing more.
    void finish() const
    {
        constexpr std::chrono::milliseconds step{1};
        if (!owner().m_client.running() || !m_ring.drain(longestClose)) return;
        for (Nanos waited{}; waited < longestClose && !m_idle.load(std::memory_order_acquire); waited += step)
            std::this_thread::sleep_for(step);
    }

    /// True when all of the message is in the buffer now; a long one takes several periods.
    bool write(void* buffer, jack_nframes_t at, std::span<const std::uint8_t> bytes, std::size_t& sysexLeft) noexcept
    {
        constexpr std::size_t shortMessage = 3;
        std::size_t size = bytes.size() - m_sent;
        if (size > shortMessage) {
            size = std::min({size, sysexLeft, jack_midi_max_event_size(buffer)});
            sysexLeft -= size;
        }
        if (size == 0 || jack_midi_event_write(buffer, at, bytes.data() + m_sent, size) != 0) return false;
        m_sent += size;
        return m_sent == bytes.size();
    }

    TimedMessages m_ring;
    std::size_t m_sent = 0;         ///< bytes of the oldest message; JACK's thread
    std::atomic<bool> m_idle{true}; ///< the last period found nothing to send
};

class JackMidi::In final : public MidiIn, public Port {
public:
    In(JackMidi& owner, const std::string& driver, MidiInSink& sink)
        : Port(owner, driver, JackPortIsInput)
        , m_sink(sink)
    {
    }
    ~In() override { owner().close(*this, owner().m_ins); }

    void process(const Cycle& cycle) noexcept
    {
        if (!port()) return;
        void* buffer = jack_port_get_buffer(port(), cycle.frames);
        const jack_nframes_t count = jack_midi_get_event_count(buffer);
        for (jack_nframes_t i = 0; i < count; ++i) {
            jack_midi_event_t event;
            if (jack_midi_event_get(&event, buffer, i) != 0 || event.size == 0) continue;
            m_sink.received({event.buffer, event.size}, cycle.timeOf(event.time));
        }
        if (jack_midi_get_lost_event_count(buffer) > 0) m_sink.inputError();
    }

private:
    MidiInSink& m_sink;
};

JackMidi::JackMidi(JackClient& client, const Clock& clock) : m_client(client), m_clock(clock) { m_client.add(*this); }

JackMidi::~JackMidi() { m_client.remove(*this); }

std::vector<std::string> JackMidi::outputs()
{
    return m_client.with([](jack_client_t* client) {
        std::vector<std::string> names = portsOf(client, JackPortIsInput);
        if (client) names.push_back(freeOutName);
        return names;
    });
}

std::vector<std::string> JackMidi::inputs()
{
    return m_client.with([](jack_client_t* client) {
        std::vector<std::string> names = portsOf(client, JackPortIsOutput);
        if (client) names.push_back(freeInName);
        return names;
    });
}

// The free port sounds as long as something is connected to it.
bool JackMidi::sounds(const std::string& output)
{
    if (output != freeOutName) return MidiBackend::sounds(output);
    return m_client.with([this](jack_client_t* client) { return client && jack_port_connected(m_freeOut) > 0; });
}

std::unique_ptr<MidiOut> JackMidi::openOutput(const std::string& name)
{
    const std::vector<std::string> known = outputs();
    if (std::find(known.begin(), known.end(), name) == known.end()) return nullptr;
    return open(std::make_unique<Out>(*this, name), m_outs);
}

std::unique_ptr<MidiIn> JackMidi::openInput(const std::string& name, MidiInSink& sink)
{
    const std::vector<std::string> known = inputs();
    if (std::find(known.begin(), known.end(), name) == known.end()) return nullptr;
    return open(std::make_unique<In>(*this, name, sink), m_ins);
}

template <class P, std::size_t N>
std::unique_ptr<P> JackMidi::open(std::unique_ptr<P> port, RtSlots<P, N>& slots)
{
    const bool opened = m_client.with([&](jack_client_t* client) {
        if (!client) return false;
        port->registerAt(client);
        if (!port->port()) return false;
        port->connectAt(client);
        m_open.push_back(port.get());
        return slots.add(*port);
    });
    return opened ? std::move(port) : nullptr;
}

template <class P, std::size_t N>
void JackMidi::close(P& port, RtSlots<P, N>& slots)
{
    m_client.with([&](jack_client_t* client) {
        slots.remove(port);
        port.unregisterAt(client);
        std::erase(m_open, &port);
    });
}

bool JackMidi::poll(Nanos now)
{
    const bool changed = m_client.poll(now);
    if (changed)
        m_client.with([this](jack_client_t* client) {
            if (client) activated(client); // a port that is back under its name
        });
    return changed;
}

void JackMidi::connected(jack_client_t* client)
{
    m_offset = Nanos::zero();
    m_freeOut = jack_port_register(client, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    m_freeIn = jack_port_register(client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    for (Port* port : m_open) port->registerAt(client);
}

void JackMidi::activated(jack_client_t* client)
{
    for (Port* port : m_open) port->connectAt(client);
}

void JackMidi::disconnected() noexcept
{
    m_freeOut = m_freeIn = nullptr;
    for (Port* port : m_open) port->forget();
}

// The two clocks drift apart, tens of microseconds a second. A reading that took long tells little.
void JackMidi::followOffset() noexcept
{
    constexpr Nanos quick = std::chrono::microseconds(50);
    constexpr int smoothing = 16;
    const Nanos before = m_clock.now();
    const Nanos jack = std::chrono::microseconds(jack_get_time());
    const Nanos took = m_clock.now() - before;
    const Nanos offset = before + took / 2 - jack;
    if (m_offset == Nanos::zero())
        m_offset = offset;
    else if (took < quick)
        m_offset += (offset - m_offset) / smoothing;
}

JackMidi::Cycle JackMidi::cycleOf(jack_client_t* client, jack_nframes_t frames) const noexcept
{
    jack_nframes_t firstFrame = 0;
    jack_time_t start = 0;
    jack_time_t end = 0;
    float micros = 0;
    if (jack_get_cycle_times(client, &firstFrame, &start, &end, &micros) != 0 || micros <= 0)
        return {m_clock.now(), jack_get_sample_rate(client) / 1e9, frames};
    return {std::chrono::microseconds(start) + m_offset, frames / (static_cast<double>(micros) * 1e3), frames};
}

void JackMidi::process(jack_client_t* client, jack_nframes_t frames) noexcept
{
    followOffset();
    const Cycle cycle = cycleOf(client, frames);
    if (m_freeOut) jack_midi_clear_buffer(jack_port_get_buffer(m_freeOut, frames));
    m_outs.forEach([&](Out& out) { out.process(cycle); });
    m_ins.forEach([&](In& in) { in.process(cycle); });
}

} // namespace tessaro
