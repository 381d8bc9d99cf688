// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/byte_sink.h"
#include "base/export.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

class CEvnt;

/// A tempo that comes from a score mark.
struct ScoreTempo {
    std::uint32_t time = 0;       ///< absolute tick
    const CEvnt* event = nullptr; ///< tempo event, owned by the score
};

/// What the song asks of the score. Main thread, `isScoreLink` also the feeder.
class TESSARO_API ScoreLinks {
public:
    virtual ~ScoreLinks();
    /// False while the song has no score entry at all, so that nobody need look for links.
    [[nodiscard]] virtual bool any() const = 0;
    /// Whether the event refers to a score entry.
    [[nodiscard]] virtual bool isScoreLink(const CEvnt& event) const = 0;
    /// Appends the tempo events that hang on the entry which `link` refers to; `time` is the absolute time
    /// of the link.
    virtual void appendTempos(const CEvnt& link, std::uint32_t time, std::vector<ScoreTempo>& out) const = 0;
    /// Gives `copy`, which has the body of `link`, a score entry of its own that is a copy of the link's.
    virtual void copyEntry(const CEvnt& link, CEvnt& copy) = 0;
    /// Deletes the entries that no event refers to.
    virtual void removeScratch() = 0;

    // The score's part of a native song file.

    /// A song without any score entry.
    virtual void clear() = 0;
    /// Takes the chunks from the first score chunk to the end of the file or the waves. False when they are broken.
    virtual bool load(std::span<const std::uint8_t> chunks) = 0;
    /// Writes the score chunks; false when the sink takes no more.
    virtual bool save(ByteSink& out) const = 0;
};

/// A song without a score.
class TESSARO_API NullScoreLinks final : public ScoreLinks {
public:
    bool any() const override { return false; }
    bool isScoreLink(const CEvnt&) const override { return false; }
    void appendTempos(const CEvnt&, std::uint32_t, std::vector<ScoreTempo>&) const override {}
    void copyEntry(const CEvnt&, CEvnt&) override {}
    void removeScratch() override {}
    void clear() override {}
    bool load(std::span<const std::uint8_t>) override { return true; }
    bool save(ByteSink&) const override { return true; }
};

} // namespace tessaro
