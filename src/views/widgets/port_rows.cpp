// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/port_rows.h"

#include <QComboBox>

#include <algorithm>

namespace tessaro {

void addPortRows(QComboBox& box, const QStringList& names, int least)
{
    const int count = std::max(static_cast<int>(names.size()), least);
    for (int port = 0; port < count; ++port)
        box.addItem(QStringLiteral("%1: %2").arg(port + 1).arg(names.value(port, QStringLiteral("---"))), port);
}

} // namespace tessaro
