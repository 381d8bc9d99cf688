// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/song.h"

namespace tessaro {

namespace {
constexpr std::uint8_t drumChannel = 9;
constexpr int tracksInUse = 16; ///< MIDI tracks of a new song
} // namespace

void Song::clear() noexcept
{
    m_trks.forget();
    m_byNumber.fill(nullptr);
    m_owned.clear();
    while (CRealBlk* real = m_reals.takeHead()) delete real;
}

void Song::makeTracks()
{
    m_owned.reserve(trackCount);
    for (int n = 0; n < trackCount; ++n) {
        auto& trk = m_owned.emplace_back(std::make_unique<NumberedTrk>(m_namer));
        m_trks.addTail(trk.get());
        if (n == 0) continue;
        const auto channel = static_cast<std::uint8_t>((n - 1) % 16);
        trk->SetCh(channel);
        trk->SetTransEnable(channel != drumChannel);
        trk->SetType(n <= tracksInUse ? trktype::midi : trktype::unused);
    }
    renumber();
    CTrk& master = *m_byNumber[0];
    master.SetType(trktype::midi);
    master.NewAdd(0, &addRealBlk(), blktype::real);
}

CTrk* Song::trk(int number) const noexcept
{
    return number >= 0 && number < trackCount ? m_byNumber[static_cast<std::size_t>(number)] : nullptr;
}

int Song::numberOf(POSITION trk) noexcept { return static_cast<NumberedTrk*>(List<CTrk>::get(trk))->number; }

void Song::moveTrk(POSITION trk, POSITION after) noexcept
{
    CTrk* moved = List<CTrk>::get(trk);
    m_trks.remove(moved);
    m_trks.insertAfter(List<CTrk>::get(after), moved);
    renumber();
}

void Song::renumber() noexcept
{
    int number = 0;
    for (CTrk* trk = m_trks.head(); trk; trk = List<CTrk>::next(trk)) {
        m_byNumber[static_cast<std::size_t>(number)] = trk;
        static_cast<NumberedTrk*>(trk)->number = number++;
    }
}

CBlk* Song::masterBlk() const noexcept { return m_byNumber[0] ? m_byNumber[0]->blocks().head() : nullptr; }

CRealBlk* Song::masterReal() const noexcept
{
    const CBlk* blk = masterBlk();
    return blk ? blk->GetRealBlk() : nullptr;
}

CRealBlk& Song::addRealBlk()
{
    auto* real = new CRealBlk(m_pool);
    m_reals.addTail(real);
    return *real;
}

void Song::deleteRealBlk(CRealBlk* real) noexcept
{
    m_reals.remove(real);
    delete real;
}

} // namespace tessaro
