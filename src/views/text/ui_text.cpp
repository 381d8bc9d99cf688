// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/text/ui_text.h"

#include "base/text.h"

#include <QRegularExpression>

namespace tessaro {

QString UiText::operator()(TextId id) const { return utf8Text(m_strings(id)); }

QString UiText::plain(TextId id) const
{
    static const QRegularExpression marks(QStringLiteral("\\(&.\\)|&|…"));
    return (*this)(id).remove(marks);
}

QString songText(std::string_view bytes) { return utf8Text(toUtf8(bytes)); }

} // namespace tessaro
