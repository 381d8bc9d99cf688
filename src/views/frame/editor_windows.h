// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/child_frame.h"
#include "views/frame/child_dock.h"
#include "views/frame/dock_area.h"

#include <memory>
#include <vector>

namespace tessaro {

class SettingsStore;

/// The part of the main window where the child windows stand: the track window in the middle, the others docked around
/// it, as tabs or apart, or floating. There may be several of a kind, for several tracks. Where they stand comes back
/// at the next start. One of them is active: the one that had the keys last. User interface thread.
class EditorWindows : public DockArea {
public:
    using Maker = std::function<std::unique_ptr<ChildFrame>(WindowKind kind, int track)>;

    /// Takes the track window over. Store and icons outlive this object. `commands` are those of the active window.
    EditorWindows(std::unique_ptr<ChildFrame> tracks, Maker maker, SettingsStore& store, const Icons& icons,
                  const ChildDock::Commands& commands);
    ~EditorWindows() override;

    /// Another window is active, or what it can do has changed.
    std::function<void()> onActive;

    /// Raises the window of this kind that shows the track, or opens a further one; it becomes active. Null for a kind
    /// that there is not.
    ChildFrame* open(WindowKind kind, int track);
    /// Raises the window of this kind that shows the track, or turns the one opened last to it; opens one where there
    /// is none of the kind.
    ChildFrame* show(WindowKind kind, int track);

    /// Never null.
    [[nodiscard]] ChildFrame* active() const { return m_active; }
    /// All of them, the track window first.
    [[nodiscard]] std::vector<ChildFrame*> windows() const;
    /// Gives a window the keys.
    void activate(ChildFrame& window);
    /// The one so many places further in the order of `windows`, round and round.
    void activateNext(int step);

    void closeActive();
    /// All but the track window.
    void closeChildren();
    void floatActive();
    /// The docked ones side by side, below the tracks; or all in one place.
    void tile();
    void tabTogether();
    /// The active window alone fills the area; again to end it.
    void maximiseActive();

    /// To all windows that can be seen, and to the others once they can.
    void setPosition(std::uint32_t tick, bool follow);
    void retranslate();
    /// Nothing is painted or asked of the windows while a song goes and another one comes.
    void suspend();
    void songReplaced();
    [[nodiscard]] bool isSuspended() const { return m_isSuspended; }

    /// Which windows are open, where, and what each wants to be remembered.
    void saveArrangement();
    /// Opens them again, before the main window shows; at the very first start a piano roll.
    void restoreArrangement();
    /// Once the main window shows: the window that was active is so again, and as large as it was.
    void resume();

private:
    struct Child {
        ChildDock* dock;
        ChildFrame* frame; ///< the dock's
        int number;        ///< from 1, among those of its kind
        bool isShown = false;
    };

    Child* find(const ChildFrame* frame);
    [[nodiscard]] ChildFrame* showing(WindowKind kind, int track) const;
    Child* make(WindowKind kind, int track, int number);
    void remove(ChildDock& dock);
    void setShown(ChildFrame* frame, bool shown);
    void focusMoved(QWidget* now);
    void setActive(ChildFrame& frame);
    void showTitle(Child& child);
    void endMaximised();
    [[nodiscard]] int freeNumber(WindowKind kind) const;

    Maker m_maker;
    SettingsStore& m_store;
    const Icons& m_icons;
    const ChildDock::Commands m_commands;
    ChildFrame* m_tracks; ///< child of the widget
    ChildFrame* m_active;
    std::vector<Child> m_children;
    bool m_isSuspended = false;
    std::uint32_t m_position = 0; ///< where the song is
    bool m_follow = false;
    bool m_wasMaximised = false; ///< before the start
};

} // namespace tessaro
