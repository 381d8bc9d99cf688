// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"
#include "core/model/records.h"

#include <cstdint>

namespace tessaro {

class CEditor;
class CEvnt;

/// What a change of one time signature does to the signatures behind it: they keep their measure numbers,
/// so their times follow the new length of the measures between. Positions are those of the master block.
/// Main thread only.
namespace signature_edit {

/// A time signature with a body of 4 bytes.
[[nodiscard]] bool isSignature(const CEvnt& e) noexcept;

void changed(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::uint32_t top, std::uint8_t num,
             std::uint8_t den, const CEvnt& event);
void inserted(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_MEASINFO& prev);
void remove(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec);
/// Nothing when memory is out.
void shift(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::int64_t delta);
void removeDuplicates(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt);

} // namespace signature_edit
} // namespace tessaro
