// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/maps/meas_map.h"
#include "core/maps/tempo_map.h"
#include "core/ports/score_links.h"
#include "core/ports/user.h"

namespace tessaro {

class Song;

/// The measure map and the tempo map of a song, built anew from its master events. When a build stops at
/// a signature or tempo that it refuses, the map stands as far as it was built. User interface thread;
/// the feeder reads the maps while no edit runs.
class TESSARO_API SongMaps {
public:
    SongMaps(const Song& song, const ScoreLinks& score, UserPort& user) : m_song(song), m_score(score), m_user(user) {}

    /// False at a refused signature, whose fault has been shown.
    bool buildMeas();
    /// False at a tempo of 0.
    bool buildTempo();
    void clearMeas() noexcept { m_meas.clear(); }
    void clearTempo() noexcept { m_tempo.clear(); }

    [[nodiscard]] const MeasMap& meas() const noexcept { return m_meas; }
    [[nodiscard]] const TempoMap& tempo() const noexcept { return m_tempo; }

private:
    const Song& m_song;
    const ScoreLinks& m_score;
    UserPort& m_user;
    MeasMap m_meas;
    TempoMap m_tempo;
};

} // namespace tessaro
