// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>

namespace tessaro {

/// The two sets of colours. Widgets take theirs from palette roles: Mid is a dividing line, PlaceholderText a quiet
/// text, Highlight the one accent, Link the accent as a text.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

[[nodiscard]] bool isDark(const QPalette& palette);

/// The colour of a track, by its number from 1; sixteen colours in a circle.
[[nodiscard]] QColor trackColour(int track, const QPalette& palette);

/// The red of everything that records.
[[nodiscard]] QColor recordColour(const QPalette& palette);

/// `share` parts of `a` (0 to 1) over `b`.
[[nodiscard]] QColor blend(const QColor& a, const QColor& b, double share);

/// Contrast ratio of two opaque colours, 1 to 21.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

} // namespace tessaro
