// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/edit/evnt_ref.h"
#include "core/ports/hint_observer.h"

#include <QAction>

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace tessaro {

class EditPanel;
struct ViewParts;

/// The everyday edits of what is selected.
enum class EverydayEdit {
    quantise,
    quantiseAgain, ///< with the settings of the last time
    humanise,
    transpose,
    velocity,
    gateTime,
    setLength,
    legato,
    shift,
    thin,
    splitPitch,
    splitChannel,
    chordSort,
    chordSeparate,
    removeDoubles,
};

inline constexpr int everydayEdits = static_cast<int>(EverydayEdit::removeDoubles) + 1;

/// The everyday edits as actions, for menus and the list of all commands. An edit works on what the active child
/// window has selected, as one undo step, and leaves it selected. Those with settings open a panel that stays open
/// beside the window. While the song is locked they do nothing; without a selection they say what to do first.
/// User interface thread.
class EverydayEdits : public HintObserver {
public:
    /// `window` is where keys work and over which the panels stand; it and `parts` outlive this object.
    EverydayEdits(QWidget& window, const ViewParts& parts);
    EverydayEdits(const EverydayEdits&) = delete;
    EverydayEdits& operator=(const EverydayEdits&) = delete;
    ~EverydayEdits() override;

    /// How an edit stands in the list of all commands.
    struct Entry {
        const char* id; ///< for the settings, for ever
        TextId text;
    };
    [[nodiscard]] static const Entry& entry(EverydayEdit edit);

    [[nodiscard]] QAction& operator[](EverydayEdit edit) { return m_actions[static_cast<std::size_t>(edit)]; }
    void run(EverydayEdit edit);
    /// The panel of an edit; null while it was not used yet.
    [[nodiscard]] EditPanel* panel(EverydayEdit edit) const { return m_panels[static_cast<std::size_t>(edit)].get(); }

    /// Another window is active, or its selection has changed: open panels tell what they would do by now. They follow
    /// the song by themselves.
    void refresh();
    void retranslate();
    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

private:
    [[nodiscard]] std::vector<EvntRef> selection() const;
    EditPanel& makePanel(EverydayEdit edit);
    void openPanel(EverydayEdit edit);
    void apply(EverydayEdit edit);

    QWidget& m_window;
    const ViewParts& m_parts;
    std::array<QAction, everydayEdits> m_actions;
    std::array<std::unique_ptr<EditPanel>, everydayEdits> m_panels;
};

} // namespace tessaro
