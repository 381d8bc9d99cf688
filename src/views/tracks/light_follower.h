// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/trk.h"
#include "views/tracks/lights.h"
#include "views/tracks/note_starts.h"

#include <array>
#include <cstdint>
#include <span>

namespace tessaro {

class CEditor;
struct TrackRow;

/// Strikes the lights of the tracks whose notes the song comes to while it plays. It looks the notes up in copies,
/// which are made again behind changes: a look at a change costs constant time, and one step of following looks through
/// a limited number of notes. Ticks; user interface thread. Borrows the editor.
class LightFollower {
public:
    explicit LightFollower(const CEditor& editor) : m_editor(editor) { setAllStale(); }

    void setStale(POSITION trk);
    void setAllStale() { m_stale.fill(true); }

    /// Play begins: notes from this tick on.
    void start(std::uint32_t tick) { m_tick = tick; }
    /// The song is at this tick, so many milliseconds after the last call.
    void follow(std::span<const TrackRow> rows, std::uint32_t now, int milliseconds);
    void clear() { m_lights.clear(); }
    [[nodiscard]] const Lights& lights() const { return m_lights; }

private:
    const CEditor& m_editor;
    Lights m_lights;
    std::array<NoteStarts, trackCount> m_starts; ///< by track
    std::array<bool, trackCount> m_stale{};
    std::uint32_t m_tick = 0; ///< the first whose notes have not been looked at
};

} // namespace tessaro
