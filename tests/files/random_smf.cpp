// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/random_smf.h"

#include "files/smf_bytes.h"

#include <array>

namespace tessaro::test {

namespace {

void append(Bytes& to, const Bytes& bytes) { to.insert(to.end(), bytes.begin(), bytes.end()); }

Bytes randomBytes(Dice& dice, std::uint32_t most)
{
    Bytes bytes(dice.below(most + 1));
    for (auto& b : bytes) b = dice.byteBelow(256);
    return bytes;
}

/// The events of one chunk.
class RandomChunk {
public:
    explicit RandomChunk(Dice& dice, bool crowded = false)
        : m_dice(dice)
        , m_channels(crowded || dice.oneIn(4) ? 16 : dice.between(1, 3))
        , m_firstChannel(dice.below(16))
        , m_step(dice.oneIn(8) ? 5000 : dice.between(1, 200))
    {
    }

    Bytes events(std::uint32_t count)
    {
        while (count-- > 0) event();
        if (m_dice.oneIn(80)) append(m_bytes, {0x00, 0xFF, 0x01, m_dice.byteBelow(24)}); // its body is the next chunk
        if (m_dice.oneIn(80)) append(m_bytes, {0x00, static_cast<std::uint8_t>(m_dice.between(0xF1, 0xFE))});
        if (!m_dice.oneIn(3)) {
            delta();
            append(m_bytes, {0xFF, 0x2F, 0x00});
        }
        return std::move(m_bytes);
    }

    Bytes metas(std::uint32_t count)
    {
        while (count-- > 0) {
            delta();
            if (m_dice.oneIn(60)) append(m_bytes, {0x90, 60, 1});
            meta();
        }
        return std::move(m_bytes);
    }

private:
    void delta() { append(m_bytes, SmfBytes::varLen(m_dice.oneIn(2) ? 0 : m_dice.below(m_step))); }

    void channelStatus(std::uint8_t kind)
    {
        const auto status = static_cast<std::uint8_t>(kind | (m_firstChannel + m_dice.below(m_channels)) % 16);
        if (status == m_running && !m_dice.oneIn(4)) return;
        m_bytes.push_back(status);
        m_running = status;
    }

    void event()
    {
        delta();
        switch (m_dice.below(20)) {
        case 0: meta(); break;
        case 1: system(); break;
        case 2: shortEvent({0xA0, 0xB0, 0xE0}, 2); break;
        case 3: shortEvent({0xC0, 0xD0, 0xC0}, 1); break;
        default: note(); break;
        }
    }

    void note()
    {
        static constexpr std::array<std::uint8_t, 5> pitches{0, 0, 60, 61, 0x85};
        const std::uint32_t kind = m_dice.below(4);
        channelStatus(kind == 0 ? 0x80 : 0x90);
        m_bytes.push_back(pitches[m_dice.below(pitches.size())]);
        m_bytes.push_back(kind == 1 ? 0 : static_cast<std::uint8_t>(m_dice.between(kind == 0 ? 0 : 1, 127)));
    }

    void shortEvent(const std::array<std::uint8_t, 3>& kinds, int length)
    {
        channelStatus(kinds[m_dice.below(3)]);
        while (length-- > 0) m_bytes.push_back(m_dice.byteBelow(128));
    }

    void system()
    {
        m_bytes.push_back(m_dice.oneIn(2) ? 0xF0 : 0xF7);
        const Bytes body = randomBytes(m_dice, 4);
        append(m_bytes, SmfBytes::varLen(static_cast<std::uint32_t>(body.size())));
        append(m_bytes, body);
    }

    void meta()
    {
        const Bytes body = randomBytes(m_dice, 5);
        switch (m_dice.below(9)) {
        case 0: metaOf(0x7F, {0x43, 0x00, 0x01, m_dice.byteBelow(256)}); break;
        case 1: metaOf(m_dice.byteBelow(256), {0x43, 0x00, 0x01, m_dice.byteBelow(4)}); break;
        case 2: metaOf(m_dice.oneIn(2) ? 0x03 : 0x01, body); break;
        case 3: metaOf(0x05, body); break;
        case 4: metaOf(0x58, {m_dice.byteBelow(12), m_dice.byteBelow(7), 24, 8}); break;
        case 5: metaOf(0x58, {static_cast<std::uint8_t>(m_dice.between(1, 4)), m_dice.byteBelow(6), 24, 8}); break;
        case 6: metaOf(0x51, {m_dice.byteBelow(8), m_dice.byteBelow(256), m_dice.byteBelow(2)}); break;
        case 7: metaOf(0x2F, m_dice.oneIn(2) ? Bytes{} : body); break;
        default: metaOf(m_dice.byteBelow(256), body); break;
        }
    }

    void metaOf(std::uint8_t type, const Bytes& body)
    {
        append(m_bytes, {0xFF, type});
        append(m_bytes, SmfBytes::varLen(static_cast<std::uint32_t>(body.size())));
        append(m_bytes, body);
    }

    Dice& m_dice;
    std::uint32_t m_channels;
    std::uint32_t m_firstChannel;
    std::uint32_t m_step;
    std::uint8_t m_running = 0;
    Bytes m_bytes;
};

std::uint32_t randomDivision(Dice& dice)
{
    static constexpr std::array<std::uint32_t, 8> usual{480, 480, 96, 120, 384, 960, 0xE728, 1};
    return dice.oneIn(3) ? dice.between(1, 0xFFFF) : usual[dice.below(usual.size())];
}

} // namespace

Bytes randomSmf(Dice& dice)
{
    SmfBytes file;
    if (dice.oneIn(10)) file.raw(randomBytes(dice, 40));
    if (dice.oneIn(3)) {
        file.header(0, 1, randomDivision(dice)).chunk(RandomChunk(dice).events(dice.below(60)));
        if (dice.oneIn(2)) file.chunk(RandomChunk(dice).metas(dice.below(8)), "ZPIH");
        if (dice.oneIn(2)) file.chunk(RandomChunk(dice).metas(dice.below(8)), "ZPKM");
        return file.bytes();
    }
    const bool crowded = dice.oneIn(6);
    const std::uint32_t chunks = crowded ? dice.between(7, 12) : dice.between(1, 6);
    file.header(1, chunks, randomDivision(dice));
    for (std::uint32_t i = 0; i < chunks; ++i)
        file.chunk(RandomChunk(dice, crowded).events(crowded ? dice.between(40, 150) : dice.below(40)));
    return file.bytes();
}

void damage(Bytes& file, Dice& dice)
{
    for (std::uint32_t i = dice.between(1, 6); i > 0; --i) {
        const std::uint32_t at = dice.below(static_cast<std::uint32_t>(file.size()));
        if (at >= 14 || dice.oneIn(20)) file[at] = dice.byteBelow(256);
    }
    if (dice.oneIn(10)) file.resize(dice.below(static_cast<std::uint32_t>(file.size()) + 1));
}

} // namespace tessaro::test
