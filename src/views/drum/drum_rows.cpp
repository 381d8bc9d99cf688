// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/drum/drum_rows.h"

#include "views/text/ui_text.h"

#include <algorithm>

namespace tessaro {

void DrumRows::set(Shown shown, const Keys& used)
{
    if (shown == Shown::used && used.none()) shown = Shown::named;
    m_keys.clear();
    m_rows.fill(-1);
    for (int key = keys - 1; key >= 0; --key) {
        const bool isShown =
            shown == Shown::all || used[static_cast<std::size_t>(key)] || (shown == Shown::named && hasDrumName(key));
        if (!isShown) continue;
        m_rows[static_cast<std::size_t>(key)] = count();
        m_keys.push_back(static_cast<std::uint8_t>(key));
    }
}

int DrumRows::key(int row) const
{
    return m_keys.empty() ? 0 : m_keys[static_cast<std::size_t>(std::clamp(row, 0, count() - 1))];
}

std::optional<int> DrumRows::row(int key) const
{
    const int row = key >= 0 && key < keys ? m_rows[static_cast<std::size_t>(key)] : -1;
    return row < 0 ? std::nullopt : std::optional(row);
}

QString drumName(int key, const UiText& text)
{
    if (!hasDrumName(key)) return text(TextId::drumNote).arg(key);
    return text(static_cast<TextId>(static_cast<int>(TextId::drum27) + key - 27));
}

} // namespace tessaro
