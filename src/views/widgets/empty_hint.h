// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace tessaro {

/// Fills an empty place: an icon, one sentence that says what to do next, and the button that does it.
class EmptyHint : public QWidget {
public:
    EmptyHint(const QIcon& icon, QWidget* parent = nullptr);

    void setSentence(const QString& sentence);
    [[nodiscard]] QPushButton& button() const { return *m_button; }
    [[nodiscard]] QSize sizeHint() const override; ///< with the picture

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void drawIcon();

    QIcon m_icon;
    // Children of the widget.
    QLabel* m_picture;
    QLabel* m_sentence;
    QPushButton* m_button;
};

} // namespace tessaro
