// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/transport/cnp_window.h"
#include "views/tracks/lights.h"
#include "views/tracks/note_starts.h"

#include <QElapsedTimer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tessaro {

class CEditor;
class FrameActions;
class StatusLine;
class TrackListModel;
class TrackPane;
class TransportBar;
struct FrameParts;

/// Shows in the main window what the control panel and the song do: buttons, numbers, lights, the play position and the
/// blocks under recording. What it costs depends on what is shown, not on the length of the song.
class PanelFollower final : public CnpObserver {
public:
    /// Where it shows things; all outlive it.
    struct Places {
        FrameActions& actions;
        TransportBar& bar;
        TrackPane& pane;
        TrackListModel& table;
        StatusLine& status;
    };

    PanelFollower(const FrameParts& parts, const Places& places);
    ~PanelFollower() override;

    /// After the buttons: what else depends on the state of the panel.
    std::function<void()> onState;
    /// A take has come near the end of what the overview shows.
    std::function<void()> onLongTake;

    /// The rows of the table are those of a changed song; `starts` stand beside them.
    void setSong(std::vector<NoteStarts> starts, std::uint32_t shownEnd);
    /// Shows where the song is by now, this many milliseconds after the last call.
    void follow(int milliseconds);
    void showPosition(std::uint32_t tick);

    void stateChanged() override;
    void locationShown(std::uint32_t tick) override;
    void textShown(const std::string& text) override;
    void tempoShown(int tempo) override;
    void timerWanted(bool on) override;
    void busy(bool on) override;
    void locationWanted() override;

private:
    void showLights(std::uint32_t now, int milliseconds);
    void showTempo(std::uint32_t tick);
    void showLoop();
    void showTakes();
    void tellRecState();
    [[nodiscard]] const CEditor& song() const;

    const FrameParts& m_parts;
    Places m_places;
    Lights m_lights;
    std::vector<NoteStarts> m_starts; ///< beside the rows of the table
    QTimer m_panelTimer;
    QTimer m_followTimer;
    QElapsedTimer m_sinceFollow;
    RecState m_recState = RecState::idle; ///< as last told
    std::uint32_t m_shownEnd = 0;         ///< of the overview
    std::uint32_t m_lightTick = 0;        ///< the first tick whose notes have not been looked at
    int m_takeAge = 0;                    ///< milliseconds since the blocks under recording were drawn
    bool m_countingIn = false;            ///< the location box shows a count instead of a place
};

} // namespace tessaro
