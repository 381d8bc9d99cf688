// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

/// The names by which the drivers of a list are remembered, so that they are found again when their numbers change.
/// Each stands once: of drivers with the same name the later ones are counted. Empty for a driver that could not be
/// asked for its name.
class DriverNames {
public:
    explicit DriverNames(std::span<const std::string> drivers);

    [[nodiscard]] bool has(std::int32_t number) const noexcept
    {
        return static_cast<std::size_t>(number) < m_names.size();
    }
    /// Empty for a number outside the list.
    [[nodiscard]] std::string of(std::int32_t number) const;
    /// The number of the driver remembered under `name`: that of the name where one is given, `none` when it is not
    /// there; otherwise `number`.
    [[nodiscard]] std::int32_t find(std::int32_t number, const std::string& name, std::int32_t none) const;

private:
    std::vector<std::string> m_names;
};

} // namespace tessaro
