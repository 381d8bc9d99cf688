// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/device_news.h"

#include <algorithm>
#include <utility>

namespace tessaro {

DeviceNews::Due DeviceNews::look(Nanos now, std::vector<std::string> devices)
{
    const std::vector<std::string> before = std::exchange(m_known, std::move(devices));
    if (m_known == before) return look(now);
    if (!m_pending) m_firstChange = now;
    m_lastChange = now;
    m_pending = true;
    const bool allStand = std::includes(m_known.begin(), m_known.end(), before.begin(), before.end());
    const bool release = !allStand && !m_removed;
    m_removed |= release;
    return {.removal = release, .arrival = look(now).arrival};
}

DeviceNews::Due DeviceNews::look(Nanos now)
{
    const bool over = now - m_lastChange >= quietTime || now - m_firstChange >= longestWait;
    if (!m_pending || !over) return {};
    m_pending = m_removed = false;
    return {.arrival = true};
}

} // namespace tessaro
