// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>

namespace tessaro {

class CEditor;
class UiText;

/// The steps of the editor as rows, behind a row for the song before the first of them. Row 0 is that one; row n is
/// the song with n steps done. It holds nothing: every question goes to the editor.
class HistoryModel : public QAbstractListModel {
public:
    /// Both outlive this object.
    HistoryModel(const CEditor& editor, const UiText& text) : m_editor(editor), m_text(text) {}

    /// The row of the song as it is.
    [[nodiscard]] int present() const;
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] QString title(int row) const;

    const CEditor& m_editor;
    const UiText& m_text;
};

} // namespace tessaro
