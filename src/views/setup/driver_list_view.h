// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/driver_order.h"

#include <QTreeWidget>

#include <functional>
#include <optional>

namespace tessaro {

class UiText;

/// Drivers with check boxes, in an order that the person makes: a row is dragged onto another one, or moved by Alt with
/// an arrow key. Beside a checked driver stands its port.
class DriverListView : public QTreeWidget {
public:
    /// A name for each driver of the order; the texts outlive the list.
    DriverListView(DriverOrder order, QStringList names, const UiText& text, QWidget* parent = nullptr);

    /// The order or the checks changed.
    std::function<void()> onChanged;

    [[nodiscard]] const DriverOrder& order() const { return m_order; }
    void setOrder(DriverOrder order);
    /// Moves the current row up, -1, or down, 1.
    void stepCurrent(int direction);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showRows(int current);
    void showPorts();
    /// The row at a point, or the count of rows behind the last one.
    [[nodiscard]] int placeAt(const QPoint& point) const;
    void setDropPlace(std::optional<int> place);
    void changed();

    DriverOrder m_order;
    QStringList m_names;
    const UiText& m_text;
    std::optional<int> m_held;      ///< the row under the button that is down
    std::optional<int> m_dropPlace; ///< where it would come in
    bool m_filling = false;
};

} // namespace tessaro
