// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/widgets/held_action.h"

#include <QAbstractButton>
#include <QPointer>

class QAction;

namespace tessaro {

class Icons;

/// The keys of an action, for a person.
[[nodiscard]] QString shortcutNames(const QAction& action);

/// A flat button that shows the icon, state, tip and name of an action and triggers it. A checked one stands in the
/// accent colour. The tip names its keys.
class ToolButton : public QAbstractButton {
public:
    /// `icons` and `action` outlive the button.
    ToolButton(const Icons& icons, QString icon, QAction& action, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return m_size; }
    [[nodiscard]] QSize minimumSizeHint() const override { return m_size; }
    /// Another icon for the same button.
    void setIconName(const QString& name);
    /// A short word in place of the icon.
    void setFace(const QString& word);
    void setSize(QSize size, int iconSize);

protected:
    struct Colours {
        QColor back;
        QColor mark;
    };
    /// As nothing touches the button.
    [[nodiscard]] virtual Colours colours() const;
    virtual void act();

    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

    QAction& m_action;

private:
    void follow();

    const Icons& m_icons;
    QString m_icon;
    QString m_face;
    QSize m_size{36, 36};
    int m_iconSize = 20;
};

/// Holds its action as long as the mouse holds the button.
class HeldButton : public ToolButton {
public:
    HeldButton(const Icons& icons, QString icon, HeldAction& action, QWidget* parent = nullptr);

protected:
    void act() override {}
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QPointer<HeldAction> m_held; ///< null when it went before the button
};

} // namespace tessaro
