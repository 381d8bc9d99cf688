// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/tracks/prop_page.h"

class QLineEdit;
class QSpinBox;

namespace tessaro {

class BlkCommands;
class CEditor;
class PositionBox;
class UiText;

/// The small editor of a block: name, place and length, and the track on which it stands. What is set becomes one step
/// that can be undone.
class CTrkBlkPropPage final : public PropPage {
public:
    /// All outlive the page.
    CTrkBlkPropPage(CEditor& editor, BlkCommands& commands, const UiText& text, const BlkRef& blk, QWidget* parent);

    [[nodiscard]] QLineEdit& name() const { return *m_name; }
    [[nodiscard]] PositionBox& top() const { return *m_top; }
    [[nodiscard]] PositionBox& end() const { return *m_end; }
    [[nodiscard]] QSpinBox& track() const { return *m_track; }

protected:
    void take() override;

private:
    BlkCommands& m_commands;
    const BlkRef m_blk;
    const QString m_oldName;
    const std::string m_oldBytes;
    // Children of the widget.
    QLineEdit* m_name;
    PositionBox* m_top;
    PositionBox* m_end;
    QSpinBox* m_track;
};

} // namespace tessaro
