// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/trk_selection.h"

namespace tessaro {

/// What is selected in the track window, for those who know the main window alone: blocks, chords and style blocks.
/// Every call goes to the track window; without one the answer is 0.
class TrkForwards {
public:
    void trkInitSel() { tell(&TrkSelection::trkInitSel); }
    bool trkAddSel(POSITION trk, POSITION blk) { return ask(&TrkSelection::trkAddSel, trk, blk); }
    bool trkDelSel(POSITION trk, POSITION blk) { return ask(&TrkSelection::trkDelSel, trk, blk); }
    [[nodiscard]] POSITION trkGetHeadSel() const { return ask(&TrkSelection::trkGetHeadSel); }
    [[nodiscard]] POSITION trkGetTailSel() const { return ask(&TrkSelection::trkGetTailSel); }
    bool trkGetNextSel(POSITION& pos, const SelItem** item) const
    {
        return look<POSITION&>(TrkSelection::trkGetNextSel, pos, item);
    }
    bool trkGetPrevSel(POSITION& pos, const SelItem** item) const
    {
        return look<POSITION&>(TrkSelection::trkGetPrevSel, pos, item);
    }
    bool trkGetAtSel(POSITION pos, const SelItem** item) const
    {
        return look<POSITION>(TrkSelection::trkGetAtSel, pos, item);
    }

    void trkInitSelChd() { tell(&TrkSelection::trkInitSelChd); }
    bool trkAddSelChd(POSITION trk, POSITION blk, POSITION evnt)
    {
        return ask(&TrkSelection::trkAddSelChd, trk, blk, evnt);
    }
    bool trkDelSelChd(POSITION trk, POSITION blk, POSITION evnt)
    {
        return ask(&TrkSelection::trkDelSelChd, trk, blk, evnt);
    }
    [[nodiscard]] POSITION trkGetHeadSelChd() const { return ask(&TrkSelection::trkGetHeadSelChd); }
    [[nodiscard]] POSITION trkGetTailSelChd() const { return ask(&TrkSelection::trkGetTailSelChd); }
    bool trkGetNextSelChd(POSITION& pos, const SelItem** item) const { return trkGetNextSel(pos, item); }
    bool trkGetPrevSelChd(POSITION& pos, const SelItem** item) const { return trkGetPrevSel(pos, item); }
    bool trkGetAtSelChd(POSITION pos, const SelItem** item) const { return trkGetAtSel(pos, item); }

    void trkInitSelStyle() { tell(&TrkSelection::trkInitSelStyle); }
    bool trkAddSelStyle(POSITION style) { return ask(&TrkSelection::trkAddSelStyle, style); }
    bool trkDelSelStyle(POSITION style) { return ask(&TrkSelection::trkDelSelStyle, style); }
    [[nodiscard]] POSITION trkGetHeadSelStyle() const { return ask(&TrkSelection::trkGetHeadSelStyle); }
    [[nodiscard]] POSITION trkGetTailSelStyle() const { return ask(&TrkSelection::trkGetTailSelStyle); }
    bool trkGetNextSelStyle(POSITION& pos, const SelItem** item) const { return trkGetNextSel(pos, item); }
    bool trkGetPrevSelStyle(POSITION& pos, const SelItem** item) const { return trkGetPrevSel(pos, item); }
    bool trkGetAtSelStyle(POSITION pos, const SelItem** item) const { return trkGetAtSel(pos, item); }

protected:
    ~TrkForwards() = default;
    /// Null without a track window.
    [[nodiscard]] virtual TrkSelection* trkSelection() const = 0;

private:
    void tell(void (TrkSelection::*what)())
    {
        if (TrkSelection* selection = trkSelection()) (selection->*what)();
    }
    template <class Answer, class... Told, class... Args>
    Answer ask(Answer (TrkSelection::*what)(Told...), Args... args)
    {
        TrkSelection* selection = trkSelection();
        return selection ? (selection->*what)(args...) : Answer{};
    }
    [[nodiscard]] POSITION ask(POSITION (TrkSelection::*what)() const) const
    {
        const TrkSelection* selection = trkSelection();
        return selection ? (selection->*what)() : nullptr;
    }
    template <class At>
    [[nodiscard]] bool look(bool (*what)(At, const SelItem**), At pos, const SelItem** item) const
    {
        return trkSelection() && what(pos, item);
    }
};

} // namespace tessaro
