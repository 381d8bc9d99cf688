// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/roll/grid.h"

#include <QWidget>

#include <functional>

namespace tessaro {

class ChoiceBox;
class ToolButton;

/// Where the grid of all windows is chosen: the note, its dot or tuplet, and no grid at all. It shows every choice,
/// wherever it was made.
class GridBox : public QWidget, private GridObserver {
public:
    explicit GridBox(const ViewParts& parts, QWidget* parent = nullptr);
    ~GridBox() override;

    /// The grid is another one.
    std::function<void()> onChanged;

    [[nodiscard]] ChoiceBox& noteBox() const { return *m_note; }
    [[nodiscard]] ChoiceBox& shapeBox() const { return *m_shape; }
    void retranslate();

private:
    void onGrid() override;
    void showGrid();

    ViewParts m_parts;
    // Children of the widget.
    ChoiceBox* m_note;
    ChoiceBox* m_shape;
    ToolButton* m_free;
};

} // namespace tessaro
