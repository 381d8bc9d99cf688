// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/clip/evnt_clip_reader.h"

#include "core/model/meta.h"
#include "core/model/tick.h"
#include "files/native/event_form.h"
#include "files/smf/port_meta.h"

namespace tessaro {

namespace {

/// From which on a reader has failed.
ByteReader failed()
{
    ByteReader none;
    none.skip(1);
    return none;
}

} // namespace

bool EvntClipReader::ChkTr9c(ClipKind kind)
{
    if (m_in.chars(4) != clipid::of(kind)) return false;
    const ByteReader::Bytes events = m_in.bytes(m_in.u32be());
    if (!m_in.ok()) return false;
    m_in = ByteReader(events);
    return true;
}

bool EvntClipReader::GetEvntTr9c(_EDT_EVNT& rec)
{
    bool found = false;
    while (!found && !m_in.atEnd()) {
        m_time = tick::later(m_time, m_in.vlq());
        rec = {};
        rec.time = m_time;
        rec.status = m_in.u8();
        found = GetEvntTr9cBody(rec) && m_in.ok();
    }
    return found;
}

bool EvntClipReader::GetEvntTr9cBody(_EDT_EVNT& rec)
{
    switch (formOf(rec.status)) {
    case EventForm::sys: return GetEvntTr9cSys(rec);
    case EventForm::meta: return GetEvntTr9cMeta(rec);
    case EventForm::post4: return GetEvntTr9c5(rec);
    case EventForm::post3: return GetEvntTr9c4(rec);
    case EventForm::post2: return GetEvntTr9c3(rec);
    case EventForm::post1: return GetEvntTr9c2(rec);
    case EventForm::wave: return GetEvntTr9cWave(rec);
    case EventForm::mci: return GetEvntTr9cMci(rec);
    case EventForm::syng: return GetEvntTr9cSyng(rec);
    case EventForm::note: return GetEvntTr9cNote(rec);
    case EventForm::none: break;
    }
    m_in = failed();
    return false;
}

bool EvntClipReader::GetEvntTr9cSys(_EDT_EVNT& rec)
{
    data(rec);
    return true;
}

/// The end of a track, a port and types that are none are passed over.
bool EvntClipReader::GetEvntTr9cMeta(_EDT_EVNT& rec)
{
    rec.metaType = m_in.u8();
    data(rec);
    return rec.metaType != meta::endOfTrack && rec.metaType < 0x80 && !isPort({rec.data, rec.szData});
}

bool EvntClipReader::GetEvntTr9cWave(_EDT_EVNT& rec)
{
    rec.gateTime = m_in.u32be();
    rec.fileName = m_in.chars(m_in.vlq());
    return true;
}

bool EvntClipReader::GetEvntTr9cMci(_EDT_EVNT& rec)
{
    rec.fileName = m_in.chars(m_in.vlq());
    rec.mciCommand = m_in.chars(m_in.vlq());
    return true;
}

bool EvntClipReader::GetEvntTr9cSyng(_EDT_EVNT& rec)
{
    GetEvntTr9cNote(rec);
    data(rec);
    return true;
}

bool EvntClipReader::GetEvntTr9cNote(_EDT_EVNT& rec)
{
    GetEvntTr9c3(rec);
    rec.gateTime = m_in.u32be();
    return true;
}

bool EvntClipReader::GetEvntTr9c2(_EDT_EVNT& rec)
{
    rec.post1 = m_in.u8();
    return true;
}

bool EvntClipReader::GetEvntTr9c3(_EDT_EVNT& rec)
{
    GetEvntTr9c2(rec);
    rec.post2 = m_in.u8();
    return true;
}

bool EvntClipReader::GetEvntTr9c4(_EDT_EVNT& rec)
{
    GetEvntTr9c3(rec);
    rec.post3 = m_in.u8();
    return true;
}

bool EvntClipReader::GetEvntTr9c5(_EDT_EVNT& rec)
{
    GetEvntTr9c4(rec);
    rec.post4 = m_in.u8();
    return true;
}

void EvntClipReader::data(_EDT_EVNT& rec)
{
    const ByteReader::Bytes bytes = m_in.bytes(m_in.vlq());
    rec.data = bytes.data();
    rec.szData = static_cast<std::uint32_t>(bytes.size());
}

} // namespace tessaro
