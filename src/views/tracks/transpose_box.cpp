// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/transpose_box.h"

#include "views/tracks/transpose_text.h"

#include <cstdlib>

namespace tessaro {

TransposeBox::TransposeBox(QString offText, QWidget* parent) : QSpinBox(parent), m_offText(std::move(offText))
{
    setRange(off, most);
    setValue(0);
}

QString TransposeBox::textFromValue(int value) const { return value == off ? m_offText : transposeText(value); }

bool TransposeBox::isOff(const QString& text) const
{
    const QString word = text.trimmed();
    return word.isEmpty() || word == m_offText || word == QLatin1String("OFF") || word == QLatin1String("Off")
        || word == QLatin1String("off");
}

int TransposeBox::valueFromText(const QString& text) const { return isOff(text) ? off : text.trimmed().toInt(); }

QValidator::State TransposeBox::validate(QString& text, int&) const
{
    if (isOff(text)) return QValidator::Acceptable;
    const QString typed = text.trimmed();
    bool isNumber = false;
    const int number = typed.toInt(&isNumber);
    if (isNumber) return std::abs(number) <= most ? QValidator::Acceptable : QValidator::Invalid;
    const bool begun = typed == QLatin1String("-") || typed == QLatin1String("+")
                    || QStringLiteral("off").startsWith(typed, Qt::CaseInsensitive);
    return begun ? QValidator::Intermediate : QValidator::Invalid;
}

} // namespace tessaro
