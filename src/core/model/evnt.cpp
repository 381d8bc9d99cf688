// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/evnt.h"

#include "core/model/meta.h"

#include <new>
#include <utility>

namespace tessaro {

/// What only some kinds have: the payload and the two texts.
struct CEvnt::Side {
    std::vector<std::uint8_t> payload;
    std::string mciCommand;
    std::string fileName;
};

namespace {
const std::string noText;
}

CEvnt::CEvnt() noexcept = default;
CEvnt::~CEvnt() = default;

std::uint32_t CEvnt::GetSzData() const noexcept
{
    return m_side ? static_cast<std::uint32_t>(m_side->payload.size()) : 0;
}

std::span<const std::uint8_t> CEvnt::payload() const noexcept
{
    return m_side ? std::span<const std::uint8_t>(m_side->payload) : std::span<const std::uint8_t>();
}

const std::string& CEvnt::GetMciCommand() const noexcept { return m_side ? m_side->mciCommand : noText; }

const std::string& CEvnt::GetFileName() const noexcept { return m_side ? m_side->fileName : noText; }

void CEvnt::Get(_EDT_EVNT& rec) const
{
    rec.status = m_status;
    rec.post1 = m_post1;
    rec.post2 = m_post2;
    rec.post3 = m_post3;
    rec.post4 = m_post4;
    rec.metaType = m_metaType;
    rec.time = m_time;
    rec.gateTime = m_gateTime;
    rec.szData = GetSzData();
    rec.data = rec.szData ? m_side->payload.data() : nullptr;
    rec.mciCommand = GetMciCommand();
    rec.fileName = GetFileName();
}

void CEvnt::copyFrom(const CEvnt& other)
{
    m_side = other.m_side ? std::make_unique<Side>(*other.m_side) : nullptr;
    m_time = other.m_time;
    m_gateTime = other.m_gateTime;
    m_status = other.m_status;
    m_post1 = other.m_post1;
    m_post2 = other.m_post2;
    m_post3 = other.m_post3;
    m_post4 = other.m_post4;
    m_metaType = other.m_metaType;
}

void CEvnt::swapWith(CEvnt& other) noexcept
{
    std::swap(m_side, other.m_side);
    std::swap(m_time, other.m_time);
    std::swap(m_gateTime, other.m_gateTime);
    std::swap(m_status, other.m_status);
    std::swap(m_post1, other.m_post1);
    std::swap(m_post2, other.m_post2);
    std::swap(m_post3, other.m_post3);
    std::swap(m_post4, other.m_post4);
    std::swap(m_metaType, other.m_metaType);
}

CEvnt::Side& CEvnt::side()
{
    if (!m_side) m_side = std::make_unique<Side>();
    return *m_side;
}

void CEvnt::SetFileName(std::string name) { side().fileName = std::move(name); }

void CEvnt::SetMciCommand(std::string command) { side().mciCommand = std::move(command); }

bool CEvnt::Set(const _EDT_EVNT& rec)
{
    if (rec.status == status::sysex || rec.status == status::sysexPart) return SetSysEx(rec);
    if (rec.status == status::metaEvent) return SetMetaEvnt(rec);
    switch (status::kind(rec.status)) {
    case status::rest:
    case status::note: return SetNoteOn(rec);
    case status::nrpn: return SetNrpn(rec);
    case status::rpn: return SetRpn(rec);
    case status::voice: return SetVce(rec);
    case status::wave: return SetWave(rec);
    case status::mci: return SetMci(rec);
    case status::syng: return SetSyng(rec);
    case status::polyPressure:
    case status::control:
    case status::pitchBend: return Set3(rec);
    case status::program:
    case status::pressure: return Set2(rec);
    default: return false;
    }
}

void CEvnt::setShort(const _EDT_EVNT& rec, int posts) noexcept
{
    m_status = rec.status;
    m_time = rec.time;
    m_gateTime = 0;
    if (posts > 0) m_post1 = rec.post1;
    if (posts > 1) m_post2 = rec.post2;
    if (posts > 2) m_post3 = rec.post3;
    if (posts > 3) m_post4 = rec.post4;
}

bool CEvnt::SetNoteOn(const _EDT_EVNT& rec) noexcept
{
    setShort(rec, 2);
    m_gateTime = rec.gateTime;
    return true;
}

bool CEvnt::SetGateTime(const _EDT_EVNT& rec) noexcept
{
    m_gateTime = rec.gateTime;
    return true;
}

bool CEvnt::Set3(const _EDT_EVNT& rec) noexcept
{
    setShort(rec, 2);
    return true;
}

bool CEvnt::Set2(const _EDT_EVNT& rec) noexcept
{
    setShort(rec, 1);
    return true;
}

bool CEvnt::SetNrpn(const _EDT_EVNT& rec) noexcept
{
    setShort(rec, 4);
    return true;
}

bool CEvnt::SetRpn(const _EDT_EVNT& rec) noexcept
{
    setShort(rec, 4);
    return true;
}

bool CEvnt::SetVce(const _EDT_EVNT& rec) noexcept
{
    setShort(rec, 3);
    return true;
}

bool CEvnt::SetWave(const _EDT_EVNT& rec)
{
    SetFileName(rec.fileName);
    setShort(rec, 0);
    m_gateTime = rec.gateTime;
    return true;
}

bool CEvnt::SetMci(const _EDT_EVNT& rec)
{
    SetMciCommand(rec.mciCommand);
    SetFileName(rec.fileName);
    setShort(rec, 0);
    return true;
}

bool CEvnt::SetMetaEvnt(const _EDT_EVNT& rec)
{
    if (!isMetaSizeLegal(rec.metaType, rec.szData)) return false;
    m_metaType = rec.metaType;
    return SetSysEx(rec);
}

bool CEvnt::SetSysEx(const _EDT_EVNT& rec)
{
    setShort(rec, 0);
    m_gateTime = rec.gateTime;
    return setPayload(rec.data, rec.szData);
}

bool CEvnt::SetSyng(const _EDT_EVNT& rec)
{
    setShort(rec, 2);
    m_gateTime = rec.gateTime;
    return setPayload(rec.data, rec.szData);
}

bool CEvnt::SetMeta(std::uint32_t time, std::uint8_t type, std::uint32_t size, const std::uint8_t* data,
                    std::uint32_t offset)
{
    if (type >= 0x80) return false;
    m_time = time;
    m_status = status::metaEvent;
    m_metaType = type;
    m_gateTime = 0;
    return setPayload(data + offset, size);
}

bool CEvnt::SetSys(std::uint32_t time, std::uint32_t size, const std::uint8_t* data, std::uint32_t offset,
                   std::uint8_t st)
{
    m_time = time;
    m_status = st;
    m_gateTime = 0;
    return setPayload(data + offset, size);
}

bool CEvnt::SetSyng(std::uint32_t size, const std::uint8_t* data, std::uint32_t offset)
{
    m_gateTime = 0;
    return setPayload(data + offset, size);
}

bool CEvnt::SetTs(std::uint32_t time, const std::uint8_t* data)
{
    return SetMeta(time, meta::timeSignature, 4, data, 0);
}

bool CEvnt::SetTempo(std::uint32_t time, const std::uint8_t* data) { return SetMeta(time, meta::tempo, 3, data, 0); }

void CEvnt::GmemFree() noexcept
{
    if (m_side) std::vector<std::uint8_t>().swap(m_side->payload);
}

bool CEvnt::PackSysex(const std::uint8_t* data, std::uint32_t count)
{
    if (m_status != status::sysex || GetSzData() == 0) return false;
    try {
        m_side->payload.insert(m_side->payload.end(), data, data + count);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool CEvnt::setPayload(const std::uint8_t* data, std::uint32_t size)
{
    try {
        std::vector<std::uint8_t> bytes(data, data + size);
        side().payload = std::move(bytes);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace tessaro
