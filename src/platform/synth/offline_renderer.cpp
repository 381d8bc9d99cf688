// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/synth/offline_renderer.h"

#include "platform/midi/timed_messages.h"
#include "platform/synth/synth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tessaro {

namespace {

constexpr std::size_t ringBytes = std::size_t{4} << 20;
constexpr std::size_t chunkFrames = 64 * Synth::grid;
constexpr float silence = 1.0F / 32768;

double seconds(Nanos span) { return std::chrono::duration<double>(span).count(); }

} // namespace

struct OfflineRenderer::State {
    class Out : public MidiOut {
    public:
        explicit Out(State& state) : m_state(state) {}
        bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override
        {
            return m_state.ring.push(bytes, due);
        }
        [[nodiscard]] bool busy() const noexcept override { return m_state.ring.holdsSysex(); }

    private:
        State& m_state;
    };

    explicit State(std::unique_ptr<Synth> made) : synth(std::move(made)), ring(ringBytes) {}

    [[nodiscard]] std::uint64_t frameOf(Nanos time) const
    {
        return Synth::gridFrame(seconds(time - start), synth->rate());
    }
    bool renderTo(std::uint64_t end, const FrameSink& sink);

    std::unique_ptr<Synth> synth;
    TimedMessages ring;
    Nanos start{};
    std::array<float, 2 * chunkFrames> chunk{};
    float peak = 0; ///< of the chunk rendered last
};

bool OfflineRenderer::State::renderTo(std::uint64_t end, const FrameSink& sink)
{
    while (synth->position() < end) {
        const std::size_t frames = std::min<std::uint64_t>(end - synth->position(), chunkFrames);
        synth->renderInterleaved(chunk.data(), frames);
        const std::span<const float> rendered(chunk.data(), 2 * frames);
        peak = 0;
        for (const float sample : rendered) peak = std::max(peak, std::abs(sample));
        if (!sink(rendered)) return false;
    }
    return true;
}

std::unique_ptr<OfflineRenderer> OfflineRenderer::create(const SynthOptions& options, std::string& why)
{
    std::unique_ptr<Synth> synth = Synth::create(options, why);
    if (!synth) return nullptr;
    return std::unique_ptr<OfflineRenderer>(new OfflineRenderer(std::make_unique<State>(std::move(synth))));
}

OfflineRenderer::OfflineRenderer(std::unique_ptr<State> state) : m_state(std::move(state)) {}

OfflineRenderer::~OfflineRenderer() = default;

std::vector<std::string> OfflineRenderer::outputs() const { return {"Tessaro Synth"}; }

std::unique_ptr<MidiOut> OfflineRenderer::openOutput(std::size_t driver)
{
    return driver == 0 ? std::make_unique<State::Out>(*m_state) : nullptr;
}

std::unique_ptr<MidiIn> OfflineRenderer::openInput(std::size_t, MidiInSink&, std::size_t) { return nullptr; }

void OfflineRenderer::setStart(Nanos start) noexcept { m_state->start = start; }

bool OfflineRenderer::renderUntil(Nanos until, const FrameSink& sink)
{
    const std::uint64_t end = m_state->frameOf(until);
    while (const TimedMessages::Record message = m_state->ring.front()) {
        const std::uint64_t place = m_state->frameOf(message.due);
        if (place >= end) break;
        if (!m_state->renderTo(place, sink)) return false;
        m_state->synth->apply(message.bytes);
        m_state->ring.pop();
    }
    return m_state->renderTo(end, sink);
}

bool OfflineRenderer::renderTail(const FrameSink& sink, Nanos longest)
{
    const std::uint64_t begin = m_state->synth->position();
    const std::uint64_t end = begin + Synth::gridFrame(seconds(longest), m_state->synth->rate());
    for (; const TimedMessages::Record message = m_state->ring.front(); m_state->ring.pop())
        m_state->synth->apply(message.bytes);
    bool quiet = false;
    while (!quiet && m_state->synth->position() < end) {
        const std::uint64_t next = std::min<std::uint64_t>(end, m_state->synth->position() + chunkFrames);
        if (!m_state->renderTo(next, sink)) return false;
        quiet = m_state->synth->voices() == 0 && m_state->peak < silence;
    }
    return true;
}

std::uint64_t OfflineRenderer::frames() const noexcept { return m_state->synth->position(); }

unsigned OfflineRenderer::rate() const noexcept { return m_state->synth->rate(); }

std::string OfflineRenderer::soundFont() const { return m_state->synth->soundFont(); }

} // namespace tessaro
