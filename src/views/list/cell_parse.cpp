// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/cell_parse.h"

#include "core/model/meta.h"
#include "views/text/ui_text.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace tessaro {
namespace {

constexpr std::uint32_t largestNumber = 2'000'000;
constexpr std::uint32_t slowest = 0xFF'FFFF;
constexpr double microsecondsAMinute = 60'000'000.0;

/// In fifths from 7 flats to 7 sharps, major; minor keys stand three further on.
constexpr std::array<const char*, 18> tonics{"Cb", "Gb", "Db", "Ab", "Eb", "Bb", "F",  "C",  "G",
                                             "D",  "A",  "E",  "B",  "F#", "C#", "G#", "D#", "A#"};
constexpr int majorOfNoSign = 7;
constexpr int minorOfNoSign = 10;

/// Whether this is the name of a mode, or the first letters of it.
bool isMode(const QString& word, TextId id, const char* start)
{
    const auto nameIn = [id](Language language) {
        return utf8Text(text(id, language)).remove(QLatin1String("%1")).trimmed();
    };
    return word == QLatin1String(start) || word == nameIn(Language::japanese)
        || word == nameIn(Language::english).toLower();
}

} // namespace

std::optional<std::vector<std::uint32_t>> parseNumbers(const QString& text)
{
    std::vector<std::uint32_t> numbers;
    bool isInside = false;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9') {
            if (!c.isSpace() && !c.isPunct()) return std::nullopt;
            isInside = false;
            continue;
        }
        if (!isInside) numbers.push_back(0);
        isInside = true;
        numbers.back() = numbers.back() * 10 + (c.unicode() - u'0');
        if (numbers.back() > largestNumber) return std::nullopt;
    }
    return numbers.empty() ? std::nullopt : std::optional(numbers);
}

std::optional<double> parseDecimal(const QString& text)
{
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::abs(number) < 1e9 ? std::optional(number) : std::nullopt;
}

std::optional<std::vector<std::uint8_t>> parsePair(const QString& text)
{
    const auto numbers = parseNumbers(text);
    if (!numbers || numbers->size() != 2 || std::max((*numbers)[0], (*numbers)[1]) > 127) return std::nullopt;
    return std::vector{static_cast<std::uint8_t>((*numbers)[0]), static_cast<std::uint8_t>((*numbers)[1])};
}

QString hexText(std::span<const std::uint8_t> bytes)
{
    constexpr auto digits = u"0123456789ABCDEF";
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()) * 3);
    for (const std::uint8_t byte : bytes) {
        if (!text.isEmpty()) text += u' ';
        text += digits[byte >> 4U];
        text += digits[byte & 15U];
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> parseHex(const QString& text)
{
    std::vector<std::uint8_t> bytes;
    QString line = text;
    for (const QString& word : line.replace(u',', u' ').split(u' ', Qt::SkipEmptyParts)) {
        if (word.size() > 1 && word.size() % 2) return std::nullopt;
        for (qsizetype at = 0; at < word.size(); at += 2) {
            bool isNumber = false;
            bytes.push_back(static_cast<std::uint8_t>(word.mid(at, 2).toUInt(&isNumber, 16)));
            if (!isNumber || !word[at].isLetterOrNumber()) return std::nullopt;
        }
    }
    return bytes;
}

std::optional<std::vector<std::uint8_t>> parseSysex(const QString& text)
{
    auto bytes = parseHex(text);
    if (!bytes) return std::nullopt;
    if (!bytes->empty() && bytes->front() == 0xF0) bytes->erase(bytes->begin());
    if (!bytes->empty() && bytes->back() == 0xF7) bytes->pop_back();
    if (std::any_of(bytes->begin(), bytes->end(), [](std::uint8_t byte) { return byte > 0x7F; })) return std::nullopt;
    bytes->push_back(0xF7);
    return bytes;
}

std::optional<Signature> parseSignature(const QString& text)
{
    const QStringList parts = text.split(u'/');
    if (parts.size() != 2) return std::nullopt;
    bool isNumerator = false;
    bool isDenominator = false;
    const unsigned numerator = parts[0].trimmed().toUInt(&isNumerator);
    const unsigned denominator = parts[1].trimmed().toUInt(&isDenominator);
    if (!isNumerator || !isDenominator || numerator > 255 || !std::has_single_bit(denominator)) return std::nullopt;
    return Signature{static_cast<std::uint8_t>(numerator), static_cast<std::uint8_t>(std::countr_zero(denominator))};
}

QString keySignatureText(std::span<const std::uint8_t> body, const UiText& text)
{
    if (body.size() != 2) return hexText(body);
    const int signs = static_cast<std::int8_t>(body[0]);
    if (signs < -7 || signs > 7 || body[1] > 1) return hexText(body);
    const bool isMinor = body[1] == 1;
    const int at = signs + (isMinor ? minorOfNoSign : majorOfNoSign);
    return text(isMinor ? TextId::keyMinor : TextId::keyMajor).arg(QLatin1String(tonics[static_cast<std::size_t>(at)]));
}

std::optional<std::vector<std::uint8_t>> parseKeySignature(const QString& text)
{
    const QString line = text.simplified();
    qsizetype length = line.size() > 1 && (line[1] == u'#' || line[1] == u'b' || line[1] == u'B') ? 2 : 1;
    QString tonic = line.left(length).toLower();
    if (!tonic.isEmpty()) tonic[0] = tonic[0].toUpper();
    const QString mode = line.mid(length).trimmed();
    const QString small = mode.toLower();
    const bool isMinor = mode == u"m" || isMode(small, TextId::keyMinor, "min");
    if (!isMinor && !small.isEmpty() && mode != u"M" && !isMode(small, TextId::keyMajor, "maj")) return std::nullopt;
    const auto at =
        std::find_if(tonics.begin(), tonics.end(), [&](const char* name) { return tonic == QLatin1String(name); });
    const auto signs = at - tonics.begin() - (isMinor ? minorOfNoSign : majorOfNoSign);
    if (at == tonics.end() || signs < -7 || signs > 7) return std::nullopt;
    return std::vector{static_cast<std::uint8_t>(signs), static_cast<std::uint8_t>(isMinor)};
}

double beatsOf(std::uint32_t microseconds) { return microseconds == 0 ? 0 : microsecondsAMinute / microseconds; }

std::uint32_t microsecondsOf(double beats)
{
    if (beats <= microsecondsAMinute / slowest) return slowest;
    return static_cast<std::uint32_t>(std::max(1.0, std::round(microsecondsAMinute / beats)));
}

std::vector<std::uint8_t> tempoBytes(std::uint32_t microseconds)
{
    return {static_cast<std::uint8_t>(microseconds >> 16U), static_cast<std::uint8_t>(microseconds >> 8U),
            static_cast<std::uint8_t>(microseconds)};
}

int legalMetaSize(std::uint8_t type)
{
    for (std::uint32_t size = 0; size <= 5; ++size)
        if (isMetaSizeLegal(type, size)) return isMetaSizeLegal(type, size + 1) ? 0 : static_cast<int>(size);
    return 0;
}

} // namespace tessaro
