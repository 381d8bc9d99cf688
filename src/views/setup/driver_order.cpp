// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/driver_order.h"

#include <algorithm>

namespace tessaro {

DriverOrder::DriverOrder(std::span<const std::int32_t> ports, std::size_t drivers)
{
    std::vector<bool> isPort(drivers);
    for (const std::int32_t driver : ports) {
        const auto index = static_cast<std::size_t>(driver);
        if (driver < 0 || index >= drivers || isPort[index]) continue;
        isPort[index] = true;
        m_rows.push_back({driver, true});
    }
    for (std::size_t i = 0; i < drivers; ++i)
        if (!isPort[i]) m_rows.push_back({static_cast<int>(i), false});
}

void DriverOrder::check(std::size_t row, bool on)
{
    if (row < m_rows.size()) m_rows[row].checked = on;
}

void DriverOrder::drop(std::size_t row, std::size_t place)
{
    if (row >= m_rows.size() || place > m_rows.size() || place == row) return;
    m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(place), Row(m_rows[row]));
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(place < row ? row + 1 : row));
}

bool DriverOrder::step(std::size_t row, int direction)
{
    const std::size_t other = direction < 0 ? row - 1 : row + 1;
    if (row >= m_rows.size() || other >= m_rows.size()) return false;
    std::swap(m_rows[row], m_rows[other]);
    return true;
}

std::vector<std::int32_t> DriverOrder::ports() const
{
    std::vector<std::int32_t> drivers;
    for (const Row& row : m_rows)
        if (row.checked) drivers.push_back(row.driver);
    return drivers;
}

std::optional<int> DriverOrder::portOf(int driver) const
{
    const std::vector<std::int32_t> drivers = ports();
    const auto found = std::ranges::find(drivers, driver);
    if (found == drivers.end()) return std::nullopt;
    return static_cast<int>(found - drivers.begin());
}

} // namespace tessaro
