// SPDX-License-Identifier: GPL-3.0-or-later
#include "streams/random_stream.h"

#include "support/random.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tessaro::test {

namespace {

constexpr unsigned mostHeld = 100; ///< notes at a time; recording takes 128
constexpr Nanos shortestNote = std::chrono::milliseconds(8);

class Performance {
public:
    explicit Performance(std::uint32_t seed) : m_dice(seed) {}

    void step(Nanos now)
    {
        const auto channel = m_dice.byteBelow(16);
        switch (m_dice.below(100)) {
        case 0: sysex(now); break;
        case 1: add(now, {status(0xC0, channel), m_dice.byteBelow(128)}); break;
        default:
            switch (m_dice.below(10)) {
            case 0: add(now, {status(0xB0, channel), m_dice.byteBelow(120), m_dice.byteBelow(128)}); break;
            case 1: add(now, {status(0xA0, channel), m_dice.byteBelow(128), m_dice.byteBelow(128)}); break;
            case 2: add(now, {status(0xD0, channel), m_dice.byteBelow(128)}); break;
            case 3: add(now, {status(0xE0, channel), m_dice.byteBelow(128), m_dice.byteBelow(128)}); break;
            default: note(now, channel); break;
            }
        }
    }

    std::vector<Played> finish(Nanos now)
    {
        while (!m_held.empty()) release(now += shortestNote, 0);
        return std::move(m_played);
    }

private:
    struct Held {
        std::uint8_t channel;
        std::uint8_t key;
        Nanos since;
    };

    static std::uint8_t status(unsigned kind, unsigned channel) { return static_cast<std::uint8_t>(kind | channel); }
    void add(Nanos now, Bytes bytes) { m_played.push_back({now, std::move(bytes)}); }

    void note(Nanos now, std::uint8_t channel)
    {
        if (!m_held.empty() && (m_held.size() == mostHeld || m_dice.oneIn(2))) {
            const std::size_t which = m_dice.below(static_cast<std::uint32_t>(m_held.size()));
            if (now - m_held[which].since >= shortestNote) release(now, which);
            return;
        }
        const auto key = m_dice.byteBelow(128);
        if (m_sounding[channel][key]) return;
        m_sounding[channel][key] = true;
        m_held.push_back({channel, key, now});
        add(now, {status(0x90, channel), key, static_cast<std::uint8_t>(m_dice.between(1, 127))});
    }

    void release(Nanos now, std::size_t which)
    {
        const Held note = m_held[which];
        m_held.erase(m_held.begin() + static_cast<std::ptrdiff_t>(which));
        m_sounding[note.channel][note.key] = false;
        if (m_dice.oneIn(2))
            add(now, {status(0x80, note.channel), note.key, m_dice.byteBelow(128)});
        else
            add(now, {status(0x90, note.channel), note.key, 0});
    }

    void sysex(Nanos now)
    {
        Bytes bytes(m_dice.oneIn(8) ? m_dice.between(500, 2000) : m_dice.between(5, 60));
        for (std::uint8_t& byte : bytes) byte = m_dice.byteBelow(128);
        bytes.front() = 0xF0;
        bytes[1] = 0x7D;
        bytes.back() = 0xF7;
        add(now, std::move(bytes));
    }

    Dice m_dice;
    std::vector<Played> m_played;
    std::vector<Held> m_held;
    std::array<std::array<bool, 128>, 16> m_sounding{};
};

} // namespace

std::vector<Played> randomPerformance(std::uint32_t seed, Nanos length, unsigned messagesPerSecond)
{
    constexpr unsigned burst = 40;
    const Nanos step = std::chrono::nanoseconds(std::chrono::seconds(1)) / messagesPerSecond;
    Performance performance(seed);
    Nanos now{};
    for (; now < length / 2; now += step) performance.step(now);
    for (; now < length; now += step * burst)
        for (unsigned i = 0; i < burst; ++i) performance.step(now);
    return performance.finish(now);
}

} // namespace tessaro::test
