// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/ports/hint_observer.h"
#include "views/editors/child_frame.h"
#include "views/editors/view_parts.h"

#include <cstdint>
#include <memory>

class QScrollBar;

namespace tessaro {

class CPnoNotePropPage;
class CRollView;
class GridBox;
class NoteStatus;
class RollCommands;
class RollToolBar;
class StripSplitter;
class StripView;

/// What the windows of piano roll and drum grid share: a tool bar, the notes over the controller strip, scroll bars,
/// and a line that tells what lies under the pointer. It makes commands of the views' selection and hears the hints for
/// them; what a step changed is shown at its end, or when the window can be seen again. Settings in section View
/// Condition.
class RollFrame : public ChildFrame, public HintObserver {
public:
    ~RollFrame() override;

    [[nodiscard]] QString title() const override;
    [[nodiscard]] int track() const override;
    void setTrack(int track) override;

    [[nodiscard]] bool can(ViewCommand command) const override;
    void run(ViewCommand command) override;
    [[nodiscard]] bool isOn(ViewCommand command) const override;
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override;
    void selectEvnts(std::span<const EvntRef> refs) override;

    void setPosition(std::uint32_t tick, bool follow) override;
    void reveal(std::uint32_t tick) override;
    void songReplaced() override;
    void retranslate() override;
    void saveState() override;
    void restoreState() override;

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

    [[nodiscard]] CRollView& view() const { return *m_view; }
    [[nodiscard]] StripView& strip() const { return *m_strip; }
    [[nodiscard]] GridBox& gridBox() const;
    [[nodiscard]] NoteStatus& status() const { return *m_status; }
    /// The page of the selected notes; null before it was opened.
    [[nodiscard]] CPnoNotePropPage* noteProperties() const { return m_properties; }
    /// Opens that page, or raises it.
    void showProperties();

protected:
    /// The frame takes the view over.
    RollFrame(const ViewParts& parts, CRollView* view);

    /// A group of the tool bar; those of a high rank go first where room is short.
    void addToToolBar(QWidget* group, int rank);
    [[nodiscard]] const ViewParts& parts() const { return m_parts; }
    [[nodiscard]] virtual TextId windowName() const = 0;
    /// Names the settings of the zooms.
    [[nodiscard]] virtual const char* settingsName() const = 0;

    void showEvent(QShowEvent* event) override;

private:
    void buildArea();
    void connectToolBar();
    void connectView();
    void fillTracks();
    void showStrip(bool on);
    void showKind();
    void showScale();
    void showMenu(const QPoint& place);
    void followSelection();
    void refresh();
    [[nodiscard]] std::vector<EvntRef> selectedNotes() const;

    ViewParts m_parts;
    std::uint32_t m_songEnd = 0; ///< for the scroll bar
    bool m_tracksStale = false;
    bool m_isStale = false; ///< the song has changed while nobody could see it
    // Children of the widget.
    CRollView* m_view;
    StripView* m_strip;
    RollToolBar* m_toolBar;
    NoteStatus* m_status = nullptr;
    StripSplitter* m_splitter = nullptr;
    QScrollBar* m_across = nullptr;
    QScrollBar* m_down = nullptr;
    QWidget* m_stripArea = nullptr;
    CPnoNotePropPage* m_properties = nullptr;
    std::unique_ptr<RollCommands> m_commands;
};

} // namespace tessaro
