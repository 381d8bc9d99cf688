// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QPixmap;
class QString;

namespace tessaro {

class Program;

/// The small windows that open over the main one, side by side in one picture: the panels of the everyday edits
/// ("edits"), the pages of properties ("pages"), the dialogs of the settings ("setup"), the table of keys ("keys").
/// The name is a known one.
[[nodiscard]] QPixmap panelPicture(Program& program, const QString& name);
[[nodiscard]] bool knowsPanels(const QString& name);

} // namespace tessaro
