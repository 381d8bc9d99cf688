// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/evnt_selection.h"
#include "views/roll/note_commands.h"
#include "views/roll/note_sound.h"
#include "views/roll/note_status.h"
#include "views/roll/roll_gesture.h"
#include "views/roll/roll_sheet.h"

#include <QBasicTimer>

#include <functional>

namespace tessaro {

/// The notes of one track over time, in rows by key: ruler above, a column of keys at the left, bars of notes with the
/// shadows of other tracks, the play position. What rows and notes look like is told by those that derive from it. It
/// forwards: RollPainter draws, RollScale knows the places, RollGesture what the mouse does, NoteCommands how the song
/// changes. Painting costs what is in sight.
class CRollView : public RollSheet {
public:
    explicit CRollView(const ViewParts& parts);
    ~CRollView() override;

    std::function<void()> onSelection;
    /// What lies under the pointer; all empty when it has left.
    std::function<void(const NoteStatus::Values&)> onPointed;
    std::function<void()> onProperties;
    std::function<void(const QPoint& global)> onMenu;

    void setTrack(int track);
    [[nodiscard]] EvntSelection& selection() { return m_selection; }
    [[nodiscard]] const EvntSelection& selection() const { return m_selection; }
    [[nodiscard]] NoteCommands& commands() { return m_commands; }
    [[nodiscard]] RollGesture& gesture() { return m_gesture; }
    /// The selection became another one, by whoever.
    void selectionChanged();

    /// Whether notes are heard as they are touched.
    void setAudition(bool on);
    [[nodiscard]] bool audition() const { return m_audition; }
    /// Lets a note be heard for a moment.
    void sound(std::uint8_t key, std::uint8_t velocity);

    void setPosition(std::uint32_t tick, bool follow);
    /// To be told every hint; the work waits for `refresh`, which follows at the end of a step that can be seen.
    void followHint(int code, const CEditor& editor);
    void refresh();
    virtual void songReplaced();
    void retranslate();

    /// The key that a step up or down leads to, as far as there are rows.
    [[nodiscard]] virtual int keyStep(int rows) const { return rows; }
    /// How a key reads in the status line.
    [[nodiscard]] virtual QString keyText(int key) const = 0;

protected:
    /// The song or the track is another one: before anything is painted.
    virtual void contentChanged() {}

    // The mouse on the rows, for those that have tools of their own.
    /// Where a point stands for RollGesture.
    [[nodiscard]] virtual QPoint gesturePoint(QPoint at) const { return at; }
    virtual void pressRows(QMouseEvent& event);
    virtual void moveRows(QMouseEvent& event);
    virtual void releaseRows(QMouseEvent& event);
    virtual void cancelRows();
    void forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const override;

    [[nodiscard]] EditTool tool() const;

    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// Where a press has its say until the release.
    enum class Held { nothing, rows, ruler, column };

    void endGesture();

    void paintGesture(QPainter& painter) const override;
    [[nodiscard]] bool isDrawing() const override { return m_gesture.drawn().has_value(); }

    void moveColumn(int y);
    void point(QPoint at);
    void showCursor(QPoint at);
    void scrollAtEdge();

    EvntSelection m_selection;
    NoteCommands m_commands;
    RollGesture m_gesture;
    NoteSound m_sound;
    Held m_held = Held::nothing;
    QBasicTimer m_edgeTimer;
    QPoint m_shift;   ///< from the press to where it stands for RollGesture
    QPoint m_pointer; ///< of the last event of the mouse
    Qt::KeyboardModifiers m_pointerKeys;
    bool m_isBusy = false; ///< the mouse is changing the song at this moment
    bool m_audition = true;
    bool m_selectionStale = false; ///< lost something that nobody was told of
};

} // namespace tessaro
