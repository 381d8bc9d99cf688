// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/model/realblk.h"
#include "core/model/records.h"

#include <cstdint>
#include <vector>

namespace tessaro {

/// Names a node of a map by its index plus 1; 0 is "none".
using MapPos = std::uint32_t;

/// Ticks of a measure: `num` times 1920, shifted right by the denominator exponent.
[[nodiscard]] constexpr std::uint32_t GetMeasClock(std::uint8_t num, std::uint8_t den) noexcept
{
    return den < 32 ? (num * 1920U) >> den : 0;
}

/// Why a time signature is refused.
enum class SignatureFault { none, numerator, denominator };

/// The measure under a time signature: top in ticks, its clocks and the signature's bytes.
class TESSARO_API CMeasInfo {
public:
    /// Writes top, numerator, denominator and clocks, and leaves the last two bytes as they are. Changes
    /// nothing when the signature has numerator 0 or a denominator exponent of 6 or above.
    SignatureFault Set(std::uint32_t top, const std::uint8_t* data) noexcept;
    [[nodiscard]] const _EDT_MEASINFO& rec() const noexcept { return m_rec; }

private:
    _EDT_MEASINFO m_rec;
};

/// The measure map: one node for each measure from the song's start to its last time signature; the last
/// node stands for all measures behind it. A cache of the master block's signatures, rebuilt and never
/// edited. Runs of equal measures are kept as one, so every answer is found by bisection.
/// User interface thread; the feeder reads it while no edit runs.
class TESSARO_API MeasMap {
public:
    /// Rebuilds from the master events. On a refused signature the map stands as far as it was built.
    SignatureFault build(const CRealBlk& master);
    void clear() noexcept { m_runs.clear(); }

    [[nodiscard]] std::uint32_t count() const noexcept;
    /// The node of this index, counted from 0 and below `count`.
    [[nodiscard]] _EDT_MEASINFO node(std::uint32_t index) const noexcept;
    /// Index counted from 1; below 1 or above the count it yields the last node.
    [[nodiscard]] _EDT_MEASINFO GetMeasInfo(std::int64_t index) const noexcept;

    /// Measure and beat from 1.
    [[nodiscard]] _EDT_MEAS TimeToMeas(std::uint32_t time) const noexcept;
    /// The same for scans in ascending time. First call: `pos` at the head (1), `meas.meas` 0, `last` 0.
    void TimeToMeas(std::uint32_t time, std::uint32_t* last, MapPos& pos, _EDT_MEAS& meas) const noexcept;
    /// Measure and beat from 0.
    [[nodiscard]] std::uint32_t MeasToTime(const _EDT_MEAS& meas) const noexcept;
    /// The nearest bar line; at exactly half the later one.
    [[nodiscard]] std::uint32_t GetMeasTime(std::uint32_t time) const noexcept;
    /// The start of the two-beat cell that holds `time`, counted in beats of the measure before (of the
    /// last node in the first measure); `beat` gets that beat's ticks.
    [[nodiscard]] std::uint32_t GetBeatTime(std::uint32_t time, std::uint32_t* beat) const noexcept;

private:
    struct Run {
        CMeasInfo first;         ///< the run's first measure
        std::uint32_t index = 0; ///< its node index
        std::uint32_t count = 1; ///< nodes in the run
    };
    [[nodiscard]] const Run* runAt(std::uint32_t time) const noexcept;
    [[nodiscard]] std::uint32_t measureTop(std::uint32_t time) const noexcept;

    std::vector<Run> m_runs;
};

} // namespace tessaro
