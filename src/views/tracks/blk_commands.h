// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/edit/evnt_ref.h"
#include "core/model/blk.h"
#include "views/tracks/bar_lines.h"
#include "views/tracks/blk_outcome.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaro {

class CEditor;
class TrkSelection;
class UiText;

/// What a person may change in the small editor of a block.
struct BlkProperties {
    std::string name; ///< bytes as the song holds them
    std::uint32_t top = 0;
    std::uint32_t end = 0;
    int track = 1;
};

/// The edits of the track window: each works on the selected blocks, is one undo step, and leaves selected what it has
/// made. They answer whether anything was done; while the song is locked nothing is, without a word. Ticks. User
/// interface thread. Borrows all.
class BlkCommands {
public:
    BlkCommands(CEditor& editor, const UiText& text, TrkSelection& selection, std::function<bool()> isLocked)
        : m_editor(editor)
        , m_text(text)
        , m_selection(selection)
        , m_isLocked(std::move(isLocked))
    {
    }

    /// What a gesture asked for, if it is an edit.
    bool run(const BlkOutcome& outcome);

    /// Moves go from the last selected to the first, all others the other way round. A copy that meets a track of
    /// another type says so and ends there.
    bool drop(DropKind kind, const BlkShift& shift);
    /// The lead goes to the next bar line on that side, the others with it; by whole rows, if there is room for all.
    bool nudge(int bars, int rows);
    bool nudgeTicks(int ticks);
    /// Right behind the selection, so many times: at a bar line where the first block begins at one.
    bool duplicate(DropKind kind, int times = 1);

    bool create(int track, std::uint32_t top, std::uint32_t end);
    /// Sources take their ghosts along after a question.
    bool remove(TextId title = TextId::undoBlockDelete);
    /// Not before the last sound.
    bool resize(const BlkRef& blk, std::uint32_t end);
    /// Ends go to the next bar line on that side.
    bool lengthen(int bars);
    bool rename(const BlkRef& blk, const std::string& name);
    bool change(const BlkRef& blk, const BlkProperties& properties);

    /// At the bar line next to the tick, the blocks that reach over it. Ghosts are left out with a note, here and in
    /// `link`.
    bool divide(std::uint32_t time);
    /// Of each track, every block goes into the first: only a later block can go into an earlier one, which it makes
    /// longer, while events before a block's top have no place in it.
    bool link();
    bool linkNext(const BlkRef& blk);
    /// The same with ghosts, which become real first.
    bool merge();
    bool realise();

    // These change the selection alone.

    /// The sources of the ghosts.
    bool selectSources();
    /// All blocks that share their events with a selected one.
    bool selectSiblings();
    bool selectAll();
    bool invert();

    // What there is to work on

    [[nodiscard]] bool anyReal() const { return any(blktype::real); }
    [[nodiscard]] bool anyGhost() const { return any(blktype::ghost); }
    /// From the first top to the last end; none without a selection.
    [[nodiscard]] std::optional<TrkGeometry::Span> span() const;

private:
    [[nodiscard]] bool any(std::uint8_t type) const;
    template <class Work>
    bool step(TextId title, Work&& work);
    [[nodiscard]] BarLines bars() const;
    /// The selected blocks without ghosts; with a note when there are any.
    [[nodiscard]] std::vector<BlkRef> realOnes() const;
    [[nodiscard]] std::vector<BlkRef> ghosts() const;
    bool move(const BlkShift& shift);
    bool place(TextId title, DropKind kind, const BlkShift& shift, int times);
    bool placeOne(DropKind kind, const BlkRef& blk, const BlkShift& shift, std::vector<BlkRef>& into);
    bool copy(const BlkRef& blk, POSITION trk2, std::uint32_t top);
    bool join(TextId title, std::vector<BlkRef> blks);
    void note(TextId text) const;

    CEditor& m_editor;
    const UiText& m_text;
    TrkSelection& m_selection;
    std::function<bool()> m_isLocked;
};

} // namespace tessaro
