// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace tessaro::bench {

/// Builds the bytes of a standard MIDI file chunk by chunk.
class FileBytes {
public:
    FileBytes(std::uint32_t format, std::uint32_t chunks)
    {
        id("MThd");
        number(6, 4);
        number(format, 2);
        number(chunks, 2);
        number(480, 2);
    }

    void beginChunk()
    {
        id("MTrk");
        m_lengthAt = m_bytes.size();
        number(0, 4);
    }
    void event(std::uint32_t delta, std::initializer_list<std::uint32_t> bytes)
    {
        if (delta >= 0x80) m_bytes.push_back(static_cast<std::uint8_t>(0x80U | delta >> 7U));
        m_bytes.push_back(static_cast<std::uint8_t>(delta & 0x7FU));
        for (const std::uint32_t byte : bytes) m_bytes.push_back(static_cast<std::uint8_t>(byte));
    }
    void endChunk()
    {
        event(0, {0xFF, 0x2F, 0x00});
        const std::size_t length = m_bytes.size() - m_lengthAt - 4;
        for (std::size_t i = 0; i < 4; ++i) m_bytes[m_lengthAt + i] = static_cast<std::uint8_t>(length >> (24 - 8 * i));
    }
    std::vector<std::uint8_t> take() { return std::move(m_bytes); }

private:
    void id(std::string_view text)
    {
        for (const char c : text) m_bytes.push_back(static_cast<std::uint8_t>(c));
    }
    void number(std::uint32_t value, std::uint32_t width)
    {
        while (width-- > 0) m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * width)));
    }

    std::vector<std::uint8_t> m_bytes;
    std::size_t m_lengthAt = 0;
};

/// A format 1 file with so many notes, spread over its chunks behind the first, which holds tempo and signature:
/// chords of three eighths, note-offs with a status of their own, a controller with every 32nd chord.
inline std::vector<std::uint8_t> largeSong(std::uint32_t notes, std::uint32_t chunks)
{
    FileBytes file(1, chunks);
    file.beginChunk();
    file.event(0, {0xFF, 0x51, 3, 0x07, 0xA1, 0x20});
    file.event(0, {0xFF, 0x58, 4, 4, 2, 24, 8});
    file.endChunk();
    for (std::uint32_t chunk = 1; chunk < chunks; ++chunk) {
        const std::uint32_t channel = chunk % 16;
        const std::uint32_t share = notes / (chunks - 1) + (chunk <= notes % (chunks - 1) ? 1 : 0);
        file.beginChunk();
        for (std::uint32_t done = 0, chord = 0; done < share; ++chord) {
            const std::uint32_t size = share - done < 3 ? share - done : 3;
            const std::uint32_t root = 36 + chord * 7 % 48;
            if (chord % 32 == 0) file.event(0, {0xB0 | channel, 7, chord % 128});
            for (std::uint32_t i = 0; i < size; ++i) file.event(i == 0 ? 12 : 0, {0x90 | channel, root + 4 * i, 96});
            for (std::uint32_t i = 0; i < size; ++i) file.event(i == 0 ? 228 : 0, {0x80 | channel, root + 4 * i, 64});
            done += size;
        }
        file.endChunk();
    }
    return file.take();
}

/// A format 0 file whose notes all have one pitch and channel: all begin, then all end.
inline std::vector<std::uint8_t> allOpenSong(std::uint32_t notes)
{
    FileBytes file(0, 1);
    file.beginChunk();
    for (std::uint32_t i = 0; i < notes; ++i) file.event(1, {0x90, 60, 96});
    for (std::uint32_t i = 0; i < notes; ++i) file.event(1, {0x80, 60, 64});
    file.endChunk();
    return file.take();
}

} // namespace tessaro::bench
