// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"

#include <vector>

namespace tessaro {

/// The blocks that the person has selected, as a take asks for and changes them. User interface thread.
class TESSARO_API BlkSelection {
public:
    virtual ~BlkSelection();
    [[nodiscard]] virtual std::vector<POSITION> selectedBlks(POSITION trk) const = 0;
    virtual void selectBlk(POSITION trk, POSITION blk) = 0;
    virtual void deselectAll() = 0;
    /// The block of a take that begins.
    virtual void markRecBlk(POSITION trk, POSITION blk) = 0;
};

/// No view that selects blocks.
class TESSARO_API NoBlkSelection final : public BlkSelection {
public:
    [[nodiscard]] std::vector<POSITION> selectedBlks(POSITION) const override { return {}; }
    void selectBlk(POSITION, POSITION) override {}
    void deselectAll() override {}
    void markRecBlk(POSITION, POSITION) override {}
};

} // namespace tessaro
