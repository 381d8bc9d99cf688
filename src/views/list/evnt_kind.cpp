// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/evnt_kind.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "views/text/ui_text.h"

#include <algorithm>
#include <iterator>

namespace tessaro {
namespace {

using Form = CellForm;
using Group = KindGroup;

constexpr std::uint8_t instrumentName = 0x04;
constexpr std::uint8_t marker = 0x06;
constexpr std::uint8_t cuePoint = 0x07;

// In the order of the kinds.
constexpr EvntKindInfo infos[] = {
    {EvntKind::note, TextId::kindNote, Group::notes, status::note, 0, true, Form::key, Form::velocity, true,
     Form::none},
    {EvntKind::control, TextId::kindControl, Group::controllers, status::control, 0, true, Form::controller,
     Form::number, false, Form::none},
    {EvntKind::program, TextId::kindProgram, Group::programs, status::program, 0, true, Form::program, Form::none,
     false, Form::none},
    {EvntKind::pitchBend, TextId::kindPitchBend, Group::bends, status::pitchBend, 0, true, Form::bend, Form::none,
     false, Form::none},
    {EvntKind::pressure, TextId::kindPressure, Group::pressures, status::pressure, 0, true, Form::number, Form::none,
     false, Form::none},
    {EvntKind::polyPressure, TextId::kindPolyPressure, Group::pressures, status::polyPressure, 0, true, Form::key,
     Form::number, false, Form::none},
    {EvntKind::sysex, TextId::kindSysex, Group::sysex, status::sysex, 0, false, Form::none, Form::none, false,
     Form::sysex},
    {EvntKind::nrpn, TextId::kindNrpn, Group::packed, status::nrpn, 0, true, Form::pair, Form::pair, false, Form::none},
    {EvntKind::rpn, TextId::kindRpn, Group::packed, status::rpn, 0, true, Form::pair, Form::pair, false, Form::none},
    {EvntKind::voice, TextId::kindVoice, Group::packed, status::voice, 0, true, Form::pair, Form::program, false,
     Form::none},
    {EvntKind::syng, TextId::kindSyng, Group::syng, status::syng, 0, true, Form::key, Form::velocity, true,
     Form::sysex},
    {EvntKind::wave, TextId::kindWave, Group::waves, status::wave, 0, false, Form::none, Form::none, true, Form::text},
    {EvntKind::mci, TextId::kindMci, Group::waves, status::mci, 0, false, Form::none, Form::none, false, Form::command},
    {EvntKind::tempo, TextId::kindTempo, Group::tempos, status::metaEvent, meta::tempo, false, Form::tempo, Form::none,
     false, Form::none},
    {EvntKind::signature, TextId::kindSignature, Group::signatures, status::metaEvent, meta::timeSignature, false,
     Form::signature, Form::none, false, Form::none},
    {EvntKind::key, TextId::kindKey, Group::keys, status::metaEvent, meta::keySignature, false, Form::keySignature,
     Form::none, false, Form::none},
    {EvntKind::text, TextId::kindText, Group::texts, status::metaEvent, meta::text, false, Form::none, Form::none,
     false, Form::text},
    {EvntKind::copyright, TextId::kindCopyright, Group::texts, status::metaEvent, meta::copyright, false, Form::none,
     Form::none, false, Form::text},
    {EvntKind::trackName, TextId::kindTrackName, Group::texts, status::metaEvent, meta::trackName, false, Form::none,
     Form::none, false, Form::text},
    {EvntKind::instrument, TextId::kindInstrument, Group::texts, status::metaEvent, instrumentName, false, Form::none,
     Form::none, false, Form::text},
    {EvntKind::lyric, TextId::kindLyric, Group::texts, status::metaEvent, meta::lyric, false, Form::none, Form::none,
     false, Form::text},
    {EvntKind::marker, TextId::kindMarker, Group::markers, status::metaEvent, marker, false, Form::none, Form::none,
     false, Form::text},
    {EvntKind::cue, TextId::kindCue, Group::markers, status::metaEvent, cuePoint, false, Form::none, Form::none, false,
     Form::text},
    {EvntKind::meta, TextId::kindMeta, Group::others, status::metaEvent, meta::sequencer, false, Form::metaType,
     Form::none, false, Form::hex},
    {EvntKind::sysexPart, TextId::kindSysexPart, Group::sysex, status::sysexPart, 0, false, Form::none, Form::none,
     false, Form::hex},
    {EvntKind::rest, TextId::kindRest, Group::others, status::rest, 0, true, Form::key, Form::number, true, Form::none},
};

constexpr bool inOrder()
{
    for (std::size_t i = 0; i < std::size(infos); ++i)
        if (infos[i].kind != static_cast<EvntKind>(i)) return false;
    return true;
}
static_assert(std::size(infos) == evntKinds && inOrder());

EvntKind metaKind(std::uint8_t type) noexcept
{
    const auto at = std::find_if(std::begin(infos), std::end(infos), [type](const EvntKindInfo& info) {
        return info.status == status::metaEvent && info.metaType == type;
    });
    return at == std::end(infos) ? EvntKind::meta : at->kind;
}

bool mayStand(const EvntKindInfo& info, int track, std::uint8_t trackType)
{
    _EDT_EVNT rec;
    rec.status = info.status;
    rec.metaType = info.metaType;
    return CEditor::IsInsEnable(track, trackType, rec);
}

} // namespace

EvntKind kindOf(const CEvnt& event) noexcept
{
    const std::uint8_t st = event.GetStatus();
    if (st == status::metaEvent) return metaKind(event.GetMetaType());
    const std::uint8_t wanted = st >= status::sysex ? st : status::kind(st);
    const auto at = std::find_if(std::begin(infos), std::end(infos),
                                 [wanted](const EvntKindInfo& info) { return info.status == wanted; });
    return at == std::end(infos) ? EvntKind::rest : at->kind;
}

const EvntKindInfo& infoOf(EvntKind kind) noexcept { return infos[static_cast<std::size_t>(kind)]; }

TextId groupName(KindGroup group) noexcept
{
    static_assert(static_cast<int>(TextId::groupOthers) - static_cast<int>(TextId::groupNotes) == kindGroups - 1);
    return static_cast<TextId>(static_cast<int>(TextId::groupNotes) + static_cast<int>(group));
}

QString kindName(EvntKind kind, const UiText& text)
{
    QString name = text(infoOf(kind).name);
    if (name.endsWith(QLatin1String("..."))) name.chop(3);
    return name;
}

std::vector<EvntKind> kindsToInsert(int track, std::uint8_t trackType)
{
    std::vector<EvntKind> kinds;
    for (const EvntKindInfo& info : infos)
        if (info.kind < EvntKind::sysexPart && mayStand(info, track, trackType)) kinds.push_back(info.kind);
    return kinds;
}

std::vector<KindGroup> groupsOn(int track, std::uint8_t trackType)
{
    std::vector<KindGroup> groups;
    for (const EvntKindInfo& info : infos)
        if (mayStand(info, track, trackType)) groups.push_back(info.group);
    std::sort(groups.begin(), groups.end());
    groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
    return groups;
}

EvntDraft::EvntDraft(const CEvnt& event, std::uint32_t time)
{
    event.Get(rec);
    rec.time = time;
    data.assign(event.payload().begin(), event.payload().end());
}

const _EDT_EVNT& EvntDraft::record()
{
    rec.data = data.data();
    rec.szData = static_cast<std::uint32_t>(data.size());
    return rec;
}

EvntDraft newEvnt(EvntKind kind, std::uint32_t time, std::uint8_t channel)
{
    const EvntKindInfo& info = infoOf(kind);
    EvntDraft draft;
    _EDT_EVNT& rec = draft.rec;
    rec.time = time;
    rec.status = info.hasChannel ? static_cast<std::uint8_t>(info.status | channel) : info.status;
    rec.metaType = info.metaType;
    if (info.hasGate) rec.gateTime = 480;
    switch (kind) {
    case EvntKind::note:
    case EvntKind::syng:
    case EvntKind::polyPressure: rec.post1 = 60, rec.post2 = 100; break;
    case EvntKind::control: rec.post1 = 7, rec.post2 = 100; break;
    case EvntKind::pitchBend: rec.post2 = 64; break;
    case EvntKind::rpn: rec.post3 = 2; break; // the usual bend range
    case EvntKind::tempo: draft.data = {0x07, 0xA1, 0x20}; break;
    case EvntKind::signature: draft.data = {4, 2, 24, 8}; break;
    case EvntKind::key: draft.data = {0, 0}; break;
    default: break;
    }
    if (info.data == CellForm::sysex) draft.data = {0xF7};
    return draft;
}

} // namespace tessaro
