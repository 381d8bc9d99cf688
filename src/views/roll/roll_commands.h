// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"

#include <vector>

namespace tessaro {

class CRollView;
class StripView;

/// What the commands of child windows do to notes and values that a roll and its strip show: to those that are
/// selected, or to how they are seen. Borrows views and what is in the parts.
class RollCommands {
public:
    RollCommands(const ViewParts& parts, CRollView& view, StripView& strip)
        : m_parts(parts)
        , m_view(view)
        , m_strip(strip)
    {
    }

    [[nodiscard]] bool can(ViewCommand command) const;
    /// For switches.
    [[nodiscard]] bool isOn(ViewCommand command) const;
    /// Only what can be done.
    void run(ViewCommand command);

private:
    [[nodiscard]] bool isMidi() const;
    [[nodiscard]] std::vector<EvntRef> selected() const;
    /// All that selecting everything takes: notes, or values where the keys go to the strip.
    [[nodiscard]] std::vector<EvntRef> everything() const;
    /// Of the grid at the first of them.
    [[nodiscard]] std::int64_t step(const std::vector<EvntRef>& refs) const;
    void select(const std::vector<EvntRef>& refs);
    void cut();
    void paste();
    void nudge(int steps);
    void stretch(int steps);
    void transpose(int keys);
    void zoom(double factor);
    void zoomToSelection();

    ViewParts m_parts;
    CRollView& m_view;
    StripView& m_strip;
};

} // namespace tessaro
