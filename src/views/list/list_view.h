// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"

#include <QTableView>

namespace tessaro {

/// The events of one track as a table to type into.
class CListVw : public QTableView {
public:
    CListVw(const ViewParts& parts, int track, QWidget* parent);

    [[nodiscard]] int track() const { return m_track; }
    void setTrack(int track) { m_track = track; }

private:
    const ViewParts m_parts;
    int m_track;
};

} // namespace tessaro
