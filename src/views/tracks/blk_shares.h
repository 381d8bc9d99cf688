// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/trk.h"

#include <array>
#include <unordered_map>
#include <vector>

namespace tessaro {

class CEditor;

/// How many blocks of tracks 1 to 100 show a real block: more than one are linked. A track whose blocks have changed is
/// counted anew with the next `refresh`. Borrows the editor and, as keys, the real blocks.
class BlkShares {
public:
    explicit BlkShares(const CEditor& editor) : m_editor(editor) { setAllStale(); }

    /// A hint of the editor; false for one that changes no count.
    bool follow(int code, const CEditor& editor);
    void setAllStale()
    {
        m_stale.fill(true);
        m_anyStale = true;
    }
    void refresh();

    [[nodiscard]] bool isShared(const CRealBlk* real) const
    {
        const auto at = m_counts.find(real);
        return at != m_counts.end() && at->second > 1;
    }
    [[nodiscard]] int count(const CRealBlk* real) const
    {
        const auto at = m_counts.find(real);
        return at == m_counts.end() ? 0 : at->second;
    }
    /// Whether a track shows any block.
    [[nodiscard]] bool empty() const { return m_counts.empty(); }

private:
    void setStale(POSITION trk);
    void count(std::size_t track);

    const CEditor& m_editor;
    std::array<std::vector<const CRealBlk*>, trackCount> m_counted;
    std::array<bool, trackCount> m_stale{};
    bool m_anyStale = true;
    std::unordered_map<const CRealBlk*, int> m_counts;
};

} // namespace tessaro
