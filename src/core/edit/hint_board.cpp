// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/hint_board.h"

#include "core/ports/hint_observer.h"

#include <algorithm>

namespace tessaro {

void HintBoard::addObserver(HintObserver* view) { m_views.push_back(view); }

void HintBoard::removeObserver(const HintObserver* view) noexcept
{
    const auto at = std::find(m_views.begin(), m_views.end(), view);
    if (at == m_views.end()) return;
    // A broadcast under way goes by index; it sweeps up at its end.
    if (m_depth > 0)
        *at = nullptr;
    else
        m_views.erase(at);
}

void HintBoard::send(const HintObserver* sender, int code, CEditor* object, const HintFields& fields)
{
    const HintFields told = fields;
    m_fields = told;
    ++m_depth;
    for (std::size_t i = 0; i < m_views.size(); ++i) {
        if (!m_views[i] || m_views[i] == sender) continue;
        m_fields = told; // a view before may have caused hints of its own
        m_views[i]->onHint(sender, code, object);
    }
    if (--m_depth == 0) std::erase(m_views, nullptr);
}

} // namespace tessaro
