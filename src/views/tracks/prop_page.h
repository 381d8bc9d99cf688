// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <QFrame>

#include <functional>

class QFormLayout;
class QLabel;

namespace tessaro {

class UiText;

/// A small editor that stands over what it edits: a title over lines of fields. Enter and OK take what was set, Escape
/// and a click elsewhere leave everything as it is.
class PropPage : public QFrame {
public:
    explicit PropPage(const QString& title, QWidget* parent);

    /// Beside this place of the screen, `first` with the focus. The page deletes itself when it closes.
    void openAt(const QRect& place, QWidget& first);

protected:
    /// Takes what the fields hold.
    virtual void take() = 0;
    void addField(const UiText& text, TextId label, QWidget& field);

    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void accept();

    QFormLayout* m_form; ///< a child of the widget
};

} // namespace tessaro
