// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace tessaro {

class CBlk;
class CTrk;

/// A thumbnail of one track, or of one block of it: for each of 1,024 equal parts of the song, which of 24 pitch bands
/// hold a note. The bands span the track's own range, at least two octaves. Made once for a song, drawn at any width.
class Miniature {
public:
    static constexpr std::uint32_t parts = 1024;
    static constexpr int bands = 24;

    struct Block {
        std::uint32_t top = 0;
        std::uint32_t end = 0;
        bool ghost = false;
    };

    Miniature() = default;
    /// `end` is the song's length in ticks. Costs a step for each event of the track and each part a note lasts.
    Miniature(const CTrk& track, std::uint32_t end);
    Miniature(const CBlk& blk, std::uint32_t end);

    [[nodiscard]] const std::vector<Block>& blocks() const { return m_blocks; }
    /// The bands in use anywhere in the parts from `first` up to, but without, `last`; bit 0 is the lowest band.
    [[nodiscard]] std::uint32_t bandsIn(std::uint32_t first, std::uint32_t last) const;

private:
    void addBlock(const CBlk& blk);
    /// Of a track or a block.
    template <class Source>
    void addNotes(const Source& source, std::uint32_t end);

    std::vector<Block> m_blocks;
    std::array<std::uint32_t, parts> m_parts{};
};

} // namespace tessaro
