// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/folding_row.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <limits>

namespace tessaro {
namespace {

constexpr int edge = 8;
constexpr int gap = 13; ///< with the line in its middle
constexpr int leastFiller = 80;

} // namespace

std::vector<bool> partsThatStay(const std::vector<FoldPart>& parts, int room, int gap)
{
    std::vector<bool> stays(parts.size(), true);
    const auto needed = [&] {
        int sum = -gap;
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (stays[i]) sum += parts[i].width + gap;
        return sum;
    };
    while (needed() > room) {
        std::size_t goes = parts.size();
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (stays[i] && parts[i].rank > 0 && (goes == parts.size() || parts[i].rank > parts[goes].rank)) goes = i;
        if (goes == parts.size()) break;
        stays[goes] = false;
    }
    return stays;
}

void FoldingRow::addGroup(QWidget* group, int rank)
{
    group->setParent(this);
    m_groups.push_back({group, rank});
}

void FoldingRow::setFiller(QWidget* filler)
{
    filler->setParent(this);
    m_filler = filler;
}

int FoldingRow::widthUpTo(int rank) const
{
    int sum = 2 * edge - gap;
    for (const Group& group : m_groups)
        if (group.rank <= rank) sum += group.widget->sizeHint().width() + gap;
    return sum;
}

int FoldingRow::tallest() const
{
    int height = 0;
    for (const Group& group : m_groups) height = std::max(height, group.widget->sizeHint().height());
    return height + 12;
}

QSize FoldingRow::sizeHint() const { return {widthUpTo(std::numeric_limits<int>::max()), tallest()}; }
QSize FoldingRow::minimumSizeHint() const { return {widthUpTo(0), tallest()}; }

void FoldingRow::arrange()
{
    std::vector<FoldPart> parts;
    for (const Group& group : m_groups) parts.push_back({group.widget->sizeHint().width(), group.rank});
    const std::vector<bool> stays = partsThatStay(parts, width() - 2 * edge, gap);
    m_lines.clear();
    int x = edge;
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        QWidget& widget = *m_groups[i].widget;
        widget.setVisible(stays[i]);
        if (!stays[i]) continue;
        if (x > edge) {
            m_lines.push_back(x + gap / 2);
            x += gap;
        }
        const int tall = widget.sizeHint().height();
        widget.setGeometry(x, (height() - tall) / 2, parts[i].width, tall);
        x += parts[i].width;
    }
    if (m_filler) {
        m_filler->setVisible(width() - edge - x - gap >= leastFiller);
        m_filler->setGeometry(x + gap, 0, std::max(width() - edge - x - gap, 0), height());
    }
    update();
}

bool FoldingRow::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) {
        arrange();
        updateGeometry();
    }
    return QWidget::event(event);
}

void FoldingRow::resizeEvent(QResizeEvent*) { arrange(); }

void FoldingRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.fillRect(0, height() - 1, width(), 1, palette().mid());
    for (const int x : m_lines) painter.fillRect(x, (height() - 32) / 2, 1, 32, palette().mid());
}

} // namespace tessaro
