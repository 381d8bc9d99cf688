// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/blk_form.h"

#include "core/model/trk.h"
#include "files/native/native_chunks.h"

#include <array>

namespace tessaro {

namespace {

template <std::size_t count>
void zeros(ByteWriter& out)
{
    out.bytes(std::array<std::uint8_t, count>{});
}

} // namespace

void CnvTrkInfo(const CTrk& trk, ByteWriter& out)
{
    out.u8(trk.GetType());
    out.u8(trk.GetPort());
    out.u8(trk.GetCh());
    out.u8(static_cast<std::uint8_t>(trk.GetTrans()));
    out.u8(trk.GetSolo());
    out.u8(trk.GetMute());
    out.u8(trk.GetTransEnable());
    out.u32be(trk.GetInstType());
    out.u8(trk.GetStaffType());
    out.u8(trk.GetWavVol());
    zeros<native::trkReserve>(out);
}

bool CnvBlkInfo(const BlkForm& blk, ByteWriter& out)
{
    if (blk.name.size() > native::longestData) return false;
    out.u8(blk.type);
    out.u8(0);
    out.u32be(blk.top);
    out.u32be(blk.end);
    out.u32be(blk.real);
    zeros<native::blkReserve>(out);
    out.vlq(static_cast<std::uint32_t>(blk.name.size()));
    out.chars(blk.name);
    return true;
}

BlkForm readBlkInfo(ByteReader& in)
{
    BlkForm blk;
    blk.type = in.u8();
    in.skip(1);
    blk.top = in.u32be();
    blk.end = in.u32be();
    blk.real = in.u32be();
    in.skip(native::blkReserve);
    blk.name = in.chars(in.vlq());
    return blk;
}

} // namespace tessaro
