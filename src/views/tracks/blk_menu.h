// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"

#include <QString>

class QMenu;

namespace tessaro {

class CEditor;
class UiText;
class ViewActions;

/// The context menu over a block, or over a row beside all blocks.
void fillBlkMenu(QMenu& menu, ViewActions& actions, bool onBlk);

/// The tool tip of a block whose events so many blocks show.
[[nodiscard]] QString blkTip(const CEditor& editor, const UiText& text, const BlkRef& blk, int links);

} // namespace tessaro
