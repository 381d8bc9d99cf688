// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>

namespace tessaro {

/// A combo box whose rows stand for numbers.
class ChoiceBox : public QComboBox {
public:
    using QComboBox::QComboBox;

    void add(const QString& name, int value) { addItem(name, value); }
    /// Chooses the row of this number; none when there is no such row.
    void choose(int value) { setCurrentIndex(findData(value)); }
    /// The chosen number, or this one when none is chosen.
    [[nodiscard]] int chosen(int otherwise) const { return currentIndex() < 0 ? otherwise : currentData().toInt(); }
};

} // namespace tessaro
