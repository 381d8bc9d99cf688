// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"

#include <QPoint>
#include <QRect>

#include <optional>
#include <vector>

namespace tessaro {

class CEditor;
class TrkBlks;
class TrkGeometry;
class TrkSelection;

/// Finds blocks by their places in the track window. Points and rectangles are the song's pixels. What it costs does
/// not grow with the blocks elsewhere. Borrows all.
class BlkFinder {
public:
    BlkFinder(const CEditor& editor, const TrkGeometry& geometry, TrkBlks& blks, const TrkSelection& selection)
        : m_editor(editor)
        , m_geometry(geometry)
        , m_blks(blks)
        , m_selection(selection)
    {
    }

    /// The block under a point: a selected one first, four pixels above and below it included, the one selected last
    /// before others; then the one that is drawn last.
    [[nodiscard]] std::optional<BlkRef> hit(QPoint at) const;
    /// Row by row, in the order of the tracks.
    [[nodiscard]] std::vector<BlkRef> inside(const QRect& area) const;
    /// All in the rectangle that holds two blocks.
    [[nodiscard]] std::vector<BlkRef> between(const BlkRef& one, const BlkRef& other) const;
    [[nodiscard]] QRect rect(const BlkRef& blk) const;

private:
    [[nodiscard]] std::vector<BlkRef> inRow(int track, const QRect& area) const;

    const CEditor& m_editor;
    const TrkGeometry& m_geometry;
    TrkBlks& m_blks;
    const TrkSelection& m_selection;
};

} // namespace tessaro
