// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_view.h"

namespace tessaro {

CListVw::CListVw(const ViewParts& parts, int track, QWidget* parent)
    : QTableView(parent)
    , m_parts(parts)
    , m_track(track)
{
}

} // namespace tessaro
