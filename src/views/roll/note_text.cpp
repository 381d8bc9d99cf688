// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/note_text.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"
#include "views/transport/location_text.h"

#include <algorithm>
#include <array>

namespace tessaro {
namespace {

constexpr int keys = 128;
constexpr std::array<const char*, 12> pitchNames{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};

struct NamedControl {
    int number;
    TextId name;
};

constexpr NamedControl namedControls[] = {
    {0, TextId::controller0},     {1, TextId::controller1},     {2, TextId::controller2},
    {4, TextId::controller4},     {5, TextId::controller5},     {6, TextId::controller6},
    {7, TextId::controller7},     {8, TextId::controller8},     {10, TextId::controller10},
    {11, TextId::controller11},   {12, TextId::controller12},   {13, TextId::controller13},
    {32, TextId::controller32},   {38, TextId::controller38},   {64, TextId::controller64},
    {65, TextId::controller65},   {66, TextId::controller66},   {67, TextId::controller67},
    {68, TextId::controller68},   {69, TextId::controller69},   {71, TextId::controller71},
    {72, TextId::controller72},   {73, TextId::controller73},   {74, TextId::controller74},
    {75, TextId::controller75},   {76, TextId::controller76},   {77, TextId::controller77},
    {78, TextId::controller78},   {84, TextId::controller84},   {91, TextId::controller91},
    {92, TextId::controller92},   {93, TextId::controller93},   {94, TextId::controller94},
    {95, TextId::controller95},   {98, TextId::controller98},   {99, TextId::controller99},
    {100, TextId::controller100}, {101, TextId::controller101}, {120, TextId::controller120},
    {121, TextId::controller121}, {123, TextId::controller123},
};

std::optional<int> inRange(int value) { return value >= 0 && value < keys ? std::optional(value) : std::nullopt; }

} // namespace

QString keyName(int key)
{
    return QLatin1String(pitchNames[static_cast<std::size_t>(key % 12)]) + QString::number(key / 12 - 1);
}

std::optional<int> parseKey(const QString& text)
{
    constexpr std::array<int, 7> pitches{9, 11, 0, 2, 4, 5, 7}; // of A to G
    const QString name = text.trimmed().toUpper();
    if (name.isEmpty()) return std::nullopt;
    const char16_t letter = name[0].unicode();
    if (letter < u'A' || letter > u'G') return parseValue(name);
    int pitch = pitches[static_cast<std::size_t>(letter - u'A')];
    qsizetype at = 1;
    if (at < name.size() && name[at] == u'#')
        ++pitch, ++at;
    else if (at < name.size() && name[at] == u'B')
        --pitch, ++at;
    bool isNumber = false;
    const int octave = name.mid(at).toInt(&isNumber);
    if (!isNumber || octave < -1 || octave > 9) return std::nullopt;
    return inRange(pitch + 12 * (octave + 1));
}

QString placeText(const CEditor& editor, std::uint32_t time)
{
    _EDT_MEAS place;
    editor.TimeToMeas(time, place);
    return utf8Text(locationText(place));
}

std::uint32_t beatClockAt(const CEditor& editor, std::uint32_t time)
{
    _EDT_MEAS place;
    editor.TimeToMeas(time, place);
    _EDT_MEASINFO measure;
    editor.GetMeasInfo(place.meas, measure);
    return std::max(measure.beatClock, 1U);
}

QString lengthText(std::uint32_t ticks, std::uint32_t beatClock)
{
    return QStringLiteral("%1:%2").arg(ticks / beatClock).arg(ticks % beatClock);
}

std::optional<std::uint32_t> parseLength(const QString& text, std::uint32_t beatClock)
{
    const auto colon = text.indexOf(u':');
    bool beatsFine = true;
    bool ticksFine = false;
    const std::uint64_t beats = colon < 0 ? 0 : text.left(colon).trimmed().toUInt(&beatsFine);
    const std::uint64_t ticks = text.mid(colon + 1).trimmed().toUInt(&ticksFine);
    const std::uint64_t all = beats * beatClock + ticks;
    if (!beatsFine || !ticksFine || all > 0x7FFF'FFFFU) return std::nullopt;
    return static_cast<std::uint32_t>(all);
}

std::optional<int> parseValue(const QString& text)
{
    bool isNumber = false;
    const int value = text.trimmed().toInt(&isNumber);
    return isNumber ? inRange(value) : std::nullopt;
}

QString controllerName(int controller, const UiText& text)
{
    for (const NamedControl& control : namedControls)
        if (control.number == controller)
            return text(TextId::stripNamedControl).arg(controller).arg(text(control.name));
    return text(TextId::stripControl).arg(controller);
}

} // namespace tessaro
