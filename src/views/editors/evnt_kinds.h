// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"
#include "core/edit/evnt_ref.h"
#include "core/model/meta.h"

#include <cstdint>
#include <vector>

namespace tessaro {

[[nodiscard]] inline bool isNote(std::uint8_t st) { return status::kind(st) == status::note; }
[[nodiscard]] inline bool isNote(const CEvnt& event) { return isNote(event.GetStatus()); }

/// Whether the track takes notes: neither the master track nor one of waves.
[[nodiscard]] inline bool takesNotes(const CEditor& editor, int track)
{
    const CTrk* trk = track > 0 ? editor.song().trk(track) : nullptr;
    return trk && trk->GetType() != trktype::wave;
}

/// A signature takes the place of the one at its bar line, which may be among those that have just come in.
inline void dropReplaced(std::vector<EvntRef>& made, const CEvnt& next)
{
    if (!next.isMeta(meta::timeSignature)) return;
    std::erase_if(made, [&next](const EvntRef& ref) {
        return evntOf(ref).isMeta(meta::timeSignature) && evntOf(ref).GetTime() == next.GetTime();
    });
}

} // namespace tessaro
