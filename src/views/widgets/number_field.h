// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/widgets/number_display.h"

#include <QLineEdit>
#include <QPointer>

#include <functional>

namespace tessaro {

/// A number that can be typed in its place, and turned with the wheel or the arrow keys. A click, Enter or F2 opens a
/// line; Enter takes what was typed, Escape and a click elsewhere leave the number as it is.
class NumberField : public NumberDisplay {
public:
    explicit NumberField(QString widest, QWidget* parent = nullptr, double size = 1.6);

    /// What was typed; false when it is no such number, then the line stays open.
    std::function<bool(const QString&)> onTyped;
    /// Up by so many steps, down when negative.
    std::function<void(int)> onTurned;

    void edit();
    /// The open line; null for none.
    [[nodiscard]] QLineEdit* line() const { return m_line; }

protected:
    bool eventFilter(QObject* line, QEvent* event) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void take();
    void close();

    QPointer<QLineEdit> m_line;
    QPointer<QWidget> m_before; ///< had the focus when the line opened
    int m_wheel = 0;            ///< turned so far, in eighths of a degree
};

} // namespace tessaro
