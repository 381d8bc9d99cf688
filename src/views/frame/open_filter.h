// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace tessaro {

/// The filters of a file dialog from a text "name|patterns|name|patterns|...||". What stands in brackets behind a name
/// makes way for the patterns, each in upper and in lower case, since names of files here tell them apart.
[[nodiscard]] QStringList openFilters(const QString& text);

} // namespace tessaro
