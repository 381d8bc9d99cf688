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

constexpr std::uint32_t beatTicks = 480;
constexpr double slowestTempo = 4;
constexpr double fastestTempo = 1000;

/// The range of what is a number; the text shows it with `shift` added.
struct Range {
    int lowest;
    int highest;
    int shift = 0;
};

Range rangeOf(CellForm form, ListColumn column) noexcept
{
    if (column == ListColumn::channel) return {0, 15, 1};
    switch (form) {
    case CellForm::velocity: return {1, 127};
    case CellForm::program: return {0, 127, 1};
    case CellForm::bend: return {-8192, 8191};
    default: return {0, 127};
    }
}

bool isWhole(double number) { return number == std::floor(number); }

int bendOf(std::uint8_t low, std::uint8_t high) noexcept { return (high << 7) + low - 8192; }

int rawNumber(const _EDT_EVNT& rec, ListColumn column, CellForm form) noexcept
{
    if (column == ListColumn::channel) return status::channel(rec.status);
    if (form == CellForm::bend) return bendOf(rec.post1, rec.post2);
    if (form == CellForm::metaType) return rec.metaType;
    if (column == ListColumn::value1) return rec.post1;
    return status::kind(rec.status) == status::voice ? rec.post3 : rec.post2;
}

void setRawNumber(_EDT_EVNT& rec, ListColumn column, CellForm form, int number) noexcept
{
    const auto byte = static_cast<std::uint8_t>(number);
    if (column == ListColumn::channel) {
        rec.status = static_cast<std::uint8_t>(status::kind(rec.status) | byte);
    } else if (form == CellForm::bend) {
        rec.post1 = static_cast<std::uint8_t>((number + 8192) & 0x7F);
        rec.post2 = static_cast<std::uint8_t>((number + 8192) >> 7);
    } else if (form == CellForm::metaType) {
        rec.metaType = byte;
    } else if (column == ListColumn::value1) {
        rec.post1 = byte;
    } else {
        (status::kind(rec.status) == status::voice ? rec.post3 : rec.post2) = byte;
    }
}

QString plainNumber(const CEvnt& event, ListColumn column, CellForm form)
{
    _EDT_EVNT rec;
    event.Get(rec);
    return QString::number(rawNumber(rec, column, form) + rangeOf(form, column).shift);
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

bool setTempo(EvntDraft& draft, const CellChange& change)
{
    double us = change.number;
    if (change.isRelative) {
        if (draft.data.size() != 3) return false;
        us = microsecondsOf(beatsOf(ReadTempo(draft.data.data())) + change.number);
    }
    const Bytes bytes = tempoBytes(static_cast<std::uint32_t>(us));
    if (bytes == draft.data) return false;
    draft.data = bytes;
    return true;
}

bool setNumber(EvntDraft& draft, const CellChange& change, ListColumn column)
{
    const Range range = rangeOf(change.form, column);
    const int before = rawNumber(draft.rec, column, change.form);
    const int wanted = static_cast<int>(change.number) + (change.isRelative ? before : 0);
    const int after = std::clamp(wanted, range.lowest, range.highest);
    setRawNumber(draft.rec, column, change.form, after);
    return after != before;
}

bool setPair(EvntDraft& draft, const CellChange& change, ListColumn column)
{
    _EDT_EVNT& rec = draft.rec;
    std::uint8_t& first = column == ListColumn::value1 ? rec.post1 : rec.post3;
    std::uint8_t& second = column == ListColumn::value1 ? rec.post2 : rec.post4;
    if (first == change.bytes[0] && second == change.bytes[1]) return false;
    first = change.bytes[0];
    second = change.bytes[1];
    return true;
}

bool setTicks(EvntDraft& draft, const CellChange& change)
{
    const std::int64_t wanted =
        static_cast<std::int64_t>(change.number) + (change.isRelative ? std::int64_t{draft.rec.gateTime} : 0);
    const std::uint32_t gate = tick::clamped(std::max<std::int64_t>(wanted, 1));
    const bool isOther = gate != draft.rec.gateTime;
    draft.rec.gateTime = gate;
    return isOther;
}

bool setText(EvntDraft& draft, const CellChange& change)
{
    const std::string text(change.bytes.begin(), change.bytes.end());
    _EDT_EVNT& rec = draft.rec;
    if (status::kind(rec.status) == status::wave) {
        if (rec.fileName == text) return false;
        rec.fileName = text;
        return true;
    }
    const auto bar = text.find('|');
    const auto trimmed = [](std::string part) {
        part.erase(0, part.find_first_not_of(' '));
        part.erase(part.find_last_not_of(' ') + 1);
        return part;
    };
    const std::string command = trimmed(text.substr(0, bar));
    const std::string file = bar == std::string::npos ? std::string() : trimmed(text.substr(bar + 1));
    if (rec.mciCommand == command && rec.fileName == file) return false;
    rec.mciCommand = command;
    rec.fileName = file;
    return true;
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
    const CellForm form = formOf(kind, column);
    if (form == CellForm::controller) return controllerName(event.GetPost1(), m_text);
    return value(event, column, form);
}

QString EvntCells::typed(const CEvnt& event, std::uint32_t time, ListColumn column) const
{
    if (column == ListColumn::place) return placeText(time);
    return value(event, column, formOf(kindOf(event), column));
}

QString EvntCells::value(const CEvnt& event, ListColumn column, CellForm form) const
{
    const bool isFirst = column == ListColumn::value1;
    const auto payload = event.payload();
    switch (form) {
    case CellForm::none: return {};
    case CellForm::key: return keyName(event.GetPost1());
    case CellForm::pair:
        return QStringLiteral("%1:%2")
            .arg(isFirst ? event.GetPost1() : event.GetPost3())
            .arg(isFirst ? event.GetPost2() : event.GetPost4());
    case CellForm::ticks: return QString::number(event.GetGateTime());
    case CellForm::tempo: return tempoOf(event);
    case CellForm::signature: return signatureOf(event);
    case CellForm::keySignature: return keySignatureText(payload);
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

EvntCells::Parsed EvntCells::parse(const QString& text, const CEvnt& event, ListColumn column) const
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
        const auto difference = parseDecimal(isBend ? line.mid(1) : line);
        if (difference && (form == CellForm::tempo || isWhole(*difference)))
            return CellChange{form, true, *difference, {}};
    }
    return number(line, form, column);
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

EvntCells::Parsed EvntCells::number(const QString& line, CellForm form, ListColumn column) const
{
    const auto whole = [form](auto read, const QString& otherwise) -> Parsed {
        if (!read) return CellFault{otherwise};
        return CellChange{form, false, static_cast<double>(*read), {}};
    };
    if (form == CellForm::key) return whole(parseKey(line), m_text(TextId::badKey));
    if (form == CellForm::ticks) return whole(parseLength(line, beatTicks), m_text(TextId::badTicks));
    const auto value = parseDecimal(line);
    if (form == CellForm::tempo) {
        const bool isFine = value && *value >= slowestTempo && *value <= fastestTempo;
        return whole(isFine ? std::optional(microsecondsOf(*value)) : std::nullopt, m_text(TextId::badTempo));
    }
    const Range range = rangeOf(form, column);
    const int lowest = range.lowest + range.shift;
    const int highest = range.highest + range.shift;
    const bool isFine = value && isWhole(*value) && *value >= lowest && *value <= highest;
    return whole(isFine ? std::optional(*value - range.shift) : std::nullopt,
                 m_text(TextId::badNumber).arg(lowest).arg(highest));
}

bool applyChange(const CellChange& change, ListColumn column, EvntDraft& draft)
{
    switch (change.form) {
    case CellForm::none: return false;
    case CellForm::pair: return setPair(draft, change, column);
    case CellForm::ticks: return setTicks(draft, change);
    case CellForm::tempo: return setTempo(draft, change);
    case CellForm::command: return setText(draft, change);
    case CellForm::text:
        if (draft.rec.status != status::metaEvent) return setText(draft, change);
        [[fallthrough]];
    case CellForm::signature:
    case CellForm::keySignature:
    case CellForm::sysex:
    case CellForm::hex:
        if (draft.data == change.bytes) return false;
        draft.data = change.bytes;
        return true;
    default: return setNumber(draft, change, column);
    }
}

} // namespace tessaro
