// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QComboBox;

namespace tessaro {

/// Adds a row for each MIDI output port, with its number from 1 and its name; the row's data is the port. Ports below
/// `least` have a row even where there is no such port.
void addPortRows(QComboBox& box, const QStringList& names, int least = 0);

} // namespace tessaro
