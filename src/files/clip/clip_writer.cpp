// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/clip/clip_writer.h"

#include "core/edit/editor.h"
#include "core/edit/percent.h"
#include "core/model/poslist.h"
#include "files/native/blk_form.h"
#include "files/native/cnv_evnt.h"
#include "files/native/native_chunks.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace tessaro {

namespace {

using RealNumbers = std::unordered_map<const CRealBlk*, std::uint32_t>;

RealNumbers numbersOf(const List<CRealBlk>& reals)
{
    RealNumbers numbers;
    numbers.reserve(reals.count());
    for (const CRealBlk* real = reals.head(); real; real = List<CRealBlk>::next(real))
        numbers.emplace(real, static_cast<std::uint32_t>(numbers.size()));
    return numbers;
}

/// An image that is thrown away unless it is whole.
bool finish(ClipWriter::Image& image, bool whole)
{
    whole = whole && image.size() <= std::numeric_limits<std::uint32_t>::max();
    if (!whole) image.clear();
    return whole;
}

} // namespace

bool ClipWriter::SetClipTr9(Image& out, const CPosList& selection, ClipKind kind)
{
    out.clear();
    ByteWriter writer(out);
    writer.chars(clipid::of(kind));
    const std::size_t length = writer.beginLength();
    Percent bar(m_editor, static_cast<std::size_t>(selection.GetCount()));
    std::uint32_t last = 0;
    for (POSITION pos = selection.GetHeadPos(); const CPos* place = selection.GetNext(pos);) {
        bar.step();
        const CEvnt* event = List<CEvnt>::get(place->GetEvntPos());
        if (!event) return finish(out, false);
        if (isLeftOut(*event)) continue;
        const std::uint32_t time = std::max(place->GetTime(), last);
        writer.vlq(time - last);
        last = time;
        if (!CnvEvnt(*event, writer)) return finish(out, false);
    }
    writer.endLength(length);
    return finish(out, true);
}

bool ClipWriter::SetClipTr9_blk(Image& out, std::span<const BlkRef> blks)
{
    out.clear();
    ByteWriter writer(out);
    writer.chars(clipid::blks);
    const std::size_t length = writer.beginLength();
    SetHeader(blks.size(), writer);
    for (const BlkRef& ref : blks) {
        const CRealBlk* real = ref.blk ? List<CBlk>::get(ref.blk)->GetRealBlk() : nullptr;
        if (!real || !SetEvnt_blk(*real, writer)) return finish(out, false);
    }
    const RealNumbers numbers = numbersOf(m_editor.song().realBlks());
    for (const BlkRef& ref : blks) {
        const auto number = numbers.find(List<CBlk>::get(ref.blk)->GetRealBlk());
        if (number == numbers.end() || !SetTrkInfo_blk(ref, number->second, writer)) return finish(out, false);
    }
    writer.endLength(length);
    SetScr(writer);
    return finish(out, true);
}

bool ClipWriter::isLeftOut(const CEvnt& event) const { return m_editor.score().isScoreLink(event); }

void ClipWriter::SetHeader(std::size_t count, ByteWriter& out) const
{
    out.chars(chunkid::header);
    out.u32be(static_cast<std::uint32_t>(count));
}

bool ClipWriter::SetEvnt_blk(const CRealBlk& real, ByteWriter& out) const
{
    out.chars(chunkid::realBlk);
    const std::size_t length = out.beginLength();
    if (!CnvBlk(real, out, [this](const CEvnt& event) { return isLeftOut(event); })) return false;
    out.endLength(length);
    return true;
}

bool ClipWriter::SetTrkInfo_blk(const BlkRef& ref, std::uint32_t real, ByteWriter& out) const
{
    if (!ref.trk) return false;
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    out.u8(static_cast<std::uint32_t>(Song::numberOf(ref.trk)));
    CnvTrkInfo(*List<CTrk>::get(ref.trk), out);
    return CnvBlkInfo({blktype::real, blk.GetTimeTop(), blk.GetTimeEnd(), real, blk.GetName()}, out);
}

void ClipWriter::SetScr(ByteWriter& out) const
{
    for (const std::string_view id : clipid::score) {
        out.chars(id);
        const std::size_t length = out.beginLength();
        out.u32be(0); // entries
        out.endLength(length);
    }
}

} // namespace tessaro
