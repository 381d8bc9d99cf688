// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/que_rec.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tessaro {

/// What the user changes about tracks while they play: whether they sound, and their transposition. Any thread.
class TrackSwitches {
public:
    static bool valid(int track) { return track >= 0 && track < loomTracks; }

    void setOn(int track, bool on)
    {
        if (!valid(track) || at(track).on.exchange(on) == on) return;
        if (!on) m_switchedOff.store(true, std::memory_order_release);
    }
    [[nodiscard]] bool on(int track) const { return valid(track) && at(track).on.load(std::memory_order_relaxed); }
    /// True once after any track was switched off.
    bool takeSwitchedOff() { return m_switchedOff.exchange(false, std::memory_order_acquire); }

    void setTransposition(int track, int semitones)
    {
        if (valid(track)) at(track).transposition.store(clamp(semitones), std::memory_order_relaxed);
    }
    [[nodiscard]] int transposition(int track) const
    {
        return valid(track) ? at(track).transposition.load(std::memory_order_relaxed) : 0;
    }
    void setTransposed(int track, bool transposed)
    {
        if (valid(track)) at(track).transposed.store(transposed, std::memory_order_relaxed);
    }
    [[nodiscard]] bool transposed(int track) const
    {
        return valid(track) && at(track).transposed.load(std::memory_order_relaxed);
    }
    void setGlobalTransposition(int semitones) { m_global.store(clamp(semitones), std::memory_order_relaxed); }
    [[nodiscard]] int globalTransposition() const { return m_global.load(std::memory_order_relaxed); }

    /// The key at which a note of the track sounds; outside 0 to 127 it cannot.
    [[nodiscard]] int soundingKey(int track, int key) const
    {
        return transposed(track) ? key + transposition(track) + globalTransposition() : key;
    }

private:
    struct Track {
        std::atomic<bool> on = true;
        std::atomic<bool> transposed = true;
        std::atomic<std::int16_t> transposition = 0;
    };

    // Beyond this nothing sounds, and sums stay small.
    static std::int16_t clamp(int semitones)
    {
        constexpr int most = 1000;
        return static_cast<std::int16_t>(semitones > most ? most : semitones < -most ? -most : semitones);
    }
    Track& at(int track) { return m_tracks[static_cast<std::size_t>(track)]; }
    [[nodiscard]] const Track& at(int track) const { return m_tracks[static_cast<std::size_t>(track)]; }

    std::array<Track, loomTracks> m_tracks;
    std::atomic<std::int16_t> m_global = 0;
    std::atomic<bool> m_switchedOff = false;
};

} // namespace tessaro
