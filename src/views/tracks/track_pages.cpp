// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_pages.h"

#include "views/tracks/trk_blk_prop_page.h"
#include "views/tracks/trk_prop_page.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

namespace tessaro {

void TrackPages::openTrack(int track, const QRect& place)
{
    if (m_parts.isLocked()) return;
    const QStringList ports = m_parts.portNames ? m_parts.portNames() : QStringList();
    auto* page = new CTrkPropPage(m_parts.editor, m_tracks, m_parts.text, ports, track, &m_window);
    m_page = page;
    page->openAt(place, page->name());
}

void TrackPages::openBlk(const BlkRef& blk, const QRect& place)
{
    if (m_parts.isLocked()) return;
    auto* page = new CTrkBlkPropPage(m_parts.editor, m_blks, m_parts.text, blk, &m_window);
    m_page = page;
    page->openAt(place, page->name());
}

void TrackPages::close()
{
    if (m_page) m_page->close();
}

} // namespace tessaro
