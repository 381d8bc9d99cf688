// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/trk_geometry.h"

namespace tessaro {

/// The two handles of the loop in the ruler, in the lower half of it: one that ends at the loop's start and one that
/// begins at its end, so that both can be taken where the loop has no length. Pixels: x of the song, y of the window.
struct LoopHandles {
    static constexpr int width = 9;
    static constexpr int height = 10;

    std::uint32_t start = 0;
    std::uint32_t end = 0;

    [[nodiscard]] QRect left(const TrkGeometry& geometry) const
    {
        return {geometry.x(start) - width + 1, TrkGeometry::rulerHeight - height, width, height};
    }
    [[nodiscard]] QRect right(const TrkGeometry& geometry) const
    {
        return {geometry.x(end), TrkGeometry::rulerHeight - height, width, height};
    }
};

} // namespace tessaro
