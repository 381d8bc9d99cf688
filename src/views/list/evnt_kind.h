// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/model/records.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace tessaro {

class CEvnt;
class UiText;

/// The kinds of events as lists and menus name them, in the order of the menu that inserts them.
enum class EvntKind : std::uint8_t {
    note,
    control,
    program,
    pitchBend,
    pressure,
    polyPressure,
    sysex,
    nrpn,
    rpn,
    voice,
    syng,
    wave,
    mci,
    tempo,
    signature,
    key,
    text,
    copyright,
    trackName,
    instrument,
    lyric,
    marker,
    cue,
    meta,      ///< of any other type
    sysexPart, ///< a continuation
    rest,
};
inline constexpr int evntKinds = static_cast<int>(EvntKind::rest) + 1;

/// What a list can leave out; a bit each in the setting.
enum class KindGroup : std::uint8_t {
    notes,
    controllers,
    programs,
    bends,
    pressures,
    sysex,
    packed,
    syng,
    waves,
    tempos,
    signatures,
    keys,
    texts,
    markers,
    others,
};
inline constexpr int kindGroups = static_cast<int>(KindGroup::others) + 1;

/// What a column of the list says of an event, and how it is typed.
enum class CellForm : std::uint8_t {
    none,
    number,     ///< 0 to 127
    velocity,   ///< 1 to 127
    controller, ///< its number, shown with its name
    program,    ///< 1 to 128
    key,        ///< C4 or 60
    bend,       ///< -8192 to 8191
    pair,       ///< two bytes of 7 bits, "1:8"
    ticks,
    tempo,     ///< beats a minute
    signature, ///< 3/4
    keySignature,
    metaType, ///< 0 to 127
    text,
    sysex, ///< F0 to F7 in hex
    hex,
    command, ///< of the media interface, then "|" and a file
};

/// What there is to say of a kind.
struct EvntKindInfo {
    EvntKind kind;
    TextId name; ///< of the menu, with an ellipsis
    KindGroup group;
    std::uint8_t status;
    std::uint8_t metaType;
    bool hasChannel;
    CellForm value1;
    CellForm value2;
    bool hasGate;
    CellForm data;
};

[[nodiscard]] EvntKind kindOf(const CEvnt& event) noexcept;
[[nodiscard]] const EvntKindInfo& infoOf(EvntKind kind) noexcept;
[[nodiscard]] inline KindGroup groupOf(const CEvnt& event) noexcept { return infoOf(kindOf(event)).group; }
[[nodiscard]] TextId groupName(KindGroup group) noexcept;
/// The name as a word of its own.
[[nodiscard]] QString kindName(EvntKind kind, const UiText& text);

/// The kinds that a person can insert on a track of this number and type, in the order of the menu.
[[nodiscard]] std::vector<EvntKind> kindsToInsert(int track, std::uint8_t trackType);
/// The groups that events of such a track can belong to.
[[nodiscard]] std::vector<KindGroup> groupsOn(int track, std::uint8_t trackType);

/// An event by value with a payload of its own.
struct EvntDraft {
    _EDT_EVNT rec;
    std::vector<std::uint8_t> data;

    EvntDraft() = default;
    /// `time` is what the draft has as its time.
    EvntDraft(const CEvnt& event, std::uint32_t time);

    /// The record; it borrows the payload.
    [[nodiscard]] const _EDT_EVNT& record();
};

/// A new event of a kind with usual values, on this MIDI channel.
[[nodiscard]] EvntDraft newEvnt(EvntKind kind, std::uint32_t time, std::uint8_t channel);

} // namespace tessaro
