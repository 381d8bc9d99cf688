// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QWidget>

#include <functional>

namespace tessaro {

class ChoiceBox;
class Icons;
class UiText;

/// Where the grid is chosen: the note, its dot or tuplet, and no grid at all. It speaks in grid indices, seven notes in
/// each row of fifteen: straight, dotted, and the tuplets.
class GridBox : public QWidget {
public:
    static constexpr int notes = 7;
    static constexpr int shapes = 15;

    /// Borrows both.
    GridBox(const Icons& icons, const UiText& text, QWidget* parent = nullptr);

    /// The person chose another grid.
    std::function<void(int index, bool free)> onChosen;

    void show(int index, bool free);
    [[nodiscard]] int index() const;
    [[nodiscard]] QAction& freeAction() { return m_free; }
    [[nodiscard]] ChoiceBox& noteBox() const { return *m_note; }
    [[nodiscard]] ChoiceBox& shapeBox() const { return *m_shape; }
    void retranslate();

private:
    void tell();

    const UiText& m_text;
    QAction m_free;
    // Children of the widget.
    ChoiceBox* m_note;
    ChoiceBox* m_shape;
};

} // namespace tessaro
