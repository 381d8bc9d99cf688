// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/ports/score_links.h"

#include <cstdint>
#include <vector>

namespace tessaro {

/// The score of a song as bytes: what a native file has of it is kept as it came and written back as it is, for a
/// program that reads no score itself. While there are such bytes, the song's links count as links and stay in the
/// song; they carry the numbers that the bytes know them by.
class TESSARO_API CarriedScore final : public ScoreLinks {
public:
    bool any() const override { return false; }
    bool isScoreLink(const CEvnt& event) const override;
    void appendTempos(const CEvnt&, std::uint32_t, std::vector<ScoreTempo>&) const override {}
    void copyEntry(const CEvnt&, CEvnt&) override {}
    void removeScratch() override {}
    void clear() override { m_chunks.clear(); }
    bool load(std::span<const std::uint8_t> chunks) override;
    bool save(ByteSink& out) const override { return m_chunks.empty() || out.write(m_chunks); }

private:
    std::vector<std::uint8_t> m_chunks;
};

} // namespace tessaro
