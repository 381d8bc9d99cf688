// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/blk_picture.h"

#include <memory>
#include <unordered_map>

namespace tessaro {

class CBlk;
class CEditor;

/// The pictures of real blocks, made when they are asked for. A look at a change of the song costs constant time:
/// a picture that no longer fits stays until the new one is complete. The making is spread over several paintings
/// where there is much to walk. A block that comes or goes takes its picture along, since another one may come to stand
/// where the old one stood. Borrows the real blocks.
class BlkPictures {
public:
    /// A painting begins, which may walk over this many events.
    void begin(std::size_t budget)
    {
        m_budget = budget;
        m_unfinished = false;
    }
    /// What there is of the block's picture; null for nothing yet.
    const BlkPicture* find(const CRealBlk& real);
    /// Whether the budget did not suffice: another painting has to follow.
    [[nodiscard]] bool unfinished() const { return m_unfinished; }

    /// A hint of the editor.
    void follow(int code, const CEditor& editor);
    void setStale(const CRealBlk* real);
    /// Another song stands in the editor.
    void clear();

private:
    void forget(const CBlk& blk);

    struct Entry {
        std::unique_ptr<BlkPicture> shown;
        std::unique_ptr<BlkPicture> making;
        unsigned generation = 0; ///< in which `making` began
        bool stale = true;
    };
    std::unordered_map<const CRealBlk*, Entry> m_entries;
    const CRealBlk* m_lastStale = nullptr; ///< needs no second look
    unsigned m_generation = 0; ///< goes on when events may have moved between blocks: what is half made begins again
    std::size_t m_budget = 0;
    bool m_unfinished = false;
};

} // namespace tessaro
