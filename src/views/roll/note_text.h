// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/records.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tessaro {

class CEditor;
class UiText;

// How notes and controllers read, and how what was typed is understood.

/// "C-1" for 0, "C4" for 60, "G9" for 127.
[[nodiscard]] QString keyName(int key);
/// A name in capitals or not, with # or b, or a number; nothing outside of 0 to 127.
[[nodiscard]] std::optional<int> parseKey(const QString& text);

/// Measure, beat and tick of an absolute tick, as the song has them there.
[[nodiscard]] QString placeText(const CEditor& editor, std::uint32_t time);
/// Ticks of a beat in the measure at an absolute tick, at least 1.
[[nodiscard]] std::uint32_t beatClockAt(const CEditor& editor, std::uint32_t time);
/// Beats and ticks, "%d:%d", in beats of this many ticks.
[[nodiscard]] QString lengthText(std::uint32_t ticks, std::uint32_t beatClock);
/// The same back; a number alone is ticks.
[[nodiscard]] std::optional<std::uint32_t> parseLength(const QString& text, std::uint32_t beatClock);

/// A whole number of 0 to 127.
[[nodiscard]] std::optional<int> parseValue(const QString& text);

/// "CC 7 Volume", or "CC 3" for one without a usual name.
[[nodiscard]] QString controllerName(int controller, const UiText& text);

} // namespace tessaro
