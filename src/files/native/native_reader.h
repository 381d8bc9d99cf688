// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/strings.h"
#include "core/model/records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessaro {

class CBlk;
class CEditor;
class CRealBlk;
class CStyleBlk;
class CTrk;

/// The reader of a native song file, made for one load into the editor's fresh tracks. All reads stay within their
/// chunk, and the chunk within the file. Settings outside their range become the nearest legal value. Operations answer
/// false when the load has failed; the song is then unusable. Raises what the allocator raises. Main thread only.
class NativeReader {
public:
    NativeReader(CEditor& editor, const Strings& strings, const _EDT_FILE& file);
    NativeReader(const NativeReader&) = delete;
    NativeReader& operator=(const NativeReader&) = delete;

    /// The whole song but for its waves.
    bool LoadTr9();

private:
    bool LoadTr9Blk();
    bool LoadTr9Evnts(CRealBlk& real);
    bool LoadTr9Trk();
    void LoadTr9TrkInfo(ByteReader& in, CTrk& trk) const;
    bool LoadTr9TrkData(ByteReader& in, CBlk& blk);
    bool loadBlks(ByteReader& in, CTrk& trk);
    bool LoadStyle();
    bool LoadStyleBlk(CStyleBlk& style);
    bool loadSetups(ByteReader& in, CStyleBlk& style) const;
    bool loadPhrases(ByteReader& in, CStyleBlk& style) const;
    bool LoadScr();

    void stage(TextId text, std::uint32_t steps);
    /// What stands in the chunk at the cursor, which goes behind it; the reader fails when it is cut off.
    ByteReader chunk();
    /// The real block of a number in the file; null when there is none.
    [[nodiscard]] CRealBlk* realBlk(std::uint32_t index) const noexcept;

    CEditor& m_editor;
    const Strings& m_strings;
    _EDT_FILE m_file;
    ByteReader m_in;
    std::uint8_t m_version = 0;
    std::vector<CRealBlk*> m_reals; ///< by their numbers in the file
};

} // namespace tessaro
