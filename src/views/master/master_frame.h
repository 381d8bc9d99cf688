// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/child_frame.h"
#include "views/editors/view_parts.h"

namespace tessaro {

class CListVw;

/// The master track: the song's tempo as a curve to draw, with signatures, keys, markers and texts as flags above it,
/// and the same events as a list. User interface thread.
class CMstrFrm : public ChildFrame {
public:
    explicit CMstrFrm(const ViewParts& parts);
    ~CMstrFrm() override;

    [[nodiscard]] WindowKind kind() const override { return WindowKind::masterTrack; }
    [[nodiscard]] QString title() const override;
    [[nodiscard]] int track() const override { return 0; }
    [[nodiscard]] bool can(ViewCommand command) const override;
    void run(ViewCommand command) override;
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override;
    void selectEvnts(std::span<const EvntRef> refs) override;
    void setPosition(std::uint32_t tick, bool follow) override;
    void songReplaced() override;
    void retranslate() override;
    void saveState() override;
    void restoreState() override;

private:
    const ViewParts m_parts;
    CListVw* m_list; ///< child of the widget
};

} // namespace tessaro
