// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QPainter;
class QStyle;
class QStyleOption;
class QStyleOptionSpinBox;
class QWidget;

namespace tessaro {

// The looks of what is checked and typed into. All take their colours from the palette of the option, and leave the
// painter's state behind changed.

/// A box that is empty, checked, or in between.
void drawCheckIndicator(const QStyleOption& box, QPainter& painter);
void drawRadioIndicator(const QStyleOption& button, QPainter& painter);
/// Around a line of text; in the accent colour where the keys go.
void drawInputFrame(const QStyleOption& line, QPainter& painter);
void drawSpinBox(const QStyle& style, const QStyleOptionSpinBox& box, QPainter& painter, const QWidget* widget);

} // namespace tessaro
