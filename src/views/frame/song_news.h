// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaro {

class CEditor;
class UiText;

/// What to say of a song that came in: its tracks, measures and time. Empty for an empty song.
[[nodiscard]] QString loadedNews(const CEditor& song, const UiText& text);

} // namespace tessaro
