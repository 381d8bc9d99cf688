// SPDX-License-Identifier: GPL-3.0-or-later
#include "score.h"

#include "base/bytes.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace tessaro::compose {

namespace {

/// A track chunk of delta times and messages.
class Chunk {
public:
    void add(std::uint32_t time, const std::vector<std::uint8_t>& bytes)
    {
        ByteWriter writer(m_body);
        writer.vlq(time - m_time);
        writer.bytes(bytes);
        m_time = time;
    }

    void addMeta(std::uint32_t time, std::uint8_t type, const std::vector<std::uint8_t>& body)
    {
        std::vector<std::uint8_t> message;
        ByteWriter writer(message);
        writer.u8(0xFF);
        writer.u8(type);
        writer.vlq(static_cast<std::uint32_t>(body.size()));
        writer.bytes(body);
        add(time, message);
    }

    [[nodiscard]] std::vector<std::uint8_t> finish(std::uint32_t end)
    {
        addMeta(std::max(end, m_time), 0x2F, {});
        return std::move(m_body);
    }

private:
    std::vector<std::uint8_t> m_body;
    std::uint32_t m_time = 0;
};

std::vector<std::uint8_t> bytesOf(std::string_view text) { return {text.begin(), text.end()}; }

std::uint8_t data7(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 127)); }

} // namespace

int keyOf(std::string_view name)
{
    static constexpr std::string_view letters = "C D EF G A B";
    int key = static_cast<int>(letters.find(name[0]));
    std::size_t at = 1;
    for (; at < name.size() && (name[at] == '#' || name[at] == 'b'); ++at) key += name[at] == '#' ? 1 : -1;
    return key + 12 * (name[at] - '0' + 1);
}

Part::Part(std::string name, std::uint8_t channel, std::uint8_t program, std::uint8_t volume, std::uint8_t pan,
           std::uint8_t reverb)
    : m_name(std::move(name))
    , m_channel(channel)
    , m_seed(channel * 7919U + 17U)
{
    control(0, 7, volume);
    control(0, 10, pan);
    control(0, 91, reverb);
    add(0, 1, {static_cast<std::uint8_t>(0xC0U | m_channel), program});
}

int Part::unevenness(int range)
{
    m_seed = m_seed * 1664525U + 1013904223U;
    return static_cast<int>((m_seed >> 16U) % static_cast<unsigned>(2 * range + 1)) - range;
}

void Part::add(std::uint32_t time, int rank, std::vector<std::uint8_t> bytes)
{
    m_messages.push_back({time, rank, std::move(bytes)});
}

void Part::note(std::uint32_t time, int key, std::uint32_t gate, int velocity)
{
    const int shift = unevenness(3);
    const std::uint32_t on = shift < 0 && time < 3 ? time : static_cast<std::uint32_t>(static_cast<int>(time) + shift);
    add(on, 2,
        {static_cast<std::uint8_t>(0x90U | m_channel), data7(key), data7(std::max(1, velocity + unevenness(5)))});
    add(on + gate, 0, {static_cast<std::uint8_t>(0x80U | m_channel), data7(key), 64});
}

void Part::control(std::uint32_t time, std::uint8_t controller, int value)
{
    add(time, 1, {static_cast<std::uint8_t>(0xB0U | m_channel), controller, data7(value)});
}

void Part::bend(std::uint32_t time, double amount)
{
    const int value = std::clamp(static_cast<int>(std::lround(8192 + amount * 8191)), 0, 16383);
    add(time, 1, {static_cast<std::uint8_t>(0xE0U | m_channel), data7(value & 0x7F), data7(value >> 7)});
}

void Part::ramp(std::uint32_t from, std::uint32_t to, std::uint8_t controller, int first, int last)
{
    const int steps = std::max(1, std::min(24, std::abs(last - first)));
    for (int i = 0; i <= steps; ++i)
        control(from + (to - from) * static_cast<std::uint32_t>(i) / static_cast<std::uint32_t>(steps), controller,
                first + (last - first) * i / steps);
}

std::uint32_t Part::line(std::uint32_t time, std::string_view notation, int velocity, double legato)
{
    std::istringstream tokens{std::string(notation)};
    std::string token;
    while (tokens >> token) {
        const std::size_t colon = token.find(':');
        const auto length = static_cast<std::uint32_t>(std::stoi(token.substr(colon + 1))) * eighth;
        if (token[0] != '-')
            note(time, keyOf(token.substr(0, colon)), static_cast<std::uint32_t>(length * legato), velocity);
        time += length;
    }
    return time;
}

std::vector<std::uint8_t> Part::chunk(std::uint32_t end) const
{
    std::vector<Message> sorted = m_messages;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Message& a, const Message& b) {
        return a.time != b.time ? a.time < b.time : a.rank < b.rank;
    });
    Chunk out;
    out.addMeta(0, 0x03, bytesOf(m_name));
    for (const Message& message : sorted) out.add(message.time, message.bytes);
    return out.finish(end);
}

void Conductor::tempo(std::uint32_t time, double beatsPerMinute)
{
    const auto micros = static_cast<std::uint32_t>(std::lround(60e6 / beatsPerMinute));
    m_metas.push_back({time,
                       0x51,
                       {static_cast<std::uint8_t>(micros >> 16U), static_cast<std::uint8_t>(micros >> 8U),
                        static_cast<std::uint8_t>(micros)}});
}

void Conductor::signature(std::uint32_t time, std::uint8_t numerator, std::uint8_t denominatorPower)
{
    m_metas.push_back({time, 0x58, {numerator, denominatorPower, 24, 8}});
}

void Conductor::key(std::uint32_t time, std::int8_t sharps, bool minor)
{
    m_metas.push_back({time, 0x59, {static_cast<std::uint8_t>(sharps), static_cast<std::uint8_t>(minor)}});
}

void Conductor::marker(std::uint32_t time, std::string_view text) { m_metas.push_back({time, 0x06, bytesOf(text)}); }

std::vector<std::uint8_t> Conductor::chunk(std::uint32_t end) const
{
    std::vector<Meta> sorted = m_metas;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Meta& a, const Meta& b) { return a.time < b.time; });
    Chunk out;
    out.addMeta(0, 0x03, bytesOf(m_title));
    for (const Meta& meta : sorted) out.addMeta(meta.time, meta.type, meta.body);
    return out.finish(end);
}

std::vector<std::uint8_t> midiFile(const std::vector<std::vector<std::uint8_t>>& chunks)
{
    std::vector<std::uint8_t> bytes;
    ByteWriter file(bytes);
    file.chars("MThd");
    file.u32be(6);
    file.u16be(1);
    file.u16be(static_cast<std::uint32_t>(chunks.size()));
    file.u16be(quarter);
    for (const std::vector<std::uint8_t>& chunk : chunks) {
        file.chars("MTrk");
        file.u32be(static_cast<std::uint32_t>(chunk.size()));
        file.bytes(chunk);
    }
    return bytes;
}

} // namespace tessaro::compose
