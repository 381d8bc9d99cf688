// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessaro {

/// A number that changes, in tabular figures under a small caption. Every figure takes the width of the widest, so
/// nothing moves while the number runs. The width is that of the widest text told in advance.
class NumberDisplay : public QWidget {
public:
    /// `size` is that of the figures, beside the size of the usual font.
    explicit NumberDisplay(QString widest, QWidget* parent = nullptr, double size = 1.6);

    /// Without a caption the number takes the whole height.
    void setCaption(const QString& caption);
    /// The palette role of the caption; a quiet text otherwise.
    void setCaptionRole(QPalette::ColorRole role);
    void setValue(const QString& value);
    [[nodiscard]] const QString& value() const { return m_value; }
    /// A text that stands large in the place of caption and number; empty to end it.
    void setBanner(const QString& text);
    [[nodiscard]] const QString& banner() const { return m_banner; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    [[nodiscard]] const QFont& valueFont() const { return m_valueFont; }
    [[nodiscard]] int captionHeight() const;

private:
    void chooseFonts();
    [[nodiscard]] int cellWidth(QChar c) const;
    [[nodiscard]] int textWidth(const QString& text) const;

    QString m_widest;
    QString m_caption;
    QString m_value;
    QString m_banner;
    QPalette::ColorRole m_captionRole = QPalette::PlaceholderText;
    double m_size;
    QFont m_valueFont;
    QFont m_captionFont;
    int m_figure = 0; ///< width of a figure
};

} // namespace tessaro
