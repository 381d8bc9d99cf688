// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/evnt_cells.h"

#include "base/text.h"
#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "core/model/tick.h"
#include "views/list/cell_parse.h"
#include "views/roll/note_text.h"
#include "views/text/ui_text.h"
#include "views/transport/location_text.h"

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

using Bytes = std::vector<std::uint8_t>;

bool isWhole(double number) { return number == std::floor(number); }

QString plainNumber(const CEvnt& event, ListColumn column, CellForm form)
{
    _EDT_EVNT rec;
    event.Get(rec);
    return QString::number(rawNumber(rec, column, form) + rangeOf(form, column).shift);
}

/// More or less of a number, or of a length.
std::optional<double> parseDifference(const QString& line, CellForm form, std::uint32_t beatClock)
{
    if (form == CellForm::ticks) {
        const auto length = parseLength(line.mid(1), beatClock);
        return length ? std::optional((line[0] == u'-' ? -1.0 : 1.0) * *length) : std::nullopt;
    }
    const auto number = parseDecimal(line);
    return number && (form == CellForm::tempo || isWhole(*number)) ? number : std::nullopt;
}

QString tempoOf(const CEvnt& event)
{
    return event.GetSzData() == 3 ? QString::fromStdString(tempoText(ReadTempo(event.payload().data()))) : QString();
}

QString signatureOf(const CEvnt& event)
{
    return event.GetSzData() == 4 ? QString::fromStdString(signatureText(event.payload()[0], event.payload()[1]))
                                  : QString();
}

QString fileAndCommand(const CEvnt& event)
{
    const QString command = songText(event.GetMciCommand());
    return event.GetFileName().empty() ? command : command + QStringLiteral(" | ") + songText(event.GetFileName());
}

} // namespace

CellForm EvntCells::formOf(EvntKind kind, ListColumn column) noexcept
{
    const EvntKindInfo& info = infoOf(kind);
    switch (column) {
    case ListColumn::channel: return info.hasChannel ? CellForm::number : CellForm::none;
    case ListColumn::value1: return info.value1;
    case ListColumn::value2: return info.value2;
    case ListColumn::gate: return info.hasGate ? CellForm::ticks : CellForm::none;
    case ListColumn::data: return info.data;
    default: return CellForm::none;
    }
}

QString EvntCells::placeText(std::uint32_t time) const
{
    _EDT_MEAS place;
    m_editor.TimeToMeas(time, place);
    return QString::fromStdString(locationText(place));
}

QString EvntCells::clockText(std::uint32_t time) const
{
    return QString::fromStdString(tessaro::clockText(m_editor.TimeToMsecond(time)));
}

QString EvntCells::shown(const CEvnt& event, std::uint32_t time, ListColumn column) const
{
    if (column == ListColumn::place) return placeText(time);
    const EvntKind kind = kindOf(event);
    if (column == ListColumn::kind) return kindName(kind, m_text);
    if (formOf(kind, column) == CellForm::controller) return controllerName(event.GetPost1(), m_text);
    return value(event, time, column);
}

QString EvntCells::typed(const CEvnt& event, std::uint32_t time, ListColumn column) const
{
    return column == ListColumn::place ? placeText(time) : value(event, time, column);
}

QString EvntCells::value(const CEvnt& event, std::uint32_t time, ListColumn column) const
{
    const CellForm form = formOf(kindOf(event), column);
    const bool isFirst = column == ListColumn::value1;
    const auto payload = event.payload();
    switch (form) {
    case CellForm::none: return {};
    case CellForm::key: return keyName(event.GetPost1());
    case CellForm::pair:
        return QStringLiteral("%1:%2")
            .arg(isFirst ? event.GetPost1() : event.GetPost3())
            .arg(isFirst ? event.GetPost2() : event.GetPost4());
    case CellForm::ticks: return lengthText(event.GetGateTime(), beatClockAt(m_editor, time));
    case CellForm::tempo: return tempoOf(event);
    case CellForm::signature: return signatureOf(event);
    case CellForm::keySignature: return keySignatureText(payload, m_text);
    case CellForm::text:
        if (status::kind(event.GetStatus()) == status::wave) return songText(event.GetFileName());
        return songText({reinterpret_cast<const char*>(payload.data()), payload.size()});
    case CellForm::sysex: return QStringLiteral("F0 ") + hexText(payload);
    case CellForm::hex: return hexText(payload);
    case CellForm::command: return fileAndCommand(event);
    default: return plainNumber(event, column, form);
    }
}

bool EvntCells::isEditable(const CEvnt& event, ListColumn column) const
{
    const EvntKind kind = kindOf(event);
    if (kind == EvntKind::rest) return false;
    if (column == ListColumn::place) return true;
    return formOf(kind, column) != CellForm::none && !m_editor.GetScrArtIndex(event);
}

std::optional<std::uint32_t> EvntCells::parsePlace(const QString& text) const
{
    const auto numbers = parseNumbers(text);
    if (!numbers || numbers->size() > 3 || (*numbers)[0] == 0) return std::nullopt;
    const auto at = [&](std::size_t i, std::uint32_t otherwise) {
        return i < numbers->size() ? (*numbers)[i] : otherwise;
    };
    const std::uint32_t beat = at(1, 1);
    if (beat == 0) return std::nullopt;
    const std::uint32_t time = m_editor.MeasToTime({at(0, 1) - 1, beat - 1, at(2, 0)});
    _EDT_MEAS back;
    m_editor.TimeToMeas(time, back);
    // A bar so late that its tick has no room in a number comes out as an earlier one.
    return back.meas < at(0, 1) ? std::nullopt : std::optional(time);
}

std::optional<std::int64_t> EvntCells::parseMove(const QString& text, std::uint32_t time) const
{
    const QString line = text.trimmed();
    if (line.startsWith(u'+') || line.startsWith(u'-')) {
        const auto ticks = parseDecimal(line);
        return ticks && isWhole(*ticks) ? std::optional(static_cast<std::int64_t>(*ticks)) : std::nullopt;
    }
    const auto place = parsePlace(line);
    return place ? std::optional(std::int64_t{*place} - time) : std::nullopt;
}

EvntCells::Parsed EvntCells::parse(const QString& text, const CEvnt& event, std::uint32_t time, ListColumn column) const
{
    const CellForm form = formOf(kindOf(event), column);
    const QString line = text.trimmed();
    const auto bytes = [&](std::optional<Bytes> read, TextId otherwise) -> Parsed {
        if (!read) return CellFault{m_text(otherwise)};
        return CellChange{form, false, 0, std::move(*read)};
    };
    switch (form) {
    case CellForm::none: return CellFault{};
    case CellForm::pair: return bytes(parsePair(line), TextId::badPair);
    case CellForm::sysex: return bytes(parseSysex(line), TextId::badSysex);
    case CellForm::keySignature: return bytes(parseKeySignature(line), TextId::badKeySignature);
    case CellForm::hex: {
        auto read = parseHex(line);
        const int legal = event.GetStatus() == status::metaEvent ? legalMetaSize(event.GetMetaType()) : 0;
        if (read && legal != 0 && read->size() != static_cast<std::size_t>(legal))
            return CellFault{m_text(TextId::badMetaSize).arg(legal)};
        return bytes(std::move(read), TextId::badHex);
    }
    case CellForm::signature: return signature(line, event);
    case CellForm::text:
    case CellForm::command: {
        const std::string stored = fromUtf8(text.toStdString());
        return CellChange{form, false, 0, Bytes(stored.begin(), stored.end())};
    }
    default: break;
    }
    // The others are numbers. Those of a bend have a sign of their own, so a difference has two.
    const auto startsWith = [&](const char* signs) { return line.startsWith(QLatin1String(signs)); };
    const bool isBend = form == CellForm::bend;
    if (isBend ? startsWith("++") || startsWith("--") : startsWith("+") || startsWith("-")) {
        const auto difference = parseDifference(isBend ? line.mid(1) : line, form, beatClockAt(m_editor, time));
        if (difference) return CellChange{form, true, *difference, {}};
    }
    return number(line, form, time, column);
}

EvntCells::Parsed EvntCells::signature(const QString& line, const CEvnt& event) const
{
    const auto read = parseSignature(line);
    if (!read) return CellFault{m_text(TextId::badSignature)};
    if (read->numerator == 0) return CellFault{m_text(TextId::badNumerator)};
    if (read->denominator > 5) return CellFault{m_text(TextId::badDenominator)};
    const auto old = event.payload();
    Bytes body{read->numerator, read->denominator, 24, 8};
    if (old.size() == body.size()) std::copy(old.begin() + 2, old.end(), body.begin() + 2);
    return CellChange{CellForm::signature, false, 0, std::move(body)};
}

EvntCells::Parsed EvntCells::number(const QString& line, CellForm form, std::uint32_t time, ListColumn column) const
{
    const auto whole = [form](auto read, const QString& otherwise) -> Parsed {
        if (!read) return CellFault{otherwise};
        return CellChange{form, false, static_cast<double>(*read), {}};
    };
    if (form == CellForm::key) return whole(parseKey(line), m_text(TextId::badKey));
    if (form == CellForm::ticks) return whole(parseLength(line, beatClockAt(m_editor, time)), m_text(TextId::badTicks));
    const auto value = parseDecimal(line);
    if (form == CellForm::tempo) {
        const bool isFine = value && *value >= slowestBeats && *value <= fastestBeats;
        return whole(isFine ? std::optional(microsecondsOf(*value)) : std::nullopt, m_text(TextId::badTempo));
    }
    const CellRange range = rangeOf(form, column);
    const int lowest = range.lowest + range.shift;
    const int highest = range.highest + range.shift;
    const bool isFine = value && isWhole(*value) && *value >= lowest && *value <= highest;
    return whole(isFine ? std::optional(*value - range.shift) : std::nullopt,
                 m_text(TextId::badNumber).arg(lowest).arg(highest));
}

} // namespace tessaro
