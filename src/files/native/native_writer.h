// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/byte_sink.h"
#include "base/bytes.h"
#include "base/strings.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tessaro {

class CEditor;
class CPhraseBlk;
class CRealBlk;
class CStyleBlk;
class CTrk;

/// The writer of a native song file, made for one save. It holds one chunk at a time and leaves the song as it is,
/// which may be playing. Operations answer false when the sink takes no more, or when something in the song is longer
/// than the file can tell. Raises what the allocator raises. Main thread only.
class NativeWriter {
public:
    NativeWriter(CEditor& editor, const Strings& strings, ByteSink& sink);
    NativeWriter(const NativeWriter&) = delete;
    NativeWriter& operator=(const NativeWriter&) = delete;

    /// The whole song but for its waves.
    bool SaveTr9();

private:
    bool SaveTr9Hdr();
    bool SaveTr9Blk();
    bool SaveTr9Trk();
    bool SaveStyleTrk();
    bool SaveStyleBlk();

    bool CnvBlks(const CTrk& trk);
    void CnvStyle(const CStyleBlk& style);
    void CnvPhrase(const CPhraseBlk* phrase);

    void stage(TextId text, std::uint32_t steps);
    void beginChunk(std::string_view id);
    bool endChunk();
    void text(const std::string& text);
    void zeros(std::size_t count);
    /// The number of a real block in the file; 0 for none and for one that is not of the song.
    [[nodiscard]] std::uint32_t indexOf(const CRealBlk* real) const;

    CEditor& m_editor;
    const Strings& m_strings;
    ByteSink& m_sink;
    std::vector<std::uint8_t> m_bytes; ///< of the chunk at hand
    ByteWriter m_out{m_bytes};
    std::size_t m_length = 0;
    bool m_fits = true; ///< no text so far was too long
    std::unordered_map<const CRealBlk*, std::uint32_t> m_index;
};

} // namespace tessaro
