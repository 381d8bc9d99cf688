// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/export.h"
#include "core/edit/evnt_ref.h"
#include "files/clip/clip_chunks.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

class CEditor;
class CEvnt;
class CPosList;
class CRealBlk;

/// The writer of what goes to the clipboard: events, or blocks with what is in them. It leaves the song as it is. The
/// operations put a whole image into `out`; when they answer false, something in it has no form or is too long, and
/// `out` is empty. Links to the score are left out, and its lists are empty. Raises what the allocator raises. Main
/// thread only.
class TESSARO_API ClipWriter {
public:
    using Image = std::vector<std::uint8_t>;

    explicit ClipWriter(CEditor& editor) : m_editor(editor) {}

    /// The events of the places in their order, at the times of the places. A place before the one ahead of it comes
    /// at the same time.
    bool SetClipTr9(Image& out, const CPosList& selection, ClipKind kind);
    /// Blocks in their order.
    bool SetClipTr9_blk(Image& out, std::span<const BlkRef> blks);

private:
    [[nodiscard]] bool isLeftOut(const CEvnt& event) const;
    void SetHeader(std::size_t count, ByteWriter& out) const;
    bool SetEvnt_blk(const CRealBlk& real, ByteWriter& out) const;
    bool SetTrkInfo_blk(const BlkRef& ref, std::uint32_t real, ByteWriter& out) const;
    void SetScr(ByteWriter& out) const;

    CEditor& m_editor;
};

} // namespace tessaro
