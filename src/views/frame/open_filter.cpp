// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/open_filter.h"

namespace tessaro {
namespace {

QString patternsOf(const QString& text)
{
    QStringList patterns;
    for (const QString& part : text.split(QLatin1Char(';'))) {
        const QString pattern = part.trimmed();
        if (pattern == QLatin1String("*.*")) return QStringLiteral("*");
        patterns << pattern.toUpper() << pattern.toLower();
    }
    return patterns.join(QLatin1Char(' '));
}

} // namespace

QStringList openFilters(const QString& text)
{
    QStringList filters;
    const QStringList parts = text.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        const QString name = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        filters << QStringLiteral("%1 (%2)").arg(name, patternsOf(parts[i + 1]));
    }
    return filters;
}

} // namespace tessaro
