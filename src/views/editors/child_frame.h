// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/editors/view_command.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace tessaro {

/// The kinds of child windows. The numbers are kept.
enum class WindowKind {
    eventList = 1090,
    masterTrack = 1091,
    track = 2003,
    piano = 6000,
    drum = 6012,
};

/// A child window of the main one: a view of the one document with what belongs to it. The main window docks it, gives
/// it the commands while it has the focus, and tells it where the song plays. It hears of changes of the song as an
/// observer of the editor's hints: a hint only notes what is stale, so that an edit of many events stays cheap; work
/// waits for the hint `dispReq`, or for the next painting. It changes the song through the editor alone.
class ChildFrame : public QWidget {
public:
    using QWidget::QWidget;

    /// What can be done, what is selected or the title has changed.
    std::function<void()> onChanged;

    [[nodiscard]] virtual WindowKind kind() const = 0;
    [[nodiscard]] virtual QString title() const = 0;
    /// The track whose events it shows; 0 for the master track, -1 where it shows all.
    [[nodiscard]] virtual int track() const { return -1; }
    /// Shows another track.
    virtual void setTrack(int) {}

    [[nodiscard]] virtual bool can(ViewCommand command) const = 0;
    virtual void run(ViewCommand command) = 0;
    /// For commands that are switches.
    [[nodiscard]] virtual bool isOn(ViewCommand) const { return false; }
    /// The events that edits of a whole selection are to work on, in the order of the song; those of selected blocks
    /// where blocks are what is selected.
    [[nodiscard]] virtual std::vector<EvntRef> selectedEvnts() const { return {}; }
    /// Selects these events and no others, as far as they are shown here.
    virtual void selectEvnts(std::span<const EvntRef>) {}

    /// The song is at this tick; with `follow` the view turns its pages so that the place stays in sight.
    virtual void setPosition(std::uint32_t tick, bool follow) = 0;
    /// Brings the events at a tick into sight: where a window begins to look.
    virtual void reveal(std::uint32_t tick) { setPosition(tick, true); }
    /// Another song stands in the editor: nothing remembered of the old one is valid.
    virtual void songReplaced() = 0;
    virtual void retranslate() = 0;
    /// Zoom and what else is to be as it was next time; into the store and out of it.
    virtual void saveState() {}
    virtual void restoreState() {}
};

} // namespace tessaro
