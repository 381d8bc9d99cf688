// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/transport/cnp_window.h"

#include <QElapsedTimer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>

namespace tessaro {

class CEditor;
class CTrackFrame;
class EditorWindows;
class FrameActions;
class StatusLine;
class TransportBar;
struct FrameParts;

/// Shows in the main window what the control panel and the song do: buttons, numbers and the play position, and passes
/// on to the windows what concerns them. What it costs depends on what is shown, not on the length of the song.
class PanelFollower final : public CnpObserver {
public:
    /// Where it shows things; all outlive it.
    struct Places {
        FrameActions& actions;
        TransportBar& bar;
        CTrackFrame& tracks;
        EditorWindows& windows;
        StatusLine& status;
    };

    PanelFollower(const FrameParts& parts, const Places& places);
    ~PanelFollower() override;

    /// After the buttons: what else depends on the state of the panel.
    std::function<void()> onState;

    /// The song has changed, or is another one: shows all anew, without turning pages.
    void refresh();
    /// Shows where the song is by now, this many milliseconds after the last call.
    void follow(int milliseconds);

    void stateChanged() override;
    void locationShown(std::uint32_t tick) override;
    void textShown(const std::string& text) override;
    void tempoShown(int tempo) override;
    void timerWanted(bool on) override;
    void busy(bool on) override;
    void locationWanted() override;

private:
    /// In numbers and in all windows.
    void showPosition(std::uint32_t tick, bool turnPages);
    void showTempo(std::uint32_t tick);
    void showLoop();
    void tellRecState();
    [[nodiscard]] const CEditor& song() const;

    const FrameParts& m_parts;
    Places m_places;
    QTimer m_panelTimer;
    QTimer m_followTimer;
    QElapsedTimer m_sinceFollow;
    RecState m_recState = RecState::idle; ///< as last told
    bool m_countingIn = false;            ///< the location box shows a count instead of a place
};

} // namespace tessaro
