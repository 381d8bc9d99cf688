// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/controller_filter.h"

#include <QDialog>

#include <vector>

class QCheckBox;

namespace tessaro {

class UiText;

/// A box for each of 64 controllers, checked where it is dropped.
class ControllersDialog : public QDialog {
public:
    static constexpr int count = 64;

    /// Those from `first` on.
    ControllersDialog(int first, const ControllerFilter::Switches& drop, const UiText& text, QWidget* parent);

    /// The switches of all controllers by now.
    [[nodiscard]] ControllerFilter::Switches switches() const;

private:
    std::size_t m_first;
    ControllerFilter::Switches m_drop;
    std::vector<QCheckBox*> m_boxes; ///< children of the dialog
};

} // namespace tessaro
