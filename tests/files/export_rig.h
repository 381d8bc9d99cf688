// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/native_bench.h"

namespace tessaro {
class ScorePlayout;
}

namespace tessaro::test {

/// A song that a test fills by hand, without any event at first, and the writer behind it.
struct ExportRig final : NativeBench {
    explicit ExportRig(ScoreLinks* links = nullptr);

    /// A new block on a track.
    CRealBlk& blk(int number, std::uint32_t top = 0);
    using NativeBench::save;
    Bytes save(std::uint8_t as, ScorePlayout& playout);
};

/// Appends an event to a real block.
void addShort(CRealBlk& real, std::uint32_t time, std::uint8_t status, const std::vector<std::uint8_t>& posts,
              std::uint32_t gate = 0);
void addMeta(CRealBlk& real, std::uint32_t time, std::uint8_t type, const Bytes& body);
void addMeta(CRealBlk& real, std::uint32_t time, std::uint8_t type, std::string_view body);
/// A system exclusive, or a note that carries one.
void addBody(CRealBlk& real, std::uint32_t time, std::uint8_t status, const std::vector<std::uint8_t>& posts,
             std::uint32_t gate, const Bytes& body);

} // namespace tessaro::test
