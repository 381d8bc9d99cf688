// SPDX-License-Identifier: GPL-3.0-or-later
// Reading one event from a standard MIDI stream.
#include "core/model/evnt.h"

namespace tessaro {

namespace {

bool readByte(_EDT_SMF& smf, std::uint8_t& value) noexcept
{
    if (smf.pos >= smf.length) return false;
    value = smf.buffer[smf.pos++];
    return true;
}

/// Reads a length and checks that so many bytes follow.
bool readBodySize(_EDT_SMF& smf, std::uint32_t& size) noexcept
{
    return CEvnt::ReadVarLenQnt(smf, size) && size <= smf.length - smf.pos;
}

} // namespace

bool CEvnt::ReadVarLenQnt(_EDT_SMF& smf, std::uint32_t& value)
{
    value = 0;
    std::uint8_t byte = 0;
    do {
        if (!readByte(smf, byte)) return false;
        value = (value << 7U) | (byte & 0x7FU);
    } while (byte & 0x80U);
    return true;
}

bool CEvnt::Set(_EDT_SMF& smf)
{
    if (smf.status == status::sysex || smf.status == status::sysexPart) return SetSysEx(smf);
    if (smf.status == status::metaEvent) return SetMetaEvnt(smf);
    switch (status::kind(smf.status)) {
    case status::noteOff: return SetNoteOff(smf);
    case status::note: return SetNoteOn(smf);
    case status::polyPressure:
    case status::control:
    case status::pitchBend: return Set3(smf);
    case status::program:
    case status::pressure: return Set2(smf);
    default: return false;
    }
}

bool CEvnt::SetMetaEvnt(_EDT_SMF& smf)
{
    std::uint8_t type = 0;
    std::uint32_t size = 0;
    if (!readByte(smf, type) || !readBodySize(smf, size)) return false;
    const bool taken = SetMeta(smf.time, type, size, smf.buffer, smf.pos);
    smf.pos += size;
    return taken;
}

bool CEvnt::SetSysEx(_EDT_SMF& smf)
{
    std::uint32_t size = 0;
    if (!readBodySize(smf, size)) return false;
    const bool taken = SetSys(smf.time, size, smf.buffer, smf.pos, smf.status);
    smf.pos += size;
    return taken;
}

bool CEvnt::SetNoteOn(_EDT_SMF& smf)
{
    if (!Set3(smf)) return false;
    m_gateTime = smf.time;
    return true;
}

bool CEvnt::SetNoteOff(_EDT_SMF& smf)
{
    std::uint8_t ignored = 0;
    if (!readByte(smf, ignored) || !readByte(smf, ignored)) return false;
    m_gateTime = smf.time - m_time;
    return true;
}

bool CEvnt::Set3(_EDT_SMF& smf)
{
    std::uint8_t first = 0;
    std::uint8_t second = 0;
    if (!readByte(smf, first) || !readByte(smf, second)) return false;
    m_post2 = second;
    m_post1 = first;
    m_status = smf.status;
    m_time = smf.time;
    m_gateTime = 0;
    return true;
}

bool CEvnt::Set2(_EDT_SMF& smf)
{
    std::uint8_t first = 0;
    if (!readByte(smf, first)) return false;
    m_post1 = first;
    m_status = smf.status;
    m_time = smf.time;
    m_gateTime = 0;
    return true;
}

} // namespace tessaro
