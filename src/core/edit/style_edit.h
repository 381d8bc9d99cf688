// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>

namespace tessaro {

class CEditor;
class CStyleBlk;

/// The operations on style blocks: each records undo and tells the views. Copies share set-up and phrase data with
/// the original and carry the first phrase of each slot only. A refusal, or memory running out, leaves style track and
/// history as they are. The transport is the caller's to stop. Main thread only.
namespace style_edit {

/// Takes a block that stands in no list; its top becomes `time`.
POSITION add(CEditor& editor, std::uint32_t time, CStyleBlk* style);
bool remove(CEditor& editor, POSITION style);
bool copy(CEditor& editor, POSITION style, std::uint32_t time);
/// The block gets a new position.
bool move(CEditor& editor, POSITION style, std::uint32_t time);
bool resize(CEditor& editor, POSITION style, std::uint32_t end);
/// Only strictly inside the block.
bool divide(CEditor& editor, POSITION style, std::uint32_t time);
/// Joins a block to `other`, which does not start later.
bool join(CEditor& editor, POSITION style, POSITION other);

} // namespace style_edit
} // namespace tessaro
