// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"
#include "realtime/rec/recorder.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tessaro::test {

/// What a take was told, in order, and what it began with.
struct Performance {
    struct Item {
        bool passed = false; ///< the position came to `tick`; otherwise an entry of that time
        std::uint32_t tick = 0;
        std::uint8_t status = 0;
        std::uint8_t data1 = 0;
        std::uint8_t data2 = 0;
        std::vector<std::uint8_t> bytes;
    };
    std::vector<int> tracks;
    RecordSettings settings;
    std::uint32_t top = 0;
    LoopRange loop;
    std::uint32_t inFilter = 0;
    std::array<std::uint8_t, 128> dropController{};
    std::map<int, std::vector<std::size_t>> selected; ///< by track: indices of blocks, in the order of selection
    bool mayDeleteGhosts = false;
    std::vector<Item> items;
    std::uint32_t stop = 0;
};

/// A song as plain vectors, with the edits that a take needs in their simplest form.
class LiteralSong {
public:
    struct Evnt {
        std::uint32_t time = 0;
        std::uint8_t status = 0;
        std::uint8_t data1 = 0;
        std::uint8_t data2 = 0;
        std::uint32_t gate = 0;
        std::string rest; ///< what takes never write
        std::vector<std::uint8_t> bytes;
    };
    using Real = std::vector<std::shared_ptr<Evnt>>;
    struct Blk {
        int type = 1;
        std::uint32_t top = 0;
        std::uint32_t end = 0;
        std::string name;
        std::shared_ptr<Real> real = std::make_shared<Real>();
    };
    using BlkPtr = std::shared_ptr<Blk>;
    struct Trk {
        int type = 0;
        int channel = 0;
        std::vector<BlkPtr> blks;
    };

    explicit LiteralSong(const CEditor& editor);
    /// All that the tracks hold, as text to compare; names of new blocks are left out.
    [[nodiscard]] std::string picture() const;

    void add(Trk& trk, const BlkPtr& blk);
    static void insert(Real& real, const std::shared_ptr<Evnt>& evnt);
    void size(Blk& blk, std::uint32_t end);
    void grow(Blk& blk, std::uint32_t end);
    void clear(Trk& trk, const Blk* kept, std::int64_t in, std::int64_t out);
    /// The block that holds both then.
    BlkPtr mergeInto(Trk& trk, const BlkPtr& blk, BlkPtr into, bool mayDeleteGhosts);

    std::vector<Trk> trks;

private:
    void fitGhosts(const Blk& source);
    void remove(Trk& trk, const Blk* blk);
};

/// Records a performance the plain way.
void recordLiterally(LiteralSong& song, const Performance& performance);

} // namespace tessaro::test
