// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "views/editors/view_command.h"
#include "views/tracks/bar_lines.h"
#include "views/tracks/blk_finder.h"
#include "views/tracks/blk_outcome.h"
#include "views/tracks/loop_handles.h"

#include <QPoint>
#include <QRect>

#include <optional>
#include <vector>

namespace tessaro {

/// One press of the left mouse button in the ruler or the rows of the track window, from its beginning to its end. It
/// changes the selection itself; what else is to be done comes out as an outcome, of the press or of the release.
/// Points in are the window's pixels, rectangles out the song's. A change of the blocks while the button is down ends
/// it.
///
/// While the button is down on a block it waits for a small distance, which makes a drag of it; after a while any
/// distance does. Without one it is a click, however long it takes. Dragged blocks snap to bar lines; loop, new blocks
/// and ends of blocks to beats while Shift is down. Borrows all.
class BlkGesture final : public HintObserver {
public:
    static constexpr int clickTime = 250; ///< milliseconds from a press until any move is a drag
    static constexpr int dragDistance = 4;
    static constexpr int edgeWidth = 5; ///< of a block's end that is taken to make it longer

    BlkGesture(CEditor& editor, const TrkGeometry& geometry, TrkBlks& blks, TrkSelection& selection);
    ~BlkGesture() override;
    BlkGesture(const BlkGesture&) = delete;
    BlkGesture& operator=(const BlkGesture&) = delete;

    BlkOutcome press(QPoint at, Qt::KeyboardModifiers keys, EditTool tool);
    void move(QPoint at, Qt::KeyboardModifiers keys);
    BlkOutcome release(QPoint at, Qt::KeyboardModifiers keys);
    /// `clickTime` has passed since a press after which `waits` was true.
    void timeout();
    /// Escape: the selection is as before.
    void cancel();
    /// The blocks are not what they were, and the selection stays as it is: also for another song.
    void abandon() { m_state = State::idle; }
    [[nodiscard]] bool waits() const { return m_state == State::waiting; }
    [[nodiscard]] bool active() const { return m_state != State::idle; }

    /// The loop as the song has it.
    void setLoop(std::uint32_t start, std::uint32_t end) { m_loop = {start, end}; }

    // What there is to see

    /// The handles where they are now, a drag of them included.
    [[nodiscard]] LoopHandles loop() const;
    /// Where blocks would come to stand, as far as these meet the area.
    [[nodiscard]] std::vector<QRect> ghosts(const QRect& area) const;
    /// Set while blocks are dragged.
    [[nodiscard]] std::optional<DropSelected> drop() const;
    [[nodiscard]] std::optional<QRect> band() const;

    enum class Zone { ruler, loopHandle, row, blk, blkEnd };
    /// What a press without keys would take.
    [[nodiscard]] Zone zoneAt(QPoint at, EditTool tool) const;
    [[nodiscard]] std::optional<BlkRef> blkAt(QPoint window) const;

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

private:
    enum class State {
        idle,
        spanning,
        leftHandle,
        rightHandle,
        waiting,
        armed, ///< waited long enough
        dragging,
        banding,
        drawing,
        sizing,
        erasing,
    };

    BlkOutcome pressRuler(int windowY);
    BlkOutcome pressRows(Qt::KeyboardModifiers keys, EditTool tool);
    void pressBlk(const BlkRef& blk, Qt::KeyboardModifiers keys, bool withAlt);
    void take(const BlkRef& blk, Qt::KeyboardModifiers keys);
    void click(Qt::KeyboardModifiers keys);
    void beginDrag();
    void selectBand();
    void eraseAt();
    [[nodiscard]] bool isEnd(const BlkRef& blk, QPoint at) const;
    [[nodiscard]] std::uint32_t snapped(QPoint at) const;
    [[nodiscard]] BlkShift shift() const;
    [[nodiscard]] DrawBlk drawn() const;
    [[nodiscard]] std::uint32_t sizedEnd() const;

    CEditor& m_editor;
    const TrkGeometry& m_geometry;
    TrkSelection& m_selection;
    BlkFinder m_finder;
    BarLines m_bars;

    State m_state = State::idle;
    QPoint m_from; ///< the song's pixels
    QPoint m_now;
    Qt::KeyboardModifiers m_keys;
    std::optional<DropKind> m_altKind; ///< a press with Alt decides what the drag does
    BlkRef m_lead;                     ///< the block under the press
    bool m_moved = false;
    std::vector<BlkRef> m_before; ///< selected before the press
    LoopHandles m_loop;
};

} // namespace tessaro
