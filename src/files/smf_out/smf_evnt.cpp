// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/smf_out/smf_evnt.h"

#include "base/bytes.h"
#include "core/model/evnt.h"
#include "core/model/meta.h"

#include <initializer_list>
#include <span>
#include <stdexcept>

namespace tessaro {

namespace {

void put(ByteWriter& out, std::initializer_list<std::uint8_t> bytes) { out.bytes({bytes.begin(), bytes.size()}); }

void putBody(ByteWriter& out, std::span<const std::uint8_t> body)
{
    if (body.size() >> 28U != 0) throw std::length_error("the body of an event is too long for a file");
    out.vlq(static_cast<std::uint32_t>(body.size()));
    out.bytes(body);
}

void GetSmfMeta(const SmfRecord& r, ByteWriter& out)
{
    put(out, {status::metaEvent, r.event->GetMetaType()});
    putBody(out, r.event->payload());
}

void GetSmfSys(std::uint8_t first, const SmfRecord& r, ByteWriter& out)
{
    out.u8(first);
    putBody(out, r.event->payload());
}

/// The message of a note that carries one; the note itself is a record of its own by now.
void GetSmfSyng(const SmfRecord& r, ByteWriter& out) { GetSmfSys(status::sysex, r, out); }

std::uint8_t controlOf(const SmfRecord& r) noexcept { return status::control | status::channel(r.status); }

/// Four controllers at one tick: the parameter by two, its value by two.
void putParameter(const SmfRecord& r, std::uint8_t msb, std::uint8_t lsb, ByteWriter& out)
{
    const std::uint8_t control = controlOf(r);
    put(out, {control, msb, r.post1, 0, control, lsb, r.post2, 0, control, 0x06, r.post3, 0, control, 0x26, r.post4});
}

void GetSmfNrpn(const SmfRecord& r, ByteWriter& out) { putParameter(r, 0x63, 0x62, out); }
void GetSmfRpn(const SmfRecord& r, ByteWriter& out) { putParameter(r, 0x65, 0x64, out); }
/// The bank's high byte; the rest are records of their own by now.
void GetSmfVce(const SmfRecord& r, ByteWriter& out) { put(out, {controlOf(r), 0x00, r.post1}); }
void GetSmf2(const SmfRecord& r, ByteWriter& out) { put(out, {r.status, r.post1}); }
void GetSmf3(const SmfRecord& r, ByteWriter& out) { put(out, {r.status, r.post1, r.post2}); }

} // namespace

bool IsSmfEvnt(std::uint8_t s) noexcept
{
    switch (status::kind(s)) {
    case status::rest:
    case status::wave:
    case status::mci:
    case 0x70: return false;
    case 0xF0: return s == status::sysex || s == status::sysexPart || s == status::metaEvent;
    default: return true;
    }
}

void GetSmfEvnt(const SmfRecord& r, ByteWriter& out)
{
    switch (status::kind(r.status)) {
    case status::nrpn: return GetSmfNrpn(r, out);
    case status::rpn: return GetSmfRpn(r, out);
    case status::voice: return GetSmfVce(r, out);
    case status::syng: return GetSmfSyng(r, out);
    case status::program:
    case status::pressure: return GetSmf2(r, out);
    case 0xF0: return r.status == status::metaEvent ? GetSmfMeta(r, out) : GetSmfSys(r.status, r, out);
    default: return GetSmf3(r, out);
    }
}

void GetEot(ByteWriter& out) { put(out, {0, status::metaEvent, meta::endOfTrack, 0}); }

void GetStrTr9MetaPort(std::uint8_t port, ByteWriter& out)
{
    put(out, {status::metaEvent, meta::sequencer, 4, 0x43, 0x00, 0x01, port});
}

} // namespace tessaro
