// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/load_evnt.h"

#include "core/model/meta.h"
#include "core/model/realblk.h"
#include "files/smf/port_meta.h"

#include <algorithm>
#include <limits>

namespace tessaro {

bool EvntLoader::LoadTr9Evnts()
{
    constexpr std::uint64_t lastTick = std::numeric_limits<std::uint32_t>::max();
    while (!m_in.atEnd()) {
        m_time = static_cast<std::uint32_t>(std::min(std::uint64_t{m_time} + m_in.vlq(), lastTick));
        if (!LoadTr9Evnt()) return false;
    }
    return m_in.ok();
}

bool EvntLoader::LoadTr9Evnt()
{
    m_status = m_in.u8();
    switch (formOf(m_status)) {
    case EventForm::sys: return LoadTr9Sys();
    case EventForm::meta: return LoadTr9Meta();
    case EventForm::post4: return LoadTr9Posts(4);
    case EventForm::post3: return LoadTr9Posts(3);
    case EventForm::post2: return LoadTr9Posts(2);
    case EventForm::post1: return LoadTr9Posts(1);
    case EventForm::wave: return LoadTr9Wave();
    case EventForm::mci: return LoadTr9Mci();
    case EventForm::syng: return LoadTr9Syng();
    case EventForm::note: return LoadTr9Note();
    case EventForm::none: break;
    }
    return false;
}

CEvnt* EvntLoader::addEvnt()
{
    CEvnt* event = nullptr;
    if (m_in.ok()) m_real.NewAddTail(&event);
    if (!event) return nullptr;
    event->SetTime(m_time);
    event->SetStatus(m_status);
    return event;
}

bool EvntLoader::LoadTr9Sys()
{
    const ByteReader::Bytes body = data();
    CEvnt* event = addEvnt();
    return event && event->SetSys(m_time, static_cast<std::uint32_t>(body.size()), body.data(), 0, m_status);
}

/// The end of a track, a port and types that are none are passed over.
bool EvntLoader::LoadTr9Meta()
{
    const std::uint8_t type = m_in.u8();
    const ByteReader::Bytes body = data();
    if (!m_in.ok()) return false;
    if (type == meta::endOfTrack || type >= 0x80 || isPort(body)) return true;
    CEvnt* event = addEvnt();
    return event && event->SetMeta(m_time, type, static_cast<std::uint32_t>(body.size()), body.data(), 0);
}

bool EvntLoader::LoadTr9Posts(int count)
{
    const ByteReader::Bytes posts = m_in.bytes(static_cast<std::size_t>(count));
    CEvnt* event = addEvnt();
    if (!event) return false;
    event->SetPost1(posts[0]);
    if (count > 1) event->SetPost2(posts[1]);
    if (count > 2) event->SetPost3(posts[2]);
    if (count > 3) event->SetPost4(posts[3]);
    return true;
}

bool EvntLoader::LoadTr9Note()
{
    const std::uint8_t pitch = m_in.u8();
    const std::uint8_t velocity = m_in.u8();
    const std::uint32_t gate = m_in.u32be();
    CEvnt* event = addEvnt();
    if (!event) return false;
    event->SetPost1(pitch);
    event->SetPost2(velocity);
    event->SetGateTime(gate);
    return true;
}

bool EvntLoader::LoadTr9Syng()
{
    if (!LoadTr9Note()) return false;
    CEvnt& event = *m_real.events().tail();
    const std::uint32_t gate = event.GetGateTime();
    const ByteReader::Bytes body = data();
    if (!m_in.ok() || !event.SetSyng(static_cast<std::uint32_t>(body.size()), body.data(), 0)) return false;
    event.SetGateTime(gate); // which SetSyng clears
    return true;
}

bool EvntLoader::LoadTr9Wave()
{
    const std::uint32_t gate = m_in.u32be();
    std::string fileName = text();
    CEvnt* event = addEvnt();
    if (!event) return false;
    event->SetGateTime(gate);
    event->SetFileName(std::move(fileName));
    return true;
}

bool EvntLoader::LoadTr9Mci()
{
    std::string fileName = text();
    std::string command = text();
    CEvnt* event = addEvnt();
    if (!event) return false;
    event->SetFileName(std::move(fileName));
    event->SetMciCommand(std::move(command));
    return true;
}

} // namespace tessaro
