// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessaro {

/// The handle at the left edge of a docked panel: drawn dots, to take it by.
class DockGrip : public QWidget {
public:
    explicit DockGrip(QWidget* dock);

    [[nodiscard]] QSize sizeHint() const override { return {12, 24}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessaro
