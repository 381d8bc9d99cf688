// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "views/editors/child_frame.h"
#include "views/editors/view_parts.h"

class QScrollBar;
class QSplitter;

namespace tessaro {

class CListVw;
class ElidedLabel;
class FoldingRow;
class GridBox;
class KindFilter;
class TempoView;

/// The master track: the song's tempo as a curve to draw, with signatures, keys, markers and texts as flags above it,
/// and the same events as a list below. User interface thread.
class CMstrFrm : public ChildFrame, public HintObserver {
public:
    explicit CMstrFrm(const ViewParts& parts);
    ~CMstrFrm() override;

    [[nodiscard]] WindowKind kind() const override { return WindowKind::masterTrack; }
    [[nodiscard]] QString title() const override;
    [[nodiscard]] int track() const override { return 0; }
    [[nodiscard]] bool can(ViewCommand command) const override;
    void run(ViewCommand command) override;
    [[nodiscard]] bool isOn(ViewCommand command) const override;
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override;
    void selectEvnts(std::span<const EvntRef> refs) override;
    void setPosition(std::uint32_t tick, bool follow) override;
    void songReplaced() override;
    void retranslate() override;
    void saveState() override;
    void restoreState() override;

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

    [[nodiscard]] CListVw& list() const { return *m_list; }
    [[nodiscard]] TempoView& curve() const { return *m_curve; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildBar();
    void showScale();
    void showState();
    void changeTempos(double beats);

    const ViewParts m_parts;
    // Children of the widget.
    FoldingRow* m_bar;
    GridBox* m_grid;
    KindFilter* m_kinds;
    ElidedLabel* m_pointed;
    QSplitter* m_splitter;
    CListVw* m_list;
    TempoView* m_curve;
    QScrollBar* m_across;
};

} // namespace tessaro
