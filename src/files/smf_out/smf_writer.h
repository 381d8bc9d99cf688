// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/strings.h"
#include "files/smf_out/song_merger.h"

#include <cstdint>
#include <vector>

namespace tessaro {

class ByteSink;

/// The writer of standard MIDI files, made for one save. It builds the file in memory, with a division of 480, the
/// song's own, and hands it to the sink in one piece; the song stays as it is. Notes end with note-ons of velocity 0,
/// and every event has its status.
///
/// The operations answer false when the sink refuses, and raise what the allocator raises. Main thread only.
class SmfWriter {
public:
    SmfWriter(CEditor& editor, const Strings& strings, ScorePlayout& score, ByteSink& sink);

    /// Format 0.
    bool SaveSmf0();
    /// Format 1, a chunk for each track with events.
    bool SaveSmf1();
    /// Format 0 with two chunks of texts behind it.
    bool SaveZp();
    /// Format 1 with a chunk for each of four ports; what goes to others is left out.
    bool SaveVb();

private:
    void putSmf0();
    void putZpChunk(std::string_view id, TextId text, const RecordList& list);
    void SaveSmf1Mthd();
    void SaveSmf1Mtrk(int number);
    void SaveSmf1MtrkVb(std::uint8_t port);
    void unpack();
    /// Moves the bar with every so many records; 0 leaves it alone.
    void putRecords(const RecordList& list, std::uint32_t progressStep);
    void patchNtrks(std::uint32_t count) noexcept;
    [[nodiscard]] std::size_t beginChunk(std::string_view id);
    void endChunk(std::size_t length);
    bool hand();

    CEditor& m_editor;
    const Strings& m_strings;
    ByteSink& m_sink;
    SongMerger m_merger;
    RecordList m_main;
    std::vector<std::uint8_t> m_bytes;
    ByteWriter m_out{m_bytes};
    std::uint32_t m_chunks = 0; ///< written
};

/// Writes the song as a file of kind 1, 2, 3 or 6, as the document numbers them. False when the sink refuses, when
/// memory is out, when an event is too long for a file, and for another kind.
[[nodiscard]] TESSARO_API bool saveSmf(std::uint8_t kind, CEditor& editor, const Strings& strings, ScorePlayout& score,
                                       ByteSink& sink);

} // namespace tessaro
