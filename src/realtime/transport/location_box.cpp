// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/location_box.h"

#include "base/messages.h"
#include "realtime/transport/cnp_observer.h"

#include <algorithm>
#include <string>

namespace tessaro {

void LocationBox::show(std::uint32_t tick)
{
    m_followed = tick;
    m_countIn.reset();
    draw(tick);
}

void LocationBox::jumpTo(std::uint32_t tick)
{
    show(tick);
    tellViews(msg::locationJumped, tick);
}

void LocationBox::follow(std::uint32_t tick, std::uint32_t back)
{
    if (tick > m_followed) {
        if (++m_thinCount >= m_thinTime) draw(tick);
        tellViews(msg::playPosition, tick);
    } else if (tick < m_followed) {
        draw(tick);
        tellViews(msg::locationJumped, back);
    }
    m_followed = tick;
}

void LocationBox::showCountIn(std::optional<int> count)
{
    if (count == m_countIn) return;
    m_countIn = count;
    if (count && m_observer) m_observer->textShown(std::to_string(*count));
}

void LocationBox::draw(std::uint32_t tick)
{
    m_tick = tick;
    m_thinCount = 0;
    if (m_observer) m_observer->locationShown(tick);
}

void LocationBox::tellViews(std::uint32_t message, std::uint32_t tick)
{
    if (!m_viewsFollow) return;
    const std::vector<MessageTarget*> views = m_views; // a view may leave meanwhile
    for (MessageTarget* view : views)
        if (std::find(m_views.begin(), m_views.end(), view) != m_views.end()) view->send({message, tick, 0});
}

} // namespace tessaro
