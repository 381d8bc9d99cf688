// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/child_frame.h"
#include "views/editors/view_parts.h"

namespace tessaro {

class CListVw;

/// The event list: every event of one track as a line of a table, in the order of time, with a bar that filters,
/// inserts and finds. User interface thread.
class CListFrm : public ChildFrame {
public:
    CListFrm(const ViewParts& parts, int track);
    ~CListFrm() override;

    [[nodiscard]] WindowKind kind() const override { return WindowKind::eventList; }
    [[nodiscard]] QString title() const override;
    [[nodiscard]] int track() const override;
    void setTrack(int track) override;
    [[nodiscard]] bool can(ViewCommand command) const override;
    void run(ViewCommand command) override;
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override;
    void selectEvnts(std::span<const EvntRef> refs) override;
    void setPosition(std::uint32_t tick, bool follow) override;
    void songReplaced() override;
    void retranslate() override;
    void saveState() override;
    void restoreState() override;

    [[nodiscard]] CListVw& list() const { return *m_list; }

private:
    const ViewParts m_parts;
    CListVw* m_list; ///< child of the widget
};

} // namespace tessaro
