// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/cell_change.h"

#include "core/maps/tempo_map.h"
#include "core/model/evnt.h"
#include "core/model/tick.h"
#include "views/list/cell_parse.h"

#include <algorithm>

namespace tessaro {
namespace {

int bendOf(std::uint8_t low, std::uint8_t high) noexcept { return (high << 7) + low - 8192; }

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

bool setTempo(EvntDraft& draft, const CellChange& change)
{
    double us = change.number;
    if (change.isRelative) {
        if (draft.data.size() != 3) return false;
        us = microsecondsOf(beatsOf(ReadTempo(draft.data.data())) + change.number);
    }
    const auto bytes = tempoBytes(static_cast<std::uint32_t>(us));
    if (bytes == draft.data) return false;
    draft.data = bytes;
    return true;
}

bool setNumber(EvntDraft& draft, const CellChange& change, ListColumn column)
{
    const CellRange range = rangeOf(change.form, column);
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

CellRange rangeOf(CellForm form, ListColumn column) noexcept
{
    if (column == ListColumn::channel) return {0, 15, 1};
    switch (form) {
    case CellForm::velocity: return {1, 127};
    case CellForm::program: return {0, 127, 1};
    case CellForm::bend: return {-8192, 8191};
    default: return {0, 127};
    }
}

int rawNumber(const _EDT_EVNT& rec, ListColumn column, CellForm form) noexcept
{
    if (column == ListColumn::channel) return status::channel(rec.status);
    if (form == CellForm::bend) return bendOf(rec.post1, rec.post2);
    if (form == CellForm::metaType) return rec.metaType;
    if (column == ListColumn::value1) return rec.post1;
    return status::kind(rec.status) == status::voice ? rec.post3 : rec.post2;
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
