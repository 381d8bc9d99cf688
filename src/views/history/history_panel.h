// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/history/history_model.h"

#include <QListView>

#include <functional>

namespace tessaro {

/// The steps of the song one below the other: a click or Enter goes to the state behind a step. The present place is
/// the chosen row. It reads the editor, which outlives it, when it is refreshed.
class HistoryPanel : public QListView {
public:
    HistoryPanel(CEditor& editor, const UiText& text, QWidget* parent = nullptr);

    /// Whether the song must not change at the moment.
    std::function<bool()> isLocked;

    /// After every change of the song or its history.
    void refresh();
    void retranslate();
    [[nodiscard]] QSize sizeHint() const override { return {220, 300}; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void goTo(const QModelIndex& index);

    CEditor& m_editor;
    const UiText& m_text;
    HistoryModel m_model;
};

} // namespace tessaro
