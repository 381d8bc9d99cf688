// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_splitter.h"

#include <algorithm>
#include <limits>

namespace tessaro {

StripSplitter::StripSplitter(QWidget* notes, QWidget* strip) : QSplitter(Qt::Vertical)
{
    addWidget(notes);
    addWidget(strip);
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, [this] { m_wanted = sizes().back(); });
}

int StripSplitter::stripHeight(int wanted, int together)
{
    return std::max(std::min({wanted, together * 2 / 5, together - leastNotes}), leastStrip);
}

void StripSplitter::setWanted(int pixels)
{
    m_wanted = std::max(pixels, leastStrip);
    share();
}

void StripSplitter::resizeEvent(QResizeEvent* event)
{
    // So far the handle goes, too.
    widget(1)->setMaximumHeight(stripHeight(std::numeric_limits<int>::max(), height() - handleWidth()));
    QSplitter::resizeEvent(event);
    share();
}

void StripSplitter::share()
{
    const int together = height() - handleWidth();
    const int strip = stripHeight(m_wanted, together);
    setSizes({std::max(together - strip, 0), strip});
}

} // namespace tessaro
