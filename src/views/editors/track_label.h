// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaro {

class CEditor;
class UiText;

/// How titles and lists of child windows call a track: number and name, or a name made of the number; track 0 by the
/// name of the master track.
[[nodiscard]] QString trackLabel(const CEditor& editor, int track, const UiText& text);

} // namespace tessaro
