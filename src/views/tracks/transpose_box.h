// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSpinBox>

namespace tessaro {

/// A transposition in semitones with its sign, -36 to +36, and off, one step below. Off is typed as its text, or as
/// nothing at all.
class TransposeBox : public QSpinBox {
public:
    static constexpr int most = 36;
    static constexpr int off = -most - 1;

    explicit TransposeBox(QString offText, QWidget* parent = nullptr);

protected:
    QString textFromValue(int value) const override;
    int valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& pos) const override;

private:
    [[nodiscard]] bool isOff(const QString& text) const;

    QString m_offText;
};

} // namespace tessaro
