// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/prop_page.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace tessaro {

class CEditor;
class TrackCommands;
class TransposeBox;
class UiText;

/// The small editor of a track. The type is fixed while the track holds a block.
class CTrkPropPage final : public PropPage {
public:
    /// All outlive the page.
    CTrkPropPage(CEditor& editor, TrackCommands& commands, const UiText& text, const QStringList& ports, int track,
                 QWidget* parent);

    [[nodiscard]] QLineEdit& name() const { return *m_name; }
    [[nodiscard]] QComboBox& type() const { return *m_type; }
    [[nodiscard]] QComboBox& port() const { return *m_port; }
    [[nodiscard]] QSpinBox& channel() const { return *m_channel; }
    [[nodiscard]] TransposeBox& transpose() const { return *m_transpose; }

protected:
    void take() override;

private:
    CEditor& m_editor;
    TrackCommands& m_commands;
    const int m_track;
    // Children of the widget.
    QLineEdit* m_name;
    QComboBox* m_type; ///< its rows are the types by number
    QComboBox* m_port;
    QSpinBox* m_channel;
    TransposeBox* m_transpose;
};

} // namespace tessaro
