// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/doc/settings.h"

#include <QCheckBox>

#include <vector>

namespace tessaro {

class UiText;

/// A check box that may stand in between, and from there goes to clear.
class KindBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void nextCheckState() override { setCheckState(checkState() == Qt::Unchecked ? Qt::Checked : Qt::Unchecked); }
};

/// One box for each kind of message, checked where it is dropped, under a sentence that says what that means.
class KindBoxes : public QWidget {
public:
    /// The first `kinds` of the switches.
    KindBoxes(const QString& sentence, const FilterSwitches& filter, std::size_t kinds, const UiText& text,
              QWidget* parent = nullptr);

    [[nodiscard]] KindBox& box(std::size_t kind) const { return *m_boxes[kind]; }
    void apply(FilterSwitches& filter) const;

private:
    std::vector<KindBox*> m_boxes; ///< children of the widget
};

} // namespace tessaro
