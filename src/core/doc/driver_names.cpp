// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/driver_names.h"

#include <algorithm>

namespace tessaro {

namespace {
constexpr const char* nameless = "---";
}

DriverNames::DriverNames(std::span<const std::string> drivers)
{
    m_names.reserve(drivers.size());
    for (const std::string& driver : drivers) {
        const auto before = std::count(drivers.data(), &driver, driver);
        if (driver == nameless)
            m_names.emplace_back();
        else
            m_names.push_back(before == 0 ? driver : driver + " #" + std::to_string(before + 1));
    }
}

std::string DriverNames::of(std::int32_t number) const
{
    return has(number) ? m_names[static_cast<std::size_t>(number)] : std::string();
}

std::int32_t DriverNames::find(std::int32_t number, const std::string& name, std::int32_t none) const
{
    if (name.empty()) return number;
    const auto at = std::find(m_names.begin(), m_names.end(), name);
    return at == m_names.end() ? none : static_cast<std::int32_t>(at - m_names.begin());
}

} // namespace tessaro
