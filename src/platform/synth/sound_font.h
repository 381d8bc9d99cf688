// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>
#include <vector>

namespace tessaro {

/// The folders where General MIDI SoundFonts usually stand.
[[nodiscard]] TESSARO_API std::vector<std::string> soundFontFolders();

/// The SoundFont to use when none is chosen: TimGM6mb.sf2, else default-GM.sf2 or .sf3, else the first .sf2 or
/// .sf3 in alphabetical order, folder by folder. Empty when there is none.
[[nodiscard]] TESSARO_API std::string findSoundFont(const std::vector<std::string>& folders = soundFontFolders());

} // namespace tessaro
