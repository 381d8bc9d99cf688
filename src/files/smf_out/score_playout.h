// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <vector>

namespace tessaro {

class CEditor;
class CEvnt;

/// Where playing goes on elsewhere, in ticks. Equal times end the piece there.
struct RepeatJump {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
};

/// An event that a score entry sounds, at its absolute tick. The score owns the event and keeps it until the next save.
struct ScoreEvnt {
    std::uint32_t time = 0;
    const CEvnt* event = nullptr;
};

/// What the export asks of the score, beside the links themselves, which the editor tells. Main thread only.
class TESSARO_API ScorePlayout {
public:
    virtual ~ScorePlayout() = default;
    /// Appends the jumps of all repeat signs in the order of playing. False, and none, when a sign stands off the bar
    /// lines.
    virtual bool SetRep(CEditor& editor, std::vector<RepeatJump>& jumps) = 0;
    /// Takes up the octave lines of all tracks.
    virtual void SetColl(CEditor& editor) = 0;
    /// A block of this top comes next; its events are asked for in the order of their times.
    virtual void SetCollLocation(int trk, std::uint32_t top) = 0;
    /// Semitones at which a note sounds a second time: 12, -12, or 0 for not at all.
    virtual int ChkColl(int trk, std::uint32_t time, std::uint8_t pitch) = 0;
    /// Whether a link refers to a mark that changes the tempo.
    [[nodiscard]] virtual bool isTempoMark(const CEvnt& link) const = 0;
    /// Appends what the entry of a link on this track sounds, in order, none of it before `time`, the tick of the link.
    /// Signs that repeat measures give the events that they repeat, or nothing when there is nothing to repeat.
    virtual void appendEvnts(int trk, const CEvnt& link, std::uint32_t time, std::vector<ScoreEvnt>& out) = 0;
};

/// A song without a score: its links sound nothing.
class TESSARO_API NullScorePlayout final : public ScorePlayout {
public:
    bool SetRep(CEditor&, std::vector<RepeatJump>&) override { return true; }
    void SetColl(CEditor&) override {}
    void SetCollLocation(int, std::uint32_t) override {}
    int ChkColl(int, std::uint32_t, std::uint8_t) override { return 0; }
    [[nodiscard]] bool isTempoMark(const CEvnt&) const override { return false; }
    void appendEvnts(int, const CEvnt&, std::uint32_t, std::vector<ScoreEvnt>&) override {}
};

} // namespace tessaro
