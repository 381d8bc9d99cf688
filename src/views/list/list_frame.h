// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "views/editors/child_frame.h"
#include "views/editors/view_parts.h"

class QLineEdit;
class QStackedWidget;

namespace tessaro {

class ChoiceBox;
class CListVw;
class ElidedLabel;
class EmptyHint;
class FoldingRow;
class KindFilter;
struct RowFilter;

/// The event list: every event of one track as a line of a table, in the order of time, with a bar that inserts,
/// filters and finds. User interface thread.
class CListFrm : public ChildFrame, public HintObserver {
public:
    CListFrm(const ViewParts& parts, int track);
    ~CListFrm() override;

    [[nodiscard]] WindowKind kind() const override { return WindowKind::eventList; }
    [[nodiscard]] QString title() const override;
    [[nodiscard]] int track() const override;
    void setTrack(int track) override;
    [[nodiscard]] bool can(ViewCommand command) const override;
    [[nodiscard]] bool isOn(ViewCommand command) const override;
    void run(ViewCommand command) override;
    [[nodiscard]] std::vector<EvntRef> selectedEvnts() const override;
    void selectEvnts(std::span<const EvntRef> refs) override;
    void setPosition(std::uint32_t tick, bool follow) override;
    void songReplaced() override;
    void retranslate() override;

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

    [[nodiscard]] CListVw& list() const { return *m_list; }
    [[nodiscard]] KindFilter& kinds() const { return *m_kinds; }
    [[nodiscard]] ChoiceBox& channels() const { return *m_channels; }
    [[nodiscard]] QLineEdit& finder() const { return *m_find; }
    [[nodiscard]] EmptyHint& empty() const { return *m_empty; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildBar();
    void fillTracks();
    void fillFilter();
    void showState();
    void showTracks();
    void keepFilter(const RowFilter& filter);
    void find(bool backwards);

    const ViewParts m_parts;
    // Children of the widget.
    FoldingRow* m_bar;
    ChoiceBox* m_tracks;
    KindFilter* m_kinds;
    ChoiceBox* m_channels;
    QLineEdit* m_find;
    ElidedLabel* m_count;
    QStackedWidget* m_pages;
    CListVw* m_list;
    EmptyHint* m_empty;
    bool m_tracksStale = false;
};

} // namespace tessaro
