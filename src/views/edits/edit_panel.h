// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/edits/edit_kind.h"

#include <QDialog>
#include <QTimer>

#include <functional>
#include <vector>

class QFormLayout;
class QPushButton;

namespace tessaro {

class ElidedLabel;

/// A panel beside the window with the settings of one edit, and a line that tells what it would do with what is
/// selected at the moment. Enter does it, and leaves the panel open; Escape closes it. The settings are those of the
/// last time.
class EditPanel : public QDialog {
public:
    /// `title` with its access key; the parts outlive the panel.
    EditPanel(const EditKind& kind, TextId title, const ViewParts& parts, QWidget* parent);

    /// What is selected.
    std::function<std::vector<EvntRef>()> selection;
    std::function<void()> onApply;

    [[nodiscard]] EditPlan plan(std::span<const EvntRef> selected) const;
    /// Keeps the settings, and lets chance be another one next time.
    void used();
    /// The selection, or the song, is another one.
    void refresh();
    void retranslate();

    /// The editor of a field, by its number; a spin box or a choice box.
    [[nodiscard]] QWidget& field(std::size_t number) const { return *m_fields[number]; }
    [[nodiscard]] int value(std::size_t number) const;
    [[nodiscard]] QString preview() const;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* box, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void addFields();
    void fillTracks();
    void showFields();
    void showPlan();

    const EditKind& m_kind;
    const TextId m_title;
    const ViewParts& m_parts;
    std::uint32_t m_seed = 0;
    bool m_placed = false;
    QTimer m_stale; ///< the preview is out of date
    // Children of the panel.
    QFormLayout* m_form;
    std::vector<QWidget*> m_fields; ///< in the order of the kind's
    ElidedLabel* m_preview;
    QPushButton* m_apply;
    QPushButton* m_close;
};

} // namespace tessaro
