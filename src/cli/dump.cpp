// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/dump.h"

#include "cli/json_lines.h"
#include "core/edit/editor.h"

#include <array>
#include <unordered_map>

namespace tessaro::cli {

namespace {

void dumpMaps(JsonLines& out, const SongMaps& maps)
{
    for (std::uint32_t i = 0; i < maps.tempo().count(); ++i) {
        const _EDT_TIMEINFO& node = maps.tempo().node(i);
        out.begin()
            .begin("tempo")
            .number("tick", node.time)
            .number("ms", node.msec)
            .number("us", node.tempo)
            .end()
            .end();
    }
    for (std::uint32_t i = 0; i < maps.meas().count(); ++i) {
        const _EDT_MEASINFO node = maps.meas().node(i);
        out.begin().begin("meas").number("top", node.top).number("num", node.num).number("den", node.den).end().end();
    }
}

void dumpTrack(JsonLines& out, int number, const CTrk& trk)
{
    out.begin()
        .number("trk", number)
        .number("type", trk.GetType())
        .number("port", trk.GetPort())
        .number("ch", trk.GetCh())
        .number("trans", trk.GetTrans())
        .number("transOn", trk.GetTransEnable())
        .number("solo", trk.GetSolo())
        .number("mute", trk.GetMute())
        .number("inst", trk.GetInstType())
        .number("staff", trk.GetStaffType())
        .number("wavVol", trk.GetWavVol())
        .text("name", trk.GetName())
        .end();
}

void dumpBlock(JsonLines& out, std::uint32_t index, int trk, const CBlk& blk, std::int64_t real)
{
    out.begin()
        .number("blk", index)
        .number("trk", trk)
        .number("type", blk.GetType())
        .number("top", blk.GetTimeTop())
        .number("end", blk.GetTimeEnd())
        .text("name", blk.GetName())
        .number("real", real)
        .end();
}

void dumpEvent(JsonLines& out, std::uint32_t real, const CEvnt& e)
{
    const std::array posts{e.GetPost1(), e.GetPost2(), e.GetPost3(), e.GetPost4()};
    const std::uint8_t st = e.GetStatus();
    out.begin().number("real", real).number("time", e.GetTime()).number("st", st);
    out.numbers("p", posts).number("gate", e.GetGateTime());
    if (st == status::metaEvent) out.number("meta", e.GetMetaType());
    if (st >= status::sysex || status::kind(st) == status::syng) out.hex("data", e.payload());
    if (status::kind(st) == status::wave || status::kind(st) == status::mci) out.text("file", e.GetFileName());
    if (status::kind(st) == status::mci) out.text("cmd", e.GetMciCommand());
    out.end();
}

} // namespace

void dumpSong(CEditor& editor, std::uint8_t kind, std::FILE* file)
{
    JsonLines out(file);
    out.begin().begin("song").number("kind", kind).number("end", editor.GetTimeEnd()).end().end();
    dumpMaps(out, editor.maps());

    std::unordered_map<const CRealBlk*, std::uint32_t> realIndex;
    const List<CRealBlk>& reals = editor.song().realBlks();
    for (const CRealBlk* real = reals.head(); real; real = List<CRealBlk>::next(real))
        realIndex.emplace(real, static_cast<std::uint32_t>(realIndex.size()));

    for (int number = 0; number < trackCount; ++number) {
        const CTrk* trk = editor.song().trk(number);
        if (!trk || trk->GetType() == trktype::unused) continue;
        dumpTrack(out, number, *trk);
        std::uint32_t index = 0;
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            const auto found = realIndex.find(blk->GetRealBlk());
            dumpBlock(out, index++, number, *blk, found == realIndex.end() ? -1 : std::int64_t{found->second});
        }
    }

    std::uint32_t index = 0;
    for (const CRealBlk* real = reals.head(); real; real = List<CRealBlk>::next(real), ++index)
        for (const CEvnt* e = real->events().head(); e; e = List<CEvnt>::next(e)) dumpEvent(out, index, *e);
}

} // namespace tessaro::cli
