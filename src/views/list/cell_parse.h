// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tessaro {

class UiText;

// How values of the event list read and are typed. What cannot be read gives nothing.

/// Whole numbers with a sign of any kind between them, at least one.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> parseNumbers(const QString& text);
/// A decimal number with or without a sign.
[[nodiscard]] std::optional<double> parseDecimal(const QString& text);
/// Two bytes of 7 bits.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> parsePair(const QString& text);

/// "43 7B 01".
[[nodiscard]] QString hexText(std::span<const std::uint8_t> bytes);
/// Pairs of hex digits with or without blanks between them; commas count as blanks.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> parseHex(const QString& text);
/// What stands behind the F0 of a system exclusive message. F0 and F7 may be left out; between them none above 7F.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> parseSysex(const QString& text);

struct Signature {
    std::uint8_t numerator = 4;
    std::uint8_t denominator = 2; ///< power of two
};
/// "3/4"; the denominator is a power of two, of any size.
[[nodiscard]] std::optional<Signature> parseSignature(const QString& text);

/// "Eb major", from a body of two bytes; in hex for a body that names no key.
[[nodiscard]] QString keySignatureText(std::span<const std::uint8_t> body, const UiText& text);
/// "Eb major", "F# minor", "Eb" and "F#m" in any case, and the names of any language, to a body of two bytes.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> parseKeySignature(const QString& text);

// Tempos: microseconds a quarter note, of which a song holds three bytes, and beats a minute.

inline constexpr double slowestBeats = 4; ///< that can be typed or drawn
inline constexpr double fastestBeats = 1000;
[[nodiscard]] double beatsOf(std::uint32_t microseconds);
/// The nearest tempo that a song can hold.
[[nodiscard]] std::uint32_t microsecondsOf(double beats);
[[nodiscard]] std::vector<std::uint8_t> tempoBytes(std::uint32_t microseconds);

/// The one size of the body of a meta event of this type; 0 for a type of any size.
[[nodiscard]] int legalMetaSize(std::uint8_t type);

} // namespace tessaro
