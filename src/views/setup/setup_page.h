// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessaro {

struct Settings;

/// A page of the system setup. It shows the settings that it is made with, and holds what the person makes of them.
class SetupPage : public QWidget {
public:
    using QWidget::QWidget;

    /// Writes what stands on the page into the settings, and leaves the others alone.
    virtual void apply(Settings& settings) const = 0;

protected:
    static constexpr int gap = 8;
};

} // namespace tessaro
