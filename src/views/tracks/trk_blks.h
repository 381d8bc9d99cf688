// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/trk.h"
#include "core/ports/hint_observer.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tessaro {

/// Finds the blocks of a track that meet a span in a time that depends on how many they are, not on how many the track
/// holds. It keeps itself true by the editor's hints, which only mark a track; a marked one is read again at the next
/// question. Borrows the editor and the blocks. User interface thread.
class TrkBlks final : public HintObserver {
public:
    explicit TrkBlks(CEditor& editor);
    ~TrkBlks() override;
    TrkBlks(const TrkBlks&) = delete;
    TrkBlks& operator=(const TrkBlks&) = delete;

    /// Another song stands in the editor.
    void clear() { m_rows.clear(); }

    /// The blocks that touch the span, its ends included, in the order of the track.
    [[nodiscard]] std::vector<CBlk*> meeting(const CTrk& trk, std::uint32_t from, std::uint32_t to);

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

private:
    struct Entry {
        CBlk* blk;
        std::uint32_t top;
        std::uint32_t end;
        std::uint32_t latestEnd; ///< among the entries that a search sees from here
    };
    struct Row {
        std::vector<Entry> entries;
        bool stale = true;
    };
    static void read(const CTrk& trk, Row& row);

    CEditor& m_editor;
    std::unordered_map<const ListNode*, Row> m_rows; ///< by track
};

} // namespace tessaro
