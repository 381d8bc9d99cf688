// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"

namespace tessaro {

class BlkCommands;
class CTrackFrame;
class CTrk;
class CTrkBlkView;
class TrkSelection;

/// What the commands do in the track window: to the selected blocks, to the current track where none is, and to the
/// looks. User interface thread. Borrows all.
class TrackWindowCommands {
public:
    TrackWindowCommands(const ViewParts& parts, CTrackFrame& frame) : m_parts(parts), m_frame(frame) {}

    [[nodiscard]] bool can(ViewCommand command) const;
    [[nodiscard]] bool isOn(ViewCommand command) const;
    void run(ViewCommand command);

private:
    /// These answer whether the command is one of theirs.
    bool edit(ViewCommand command);
    bool act(ViewCommand command);
    bool select(ViewCommand command);
    bool look(ViewCommand command);

    void made(bool done);
    void nudge(int bars, int rows);
    void selectBlk();
    [[nodiscard]] const CTrk& currentTrk() const;
    void paste();
    void newBlock();
    void properties();
    void openEditor();

    [[nodiscard]] CTrkBlkView& view() const;
    [[nodiscard]] BlkCommands& blks() const;
    [[nodiscard]] TrkSelection& selection() const;

    const ViewParts& m_parts;
    CTrackFrame& m_frame;
};

} // namespace tessaro
