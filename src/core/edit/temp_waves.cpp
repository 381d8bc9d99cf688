// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/temp_waves.h"

#include "core/edit/song.h"

#include <algorithm>
#include <filesystem>

namespace tessaro {

namespace {

/// Of ASCII alone: what other bytes mean depends on their code page.
char small(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool renameIn(CRealBlk& real, std::string_view from, const std::string& to)
{
    bool renamed = false;
    for (CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e)) {
        if (status::kind(e->GetStatus()) != status::wave || compareWaves(e->GetFileName(), from) != 0) continue;
        e->SetFileName(to);
        renamed = true;
    }
    return renamed;
}

} // namespace

void TempWaves::removeFiles() const noexcept
{
    std::error_code gone;
    for (const std::string& path : m_paths) std::filesystem::remove(path, gone);
}

int compareWaves(std::string_view one, std::string_view other) noexcept
{
    const auto less = [](char a, char b) { return small(a) < small(b); };
    if (std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(), less)) return -1;
    return std::lexicographical_compare(other.begin(), other.end(), one.begin(), one.end(), less) ? 1 : 0;
}

bool renameWave(Song& song, std::string_view from, const std::string& to)
{
    bool renamed = false;
    for (CTrk* trk = song.trk(1); trk; trk = List<CTrk>::next(trk)) {
        if (trk->GetType() != trktype::wave) continue;
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            if (blk->GetType() == blktype::real && blk->GetRealBlk() && renameIn(*blk->GetRealBlk(), from, to))
                renamed = true;
    }
    return renamed;
}

} // namespace tessaro
