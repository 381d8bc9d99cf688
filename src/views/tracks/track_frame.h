// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "views/editors/child_frame.h"
#include "views/editors/view_parts.h"
#include "views/tracks/light_follower.h"
#include "views/tracks/track_commands.h"
#include "views/tracks/track_list_model.h"
#include "views/tracks/track_pages.h"
#include "views/tracks/track_window_commands.h"

#include <QTimer>

class QSplitter;

namespace tessaro {

class CTrkBlkView;
class CTrkPramView;
class EmptyHint;
class TrkSelection;

/// The track window: the settings of the 100 tracks beside their blocks over a time line. It follows the editor and
/// the control panel of its parts; the main window tells it when the panel has changed and while the song plays. Ticks
/// and track numbers; user interface thread.
class CTrackFrame final : public ChildFrame, private HintObserver {
public:
    explicit CTrackFrame(const ViewParts& parts, QWidget* parent = nullptr);
    ~CTrackFrame() override;

    /// A click has armed or disarmed a track.
    std::function<void(int track, bool on)> onArmed;
    /// The button beside the hint of an empty song.
    std::function<void()> onOpenSong;

    [[nodiscard]] WindowKind kind() const override { return WindowKind::track; }
    [[nodiscard]] QString title() const override;
    [[nodiscard]] bool can(ViewCommand command) const override { return m_commands.can(command); }
    [[nodiscard]] bool isOn(ViewCommand command) const override { return m_commands.isOn(command); }
    void run(ViewCommand command) override;
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override;
    void setPosition(std::uint32_t tick, bool follow) override;
    void songReplaced() override;
    void retranslate() override;
    void saveState() override;
    void restoreState() override;

    /// Buttons, loop or recording of the control panel have changed.
    void panelChanged();
    /// The song plays and is at this tick, so many milliseconds after the last call: lights and what is recorded.
    void followPlay(std::uint32_t now, int milliseconds);
    /// Play begins: the lights look at notes from this tick on.
    void startLights(std::uint32_t tick) { m_lights.start(tick); }
    void clearLights();
    /// The names of ports or devices have changed, or settings of tracks without a hint.
    void refreshRows();

    /// The number of the row with the focus, 1 to 100.
    [[nodiscard]] int currentTrack() const;
    void setCurrentTrack(int track);
    /// The small editors.
    void showTrack(int track);
    void showBlk(const BlkRef& blk);
    /// Swaps the current track with the one above, -1, or below, 1.
    void moveTrack(int step);
    /// Takes what stands in an open editor of a cell.
    void finishEditing();
    /// Whether no track holds a block.
    [[nodiscard]] bool isEmpty() const;

    [[nodiscard]] CTrkBlkView& blkView() const { return *m_blks; }
    [[nodiscard]] CTrkPramView& pramView() const { return *m_prams; }
    [[nodiscard]] TrackListModel& table() { return m_table; }
    [[nodiscard]] TrkSelection& selection() const;
    [[nodiscard]] QSplitter& splitter() const { return *m_splitter; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onHint(const HintObserver* sender, int code, CEditor* editor) override;
    void layOut();
    void connectTable();
    void showTakes(std::uint32_t now);
    void showHint();
    void placeHint();
    void tellChanged();
    void startsStale();
    void trackMenu(int track, const QPoint& at);
    /// Reads the tracks anew, once behind a burst of hints.
    void refresh();

    const ViewParts m_parts;
    TrackListModel m_table;
    TrackCommands m_tracks;
    LightFollower m_lights;
    int m_takeAge = 0; ///< milliseconds since the blocks under recording were drawn
    QTimer m_refresh;
    QTimer m_changed; ///< tells the owner, once behind a burst
    // Children of the widget.
    CTrkPramView* m_prams;
    CTrkBlkView* m_blks;
    QSplitter* m_splitter = nullptr;
    EmptyHint* m_hint = nullptr;
    TrackPages m_pages;
    TrackWindowCommands m_commands;
};

} // namespace tessaro
