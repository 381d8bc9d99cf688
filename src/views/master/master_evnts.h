// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/list/evnt_kind.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tessaro {

class CEditor;

/// A tempo of the song, in force from its time on.
struct TempoPoint {
    std::uint32_t time = 0;
    double beats = 0; ///< a minute
    POSITION evnt = nullptr;
};

/// What a lane above the tempo curve shows at a time.
struct MasterFlag {
    std::uint32_t time = 0;
    int lane = 0;
    POSITION evnt = nullptr;
};

/// The lanes, from the top.
enum class FlagLane { signatures, keys, markers, texts };

/// The events of the master track as its picture shows them, in the order of time. True until the track changes; then
/// it is built anew, which costs a step for each event of the master track.
class MasterEvnts {
public:
    void build(const CEditor& editor);

    [[nodiscard]] std::span<const TempoPoint> tempos() const { return m_tempos; }
    /// Those in a span of time; `to` is outside.
    [[nodiscard]] std::span<const TempoPoint> tempos(std::uint32_t from, std::uint32_t to) const;
    [[nodiscard]] std::span<const MasterFlag> flags(std::uint32_t from, std::uint32_t to) const;
    /// The tempo in force.
    [[nodiscard]] double beatsAt(std::uint32_t time) const;
    [[nodiscard]] double slowest() const;
    [[nodiscard]] double fastest() const;
    [[nodiscard]] EvntRef ref(POSITION evnt) const { return {m_trk, m_blk, evnt}; }

    /// The kind of a new flag of a lane.
    [[nodiscard]] static EvntKind kindOfLane(FlagLane lane);
    [[nodiscard]] static std::optional<FlagLane> laneOf(KindGroup group);

private:
    POSITION m_trk = nullptr;
    POSITION m_blk = nullptr;
    std::vector<TempoPoint> m_tempos;
    std::vector<MasterFlag> m_flags;
};

} // namespace tessaro
