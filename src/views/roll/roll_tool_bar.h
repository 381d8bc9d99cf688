// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/roll/strip_kind.h"
#include "views/widgets/folding_row.h"

#include <functional>

namespace tessaro {

class ChoiceBox;
class GridBox;

/// The tool bar over a roll: track, tools, grid, kind of the strip, switches.
class RollToolBar : public FoldingRow {
public:
    explicit RollToolBar(const ViewParts& parts, QWidget* parent = nullptr);

    std::function<void(int track)> onTrack;
    std::function<void()> onKind;

    /// The tracks that can be shown, with this one chosen.
    void fillTracks(int shown);
    /// The kind that is chosen; for the pressure of single keys without the key.
    [[nodiscard]] StripKind kind() const;
    [[nodiscard]] QString kindName() const;
    /// Velocities for a code of nothing.
    void chooseKind(int code);
    [[nodiscard]] GridBox& gridBox() const { return *m_grid; }
    void retranslate();

private:
    void fillKinds();

    ViewParts m_parts;
    // Children of the widget.
    ChoiceBox* m_tracks;
    GridBox* m_grid;
    ChoiceBox* m_kinds;
};

} // namespace tessaro
