// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

class QAction;

namespace tessaro {

class Icons;

/// A flat button that shows the icon, state, tip and name of an action and triggers it. A checked one stands in the
/// accent colour. The tip names the shortcut.
class ToolButton : public QAbstractButton {
public:
    /// `icons` and `action` outlive the button.
    ToolButton(const Icons& icons, QString icon, QAction& action, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {36, 36}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    /// Another icon for the same button.
    void setIconName(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void follow();

    const Icons& m_icons;
    QString m_icon;
    QAction& m_action;
};

} // namespace tessaro
