// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/export.h"
#include "realtime/loom/que_rec.h"
#include "realtime/rec/recorder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessaro {

/// All that a take began with, so that it can be recorded again from what came in. Song ticks.
struct TakeStart {
    std::vector<int> tracks; ///< the armed ones, 1 to 100
    std::uint32_t topTick = 0;
    RecordSettings settings;
    LoopRange loop;
    std::uint32_t inFilter = 0;                        ///< as Smc::inFilter
    std::array<std::uint8_t, 128> dropController = {}; ///< as Smc::setInFilter
};

/// One thing that a take was told: an entry, or without one the position that the song came to.
struct TakeItem {
    std::optional<LoomRingEntry> entry;
    std::uint32_t tick = 0;
};

/// Writes a take down, record by record, each with its length in front and behind it a sum over all bytes so far.
/// Raises what the allocator raises; what stands in the vector is then no whole record, and nothing may follow.
class TakeWriter {
public:
    void start(std::vector<std::uint8_t>& out, const TakeStart& start);
    void entry(std::vector<std::uint8_t>& out, const LoomRingEntry& entry);
    void passed(std::vector<std::uint8_t>& out, std::uint32_t tick);

private:
    template <class Fill>
    void record(std::vector<std::uint8_t>& out, Fill&& fill);

    std::uint32_t m_sum = 0;
};

/// Reads back what a TakeWriter wrote, as far as it is whole; trusts no byte of it.
class TESSARO_API TakeReplay {
public:
    explicit TakeReplay(std::vector<std::uint8_t> bytes);
    TakeReplay(TakeReplay&&) = default; // the bytes stay where they are
    TakeReplay& operator=(TakeReplay&&) = delete;

    /// Whether the bytes begin a take at all; the rest is for those that do.
    [[nodiscard]] bool isTake() const noexcept { return m_start.has_value(); }
    [[nodiscard]] const TakeStart& start() const noexcept { return *m_start; }
    /// False at the end. What does not have the form in which the engine hands it over is left out. The bytes of system
    /// exclusives stand as long as this object.
    bool next(TakeItem& item);

private:
    [[nodiscard]] std::optional<ByteReader> record();
    [[nodiscard]] std::optional<TakeStart> readStart();

    std::vector<std::uint8_t> m_bytes;
    ByteReader m_reader;
    std::uint32_t m_sum = 0;
    std::optional<TakeStart> m_start;
};

/// The take of a journal file; none when there is no such file or it cannot be read.
[[nodiscard]] TESSARO_API TakeReplay readTakeJournal(const std::string& path);

} // namespace tessaro
