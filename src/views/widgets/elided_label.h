// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessaro {

/// One line of text that gives way: what does not fit ends in an ellipsis and shows whole in the tip.
class ElidedLabel : public QWidget {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return m_text; }
    void setAlignment(Qt::Alignment alignment);
    /// Which palette role the text takes.
    void setRole(QPalette::ColorRole role);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignVCenter;
    QPalette::ColorRole m_role = QPalette::PlaceholderText;
};

} // namespace tessaro
