// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessaro {

/// A number that changes, in tabular figures under a small caption. Every figure takes the width of the widest, so
/// nothing moves while the number runs. The width is that of the widest text told in advance.
class NumberDisplay : public QWidget {
public:
    explicit NumberDisplay(QString widest, QWidget* parent = nullptr);

    void setCaption(const QString& caption);
    void setValue(const QString& value);
    [[nodiscard]] const QString& value() const { return m_value; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void chooseFonts();
    [[nodiscard]] int cellWidth(QChar c) const;
    [[nodiscard]] int textWidth(const QString& text) const;

    QString m_widest;
    QString m_caption;
    QString m_value;
    QFont m_valueFont;
    QFont m_captionFont;
    int m_figure = 0; ///< width of a figure
};

} // namespace tessaro
