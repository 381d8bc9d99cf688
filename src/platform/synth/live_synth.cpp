// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/synth/live_synth.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tessaro {

namespace {

constexpr std::size_t ringBytes = std::size_t{1} << 20;
constexpr Nanos margin = std::chrono::milliseconds(3);    ///< for an engine or a callback that comes late
constexpr Nanos tooLate = std::chrono::milliseconds(500); ///< a note that comes later is left out

double seconds(Nanos span) { return std::chrono::duration<double>(span).count(); }

bool startsNote(std::span<const std::uint8_t> bytes)
{
    return bytes.size() >= 3 && (bytes[0] & 0xF0) == 0x90 && bytes[2] != 0;
}

} // namespace

LiveSynth::LiveSynth(std::unique_ptr<Synth> synth) : m_synth(std::move(synth)), m_ring(ringBytes) {}

bool LiveSynth::send(std::span<const std::uint8_t> bytes, Nanos due) noexcept { return m_ring.push(bytes, due); }

bool LiveSynth::prepare(unsigned rate, std::size_t period)
{
    if (rate == 0 || !m_synth->setRate(rate)) return false;
    m_latency = margin + std::chrono::duration_cast<Nanos>(std::chrono::duration<double>(period) / rate);
    m_carried = 0;
    return true;
}

void LiveSynth::render(float* left, float* right, std::size_t frames, Nanos when) noexcept
{
    const std::uint64_t firstFrame = m_synth->position() - m_carried;
    std::size_t done = takeCarry(left, right, frames);
    while (done < frames) {
        applyDue(when, firstFrame);
        renderMore(left, right, frames, done);
    }
}

std::size_t LiveSynth::takeCarry(float* left, float* right, std::size_t frames) noexcept
{
    const std::size_t taken = std::min(m_carried, frames);
    std::copy_n(m_carryLeft.end() - static_cast<std::ptrdiff_t>(m_carried), taken, left);
    std::copy_n(m_carryRight.end() - static_cast<std::ptrdiff_t>(m_carried), taken, right);
    m_carried -= taken;
    return taken;
}

std::uint64_t LiveSynth::placeOf(Nanos due, Nanos when, std::uint64_t firstFrame) const noexcept
{
    const double start = static_cast<double>(firstFrame) / m_synth->rate();
    return Synth::gridFrame(start + seconds(due + m_latency - when), m_synth->rate());
}

void LiveSynth::applyDue(Nanos when, std::uint64_t firstFrame) noexcept
{
    m_nextEvent = std::numeric_limits<std::uint64_t>::max();
    while (const TimedMessages::Record message = m_ring.front()) {
        const std::uint64_t place = placeOf(message.due, when, firstFrame);
        if (place > m_synth->position()) {
            m_nextEvent = place;
            return;
        }
        if (message.due + tooLate > when || !startsNote(message.bytes)) m_synth->apply(message.bytes);
        m_ring.pop();
    }
}

// Whole grid blocks up to the next message go straight to the device; what it wants of one more is cut from it.
void LiveSynth::renderMore(float* left, float* right, std::size_t frames, std::size_t& done) noexcept
{
    const std::uint64_t untilEvent = m_nextEvent - m_synth->position();
    const std::size_t whole = std::min<std::uint64_t>((frames - done) / Synth::grid * Synth::grid, untilEvent);
    if (whole > 0) {
        m_synth->render(left + done, right + done, whole);
        done += whole;
        return;
    }
    m_synth->render(m_carryLeft.data(), m_carryRight.data(), Synth::grid);
    m_carried = Synth::grid;
    done += takeCarry(left + done, right + done, frames - done);
}

} // namespace tessaro
