// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_kind.h"

namespace tessaro {
namespace {

constexpr std::uint8_t balance = 8;
constexpr std::uint8_t panorama = 10;

std::uint8_t low(int value) { return static_cast<std::uint8_t>(value & 0x7F); }

} // namespace

int StripKind::rest() const
{
    if (what == What::pitchBend) return 8192;
    return what == What::control && (number == balance || number == panorama) ? 64 : 0;
}

std::uint8_t StripKind::kindStatus() const
{
    switch (what) {
    case What::velocity: return status::note;
    case What::polyPressure: return status::polyPressure;
    case What::control: return status::control;
    case What::program: return status::program;
    case What::pressure: return status::pressure;
    case What::pitchBend: break;
    }
    return status::pitchBend;
}

bool StripKind::isOf(const CEvnt& event) const
{
    if (status::kind(event.GetStatus()) != kindStatus()) return false;
    return (what != What::control && what != What::polyPressure) || event.GetPost1() == number;
}

int StripKind::valueOf(const _EDT_EVNT& rec) const
{
    switch (what) {
    case What::velocity:
    case What::polyPressure:
    case What::control: return rec.post2;
    case What::program:
    case What::pressure: return rec.post1;
    case What::pitchBend: break;
    }
    return rec.post2 * 128 + rec.post1;
}

_EDT_EVNT StripKind::record(std::uint32_t time, int value, std::uint8_t channel) const
{
    _EDT_EVNT rec;
    rec.status = static_cast<std::uint8_t>(kindStatus() | status::channel(channel));
    rec.time = time;
    rec.post1 = number;
    setValue(rec, value);
    return rec;
}

int StripKind::code() const { return static_cast<int>(what) << 8 | (what == What::polyPressure ? 0 : number); }

StripKind StripKind::ofCode(int code) { return {static_cast<What>(code >> 8), low(code)}; }

void StripKind::setValue(_EDT_EVNT& rec, int value) const
{
    switch (what) {
    case What::velocity:
    case What::polyPressure:
    case What::control: rec.post2 = low(value); break;
    case What::program:
    case What::pressure: rec.post1 = low(value); break;
    case What::pitchBend:
        rec.post1 = low(value);
        rec.post2 = low(value >> 7);
        break;
    }
}

} // namespace tessaro
