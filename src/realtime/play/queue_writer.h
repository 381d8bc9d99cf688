// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace tessaro {

class Loom;
struct _LOOM_QUE_REC;

/// The feeder's pen: fills queue records and hands them to the engine. It counts the feeder's steps, one a tick, and
/// gives each record the steps since the record before it. Used by the user interface thread while no feeder runs, by
/// the feeder otherwise.
class QueueWriter {
public:
    explicit QueueWriter(Loom& loom) : m_loom(loom) {}

    /// A new run: what comes next follows the run's start by the steps made from here.
    void restart() noexcept { m_stepCount = m_lastStep = 0; }
    void step() noexcept { ++m_stepCount; }
    /// Lets so many ticks pass that are not the song's.
    void pause(std::uint32_t ticks) noexcept { m_lastStep -= ticks; }
    [[nodiscard]] std::int64_t stepCount() const noexcept { return m_stepCount; }
    /// The song tick of the records to come.
    void setTime(std::uint32_t tick) noexcept { m_time = tick; }

    void nullRecord();
    void shortMessage(int track, std::uint8_t port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2);
    /// The bytes stay valid until the queue has played them.
    void longMessage(int track, std::uint8_t port, std::uint8_t status, std::span<const std::uint8_t> data);
    /// Microseconds a quarter note, not 0; `data` are the three bytes of the event it comes from.
    void tempo(std::uint8_t port, std::uint32_t tempo, const std::uint8_t* data = nullptr);
    /// `mark` is 0 at the start of a bar, 1 at another beat.
    void beat(std::uint8_t mark, bool on) { system(0xFD, mark, on ? 1 : 0); }
    /// Start, stop and position for whoever follows this clock.
    void system(std::uint8_t status, std::uint8_t data1 = 0, std::uint8_t data2 = 0);

private:
    void put(_LOOM_QUE_REC& record);

    Loom& m_loom;
    std::int64_t m_stepCount = 0;
    std::int64_t m_lastStep = 0; ///< of the record queued last
    std::uint32_t m_time = 0;
};

} // namespace tessaro
