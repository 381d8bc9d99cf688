// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/cnv_evnt.h"

#include "core/model/realblk.h"
#include "files/native/event_form.h"
#include "files/native/native_chunks.h"

#include <algorithm>

namespace tessaro {

namespace {

bool CnvData(std::span<const std::uint8_t> data, ByteWriter& out)
{
    if (data.size() > native::longestData) return false;
    out.vlq(static_cast<std::uint32_t>(data.size()));
    out.bytes(data);
    return true;
}

bool CnvText(const std::string& text, ByteWriter& out)
{
    return CnvData({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, out);
}

bool CnvEvntSys(const CEvnt& event, ByteWriter& out) { return CnvData(event.payload(), out); }

bool CnvEvntMeta(const CEvnt& event, ByteWriter& out)
{
    out.u8(event.GetMetaType());
    return CnvData(event.payload(), out);
}

bool CnvEvnt2(const CEvnt& event, ByteWriter& out)
{
    out.u8(event.GetPost1());
    return true;
}

bool CnvEvnt3(const CEvnt& event, ByteWriter& out)
{
    out.u8(event.GetPost1());
    out.u8(event.GetPost2());
    return true;
}

bool CnvEvnt4(const CEvnt& event, ByteWriter& out)
{
    CnvEvnt3(event, out);
    out.u8(event.GetPost3());
    return true;
}

bool CnvEvnt5(const CEvnt& event, ByteWriter& out)
{
    CnvEvnt4(event, out);
    out.u8(event.GetPost4());
    return true;
}

bool CnvEvntNote(const CEvnt& event, ByteWriter& out)
{
    CnvEvnt3(event, out);
    out.u32be(event.GetGateTime());
    return true;
}

bool CnvEvntSyng(const CEvnt& event, ByteWriter& out)
{
    CnvEvntNote(event, out);
    return CnvData(event.payload(), out);
}

bool CnvEvntWave(const CEvnt& event, ByteWriter& out)
{
    out.u32be(event.GetGateTime());
    return CnvText(event.GetFileName(), out);
}

bool CnvEvntMci(const CEvnt& event, ByteWriter& out)
{
    return CnvText(event.GetFileName(), out) && CnvText(event.GetMciCommand(), out);
}

} // namespace

bool CnvEvnt(const CEvnt& event, ByteWriter& out)
{
    const EventForm form = formOf(event.GetStatus());
    if (form == EventForm::none) return false;
    out.u8(event.GetStatus());
    switch (form) {
    case EventForm::sys: return CnvEvntSys(event, out);
    case EventForm::meta: return CnvEvntMeta(event, out);
    case EventForm::post4: return CnvEvnt5(event, out);
    case EventForm::post3: return CnvEvnt4(event, out);
    case EventForm::post2: return CnvEvnt3(event, out);
    case EventForm::post1: return CnvEvnt2(event, out);
    case EventForm::wave: return CnvEvntWave(event, out);
    case EventForm::mci: return CnvEvntMci(event, out);
    case EventForm::syng: return CnvEvntSyng(event, out);
    case EventForm::note: return CnvEvntNote(event, out);
    case EventForm::none: break;
    }
    return false;
}

bool CnvBlk(const CRealBlk& real, ByteWriter& out, const std::function<bool(const CEvnt&)>& isLeftOut)
{
    std::uint32_t last = 0;
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e)) {
        if (formOf(e->GetStatus()) == EventForm::none || (isLeftOut && isLeftOut(*e))) continue;
        const std::uint32_t time = std::max(e->GetTime(), last);
        out.vlq(time - last);
        last = time;
        if (!CnvEvnt(*e, out)) return false;
    }
    return true;
}

} // namespace tessaro
