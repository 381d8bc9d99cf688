// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/editors/view_parts.h"
#include "views/tracks/prop_page.h"

#include <QPointer>

namespace tessaro {

class BlkCommands;
class TrackCommands;

/// The small editors of tracks and blocks, one at a time. A page shows the song as it was when it opened: whoever
/// hears that tracks or blocks have changed closes it. None opens while the song is locked. Borrows all.
class TrackPages {
public:
    TrackPages(const ViewParts& parts, TrackCommands& tracks, BlkCommands& blks, QWidget& window)
        : m_parts(parts)
        , m_tracks(tracks)
        , m_blks(blks)
        , m_window(window)
    {
    }

    /// Beside this place of the screen.
    void openTrack(int track, const QRect& place);
    void openBlk(const BlkRef& blk, const QRect& place);
    void close();

private:
    const ViewParts& m_parts;
    TrackCommands& m_tracks;
    BlkCommands& m_blks;
    QWidget& m_window;
    QPointer<PropPage> m_page; ///< deletes itself
};

} // namespace tessaro
