// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace tessaro::bench {

/// Builds the bytes of a standard MIDI file chunk by chunk.
class FileBytes {
public:
    FileBytes(std::uint32_t format, std::uint32_t chunks)
    {
        m_out.chars("MThd");
        m_out.u32be(6);
        m_out.u16be(format);
        m_out.u16be(chunks);
        m_out.u16be(480);
    }

    void beginChunk()
    {
        m_out.chars("MTrk");
        m_length = m_out.beginLength();
    }
    void event(std::uint32_t delta, std::initializer_list<std::uint32_t> bytes)
    {
        m_out.vlq(delta);
        for (const std::uint32_t byte : bytes) m_out.u8(byte);
    }
    void endChunk()
    {
        event(0, {0xFF, 0x2F, 0x00});
        m_out.endLength(m_length);
    }
    std::vector<std::uint8_t> take() { return std::move(m_bytes); }

private:
    std::vector<std::uint8_t> m_bytes;
    ByteWriter m_out{m_bytes};
    std::size_t m_length = 0;
};

/// A chunk of notes: chords of three eighths, a little behind the beat, note-offs with a status of their own, a
/// controller with every 32nd chord.
inline void addChunk(FileBytes& file, std::uint32_t channel, std::uint32_t notes)
{
    file.beginChunk();
    for (std::uint32_t done = 0, chord = 0; done < notes; ++chord) {
        const std::uint32_t size = notes - done < 3 ? notes - done : 3;
        const std::uint32_t root = 36 + chord * 7 % 48;
        if (chord % 32 == 0) file.event(0, {0xB0 | channel, 7, chord % 128});
        for (std::uint32_t i = 0; i < size; ++i) file.event(i == 0 ? 12 : 0, {0x90 | channel, root + 4 * i, 96});
        for (std::uint32_t i = 0; i < size; ++i) file.event(i == 0 ? 228 : 0, {0x80 | channel, root + 4 * i, 64});
        done += size;
    }
    file.endChunk();
}

/// A format 1 file with so many notes in the chunk behind the first, which holds tempo and signature, and so many more
/// spread over the others.
inline std::vector<std::uint8_t> unevenSong(std::uint32_t firstNotes, std::uint32_t notes, std::uint32_t chunks)
{
    FileBytes file(1, chunks);
    file.beginChunk();
    file.event(0, {0xFF, 0x51, 3, 0x07, 0xA1, 0x20});
    file.event(0, {0xFF, 0x58, 4, 4, 2, 24, 8});
    file.endChunk();
    if (firstNotes > 0) addChunk(file, 1, firstNotes);
    const std::uint32_t filled = firstNotes > 0 ? 2 : 1;
    const std::uint32_t others = chunks - filled;
    for (std::uint32_t i = 0; i < others; ++i)
        addChunk(file, (filled + i) % 16, notes / others + (i < notes % others ? 1 : 0));
    return file.take();
}

/// A format 1 file with so many notes, spread over its chunks behind the first.
inline std::vector<std::uint8_t> largeSong(std::uint32_t notes, std::uint32_t chunks)
{
    return unevenSong(0, notes, chunks);
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
