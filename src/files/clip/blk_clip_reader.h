// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/export.h"
#include "base/strings.h"
#include "core/edit/evnt_ref.h"
#include "core/model/realblk.h"
#include "files/native/blk_form.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tessaro {

class CEditor;

/// The reader of blocks from the clipboard, made for one paste. The whole image is read before the song changes; each
/// length is checked against it. The lists of the score are looked through, but their entries are not taken in, nor
/// the links to them. Raises what the allocator raises. Main thread only.
class TESSARO_API BlkClipReader {
public:
    BlkClipReader(CEditor& editor, const Strings& strings, std::span<const std::uint8_t> image)
        : m_editor(editor)
        , m_strings(strings)
        , m_in(image)
    {
    }

    /// Places the blocks in a step of its own, the first with its top at `time`. On track 0 each goes to the track it
    /// came from, otherwise the first goes to the track and the others keep their distance to it, within 1 to 100. A
    /// track takes blocks of its type, and any when it has none; the blocks of another type are left out, each of
    /// which is told behind the step. False, and nothing changed, when the image is broken or the step cannot be
    /// opened.
    bool ClipPaste_blk(std::uint32_t time, int track);
    /// The blocks that have come in.
    [[nodiscard]] const std::vector<BlkRef>& placed() const noexcept { return m_placed; }

private:
    struct DropReal {
        CEditor* editor;
        void operator()(CRealBlk* real) const;
    };
    /// A real block that leaves the song again unless a block shows it.
    using FreshReal = std::unique_ptr<CRealBlk, DropReal>;
    struct Blk {
        FreshReal real;
        int track = 0;
        std::uint8_t trkType = 0;
        BlkForm form;
    };

    bool ChkTr9i();
    bool ChkTr9b();
    bool SetClipEvnts(CRealBlk& real);
    bool readBlks();
    bool readTrkInfo(Blk& blk);
    bool LoadScr();
    /// False when the track takes no block of this type.
    bool SetClipTrkInfo(std::uint32_t time, int track, Blk& blk);

    CEditor& m_editor;
    const Strings& m_strings;
    ByteReader m_in;
    std::uint32_t m_count = 0;
    std::vector<Blk> m_blks;
    std::vector<BlkRef> m_placed;
};

} // namespace tessaro
