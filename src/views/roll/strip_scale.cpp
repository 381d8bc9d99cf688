// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_scale.h"

#include <algorithm>

namespace tessaro {

int StripScale::y(int value) const
{
    const int most = m_kind.most();
    return m_top + margin + room() - (value * room() + most / 2) / most;
}

int StripScale::value(int y) const
{
    const int up = m_top + margin + room() - y;
    const int most = m_kind.most();
    return std::clamp((up * most + room() / 2) / room(), m_kind.least(), most);
}

} // namespace tessaro
