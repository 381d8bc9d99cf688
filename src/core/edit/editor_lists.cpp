// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's access to the lists of the song, by position and by number.
#include "core/edit/editor.h"

#include <new>

namespace tessaro {

namespace {

CTrk* trkAt(POSITION pos) noexcept { return List<CTrk>::get(pos); }
CBlk* blkAt(POSITION pos) noexcept { return List<CBlk>::get(pos); }

} // namespace

bool CEditor::GetNextTrk(POSITION& pos, CTrk** trk) const noexcept
{
    if (!GetTrk(pos, trk)) return false;
    pos = pos->next;
    return true;
}

bool CEditor::GetPrevTrk(POSITION& pos, CTrk** trk) const noexcept
{
    if (!GetTrk(pos, trk)) return false;
    pos = pos->prev;
    return true;
}

bool CEditor::GetTrk(POSITION pos, CTrk** trk) const noexcept
{
    if (pos) *trk = trkAt(pos);
    return pos;
}

bool CEditor::GetTrk(int number, CTrk** trk) const noexcept { return GetTrk(GetTrkPos(number), trk); }

bool CEditor::GetIndexTrk(POSITION pos, int* number) const noexcept
{
    if (pos) *number = Song::numberOf(pos);
    return pos;
}

bool CEditor::GetTrkInfo(POSITION trk, _EDT_TRKINFO& info) const
{
    if (trk) trkAt(trk)->GetInfo(info);
    return trk;
}

bool CEditor::GetTrkInfo(int number, _EDT_TRKINFO& info) const { return GetTrkInfo(GetTrkPos(number), info); }

std::uint32_t CEditor::GetTrkInstType(POSITION trk) const noexcept { return trk ? trkAt(trk)->GetInstType() : 0; }

std::uint8_t CEditor::GetTrkStaffType(POSITION trk) const noexcept
{
    return trk ? trkAt(trk)->GetStaffType() : std::uint8_t{0};
}

std::uint8_t CEditor::GetTrkWavVol(POSITION trk) const noexcept
{
    return trk ? trkAt(trk)->GetWavVol() : std::uint8_t{0};
}

POSITION CEditor::GetBlkPos(POSITION trk, std::uint32_t index) const noexcept
{
    return trk ? trkAt(trk)->GetPos(index) : nullptr;
}

POSITION CEditor::GetHeadBlkPos(POSITION trk) const noexcept { return trk ? trkAt(trk)->GetHeadPos() : nullptr; }

POSITION CEditor::GetTailBlkPos(POSITION trk) const noexcept { return trk ? trkAt(trk)->GetTailPos() : nullptr; }

bool CEditor::GetNextBlk(POSITION trk, POSITION& pos, CBlk** blk) const noexcept
{
    return trk && trkAt(trk)->GetNext(pos, blk);
}

bool CEditor::GetPrevBlk(POSITION trk, POSITION& pos, CBlk** blk) const noexcept
{
    return trk && trkAt(trk)->GetPrev(pos, blk);
}

bool CEditor::GetBlk(POSITION trk, POSITION pos, CBlk** blk) const noexcept { return trk && trkAt(trk)->Get(pos, blk); }

bool CEditor::GetBlk(int trk, std::uint32_t index, CBlk** blk) const noexcept
{
    return GetBlk(GetTrkPos(trk), GetBlkPos(trk, index), blk);
}

std::uint8_t CEditor::GetBlkType(POSITION, POSITION blk) const noexcept
{
    return blk ? blkAt(blk)->GetType() : blktype::none;
}

std::uint8_t CEditor::GetBlkType(int trk, std::uint32_t blk) const noexcept
{
    return GetBlkType(nullptr, GetBlkPos(trk, blk));
}

std::string CEditor::GetBlkName(POSITION, POSITION blk) const
{
    if (!blk) return {};
    const std::string& name = blkAt(blk)->GetName();
    return name.empty() ? "Untitled" : name;
}

std::string CEditor::GetBlkName(int trk, std::uint32_t blk) const { return GetBlkName(nullptr, GetBlkPos(trk, blk)); }

bool CEditor::GetBlkTime(POSITION, POSITION blk, std::uint32_t* top, std::uint32_t* end) const noexcept
{
    if (blk) blkAt(blk)->GetTime(top, end);
    return blk;
}

bool CEditor::GetBlkTime(int trk, std::uint32_t blk, std::uint32_t* top, std::uint32_t* end) const noexcept
{
    return GetBlkTime(nullptr, GetBlkPos(trk, blk), top, end);
}

std::uint32_t CEditor::GetBlkTimeTop(POSITION, POSITION blk) const noexcept
{
    return blk ? blkAt(blk)->GetTimeTop() : 0;
}

std::uint32_t CEditor::GetBlkTimeTop(int trk, std::uint32_t blk) const noexcept
{
    return GetBlkTimeTop(nullptr, GetBlkPos(trk, blk));
}

std::uint32_t CEditor::GetBlkTimeEnd(POSITION, POSITION blk) const noexcept
{
    return blk ? blkAt(blk)->GetTimeEnd() : 0;
}

std::uint32_t CEditor::GetBlkTimeEnd(int trk, std::uint32_t blk) const noexcept
{
    return GetBlkTimeEnd(nullptr, GetBlkPos(trk, blk));
}

std::uint32_t CEditor::GetRealBlkCount() const noexcept
{
    return static_cast<std::uint32_t>(m_song.realBlks().count());
}

bool CEditor::GetNextRealBlk(POSITION& pos, CRealBlk** real) const noexcept
{
    if (!pos) return false;
    *real = List<CRealBlk>::get(pos);
    pos = pos->next;
    return true;
}

POSITION CEditor::FindIndexRealBlk(std::uint32_t index) const noexcept { return m_song.realBlks().at(index); }

POSITION CEditor::FindRealBlk(const CRealBlk* real) const noexcept { return m_song.realBlks().find(real); }

bool CEditor::GetIndexRealBlk(const CRealBlk* real, std::uint32_t* index) const noexcept
{
    std::uint32_t n = 0;
    for (const CRealBlk* at = m_song.realBlks().head(); at; at = List<CRealBlk>::next(at), ++n) {
        if (at != real) continue;
        *index = n;
        return true;
    }
    return false;
}

CRealBlk* CEditor::NewAddTailRealBlk()
{
    try {
        return &m_song.addRealBlk();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool CEditor::DelRealBlk(POSITION real)
{
    if (real) m_song.deleteRealBlk(List<CRealBlk>::get(real));
    return real;
}

POSITION CEditor::GetHeadEvntPos(POSITION, POSITION blk) const noexcept
{
    return blk ? blkAt(blk)->GetHeadPos() : nullptr;
}

POSITION CEditor::GetHeadEvntPos(int trk, std::uint32_t blk) const noexcept
{
    return GetHeadEvntPos(nullptr, GetBlkPos(trk, blk));
}

POSITION CEditor::GetTailEvntPos(POSITION, POSITION blk) const noexcept
{
    return blk ? blkAt(blk)->GetTailPos() : nullptr;
}

POSITION CEditor::GetTailEvntPos(int trk, std::uint32_t blk) const noexcept
{
    return GetTailEvntPos(nullptr, GetBlkPos(trk, blk));
}

bool CEditor::GetEvnt(POSITION, POSITION blk, POSITION evnt, CEvnt** e) const noexcept
{
    return blk && blkAt(blk)->Get(evnt, e);
}

bool CEditor::GetEvnt(POSITION, POSITION blk, POSITION evnt, _EDT_EVNT& rec) const
{
    return blk && blkAt(blk)->GetEvnt(evnt, rec);
}

bool CEditor::GetEvnt(int trk, std::uint32_t blk, POSITION evnt, _EDT_EVNT& rec) const
{
    return GetEvnt(nullptr, GetBlkPos(trk, blk), evnt, rec);
}

bool CEditor::GetNextEvnt(POSITION, POSITION blk, POSITION& evnt, _EDT_EVNT& rec) const
{
    return blk && blkAt(blk)->GetNextEvnt(evnt, rec);
}

bool CEditor::GetNextEvnt(int trk, std::uint32_t blk, POSITION& evnt, _EDT_EVNT& rec) const
{
    return GetNextEvnt(nullptr, GetBlkPos(trk, blk), evnt, rec);
}

bool CEditor::GetPrevEvnt(POSITION, POSITION blk, POSITION& evnt, _EDT_EVNT& rec) const
{
    return blk && blkAt(blk)->GetPrevEvnt(evnt, rec);
}

bool CEditor::GetPrevEvnt(int trk, std::uint32_t blk, POSITION& evnt, _EDT_EVNT& rec) const
{
    return GetPrevEvnt(nullptr, GetBlkPos(trk, blk), evnt, rec);
}

POSITION CEditor::GetHeadEvnt(POSITION, POSITION blk, _EDT_EVNT& rec) const
{
    return blk ? blkAt(blk)->GetHeadEvnt(rec) : nullptr;
}

POSITION CEditor::GetHeadEvnt(int trk, std::uint32_t blk, _EDT_EVNT& rec) const
{
    return GetHeadEvnt(nullptr, GetBlkPos(trk, blk), rec);
}

POSITION CEditor::GetTailEvnt(POSITION, POSITION blk, _EDT_EVNT& rec) const
{
    return blk ? blkAt(blk)->GetTailEvnt(rec) : nullptr;
}

POSITION CEditor::GetTailEvnt(int trk, std::uint32_t blk, _EDT_EVNT& rec) const
{
    return GetTailEvnt(nullptr, GetBlkPos(trk, blk), rec);
}

POSITION CEditor::GetEvntTimePos(POSITION, POSITION blk, std::uint32_t time) const
{
    return blk ? blkAt(blk)->GetTimePos(time) : nullptr;
}

POSITION CEditor::GetEvntTimePos(int trk, std::uint32_t blk, std::uint32_t time) const
{
    return GetEvntTimePos(nullptr, GetBlkPos(trk, blk), time);
}

} // namespace tessaro
