// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes, opened as a native song file.
#include "native_song.h"

namespace {

using namespace tessaro;
using tessaro::fuzz::demand;

void check(const CRealBlk& real)
{
    std::uint32_t last = 0;
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e)) {
        const std::uint8_t st = e->GetStatus();
        const std::uint8_t kind = status::kind(st);
        const bool isSystem = st == status::sysex || st == status::sysexPart || st == status::metaEvent;
        demand(isSystem || (kind >= status::nrpn && kind <= status::pitchBend && kind != 0x70 && kind != 0x80));
        demand(st != status::metaEvent || e->GetMetaType() < 0x80);
        demand(e->GetTime() >= last);
        last = e->GetTime();
    }
}

void check(const CTrk& trk)
{
    demand(trk.GetCh() < 16 && trk.GetTrans() >= -36 && trk.GetTrans() <= 36);
    std::uint32_t last = 0;
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        demand(blk->GetRealBlk() && blk->GetTimeTop() >= last && blk->GetTimeEnd() >= blk->GetTimeTop());
        last = blk->GetTimeTop();
    }
}

void check(const CStyleBlk& style)
{
    demand(style.GetSectionClock() > 0 && style.GetTimeEnd() >= style.GetTimeTop());
    for (int part = 0; part < stylePartCount; ++part)
        if (const auto* phrase = List<CPhraseBlk>::get(style.GetHeadPos(part))) demand(phrase->GetRealBlk());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::NativeSong song;
    song.load({data, size});
    const CEditor& editor = song.editor();
    for (const CRealBlk* real = editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real)) check(*real);
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk)) check(*trk);
    for (const CStyleBlk* style = editor.styles().blks().head(); style; style = List<CStyleBlk>::next(style))
        check(*style);
    demand(editor.song().masterReal() && editor.song().trk(0)->GetCount() == 1);
    // The maps answer for any time.
    _EDT_MEAS meas;
    editor.TimeToMeas(editor.GetTimeEnd(), meas);
    static_cast<void>(editor.MsecondToTime(editor.TimeToMsecond(editor.GetTimeEnd())));
    return 0;
}
