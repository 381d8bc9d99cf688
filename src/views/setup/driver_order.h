// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/doc/settings.h"
#include "realtime/transport/module_detection.h"

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace tessaro {

/// The drivers of a list, put in order and checked: the checked ones, from the top, are the ports. Rows count from 0;
/// one that is not there changes nothing.
class DriverOrder {
public:
    using Row = OutputChoice;

    static constexpr std::size_t mostDrivers = Settings::mostPorts;

    /// First the drivers of the ports, each once; then the others, unchecked.
    DriverOrder(std::span<const std::int32_t> ports, std::size_t drivers);

    [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }
    void check(std::size_t row, bool on);
    /// As a row is dragged: it comes in before the row at `place`, or behind the last for their number.
    void drop(std::size_t row, std::size_t place);
    /// Changes places with the row above, -1, or below, 1; false where there is none.
    bool step(std::size_t row, int direction);
    /// Puts these drivers first and checks them; the others stay as they are behind them.
    void putFirst(const std::vector<int>& drivers) { m_rows = modulesFirst(std::move(m_rows), drivers); }

    /// The drivers of the ports.
    [[nodiscard]] std::vector<std::int32_t> ports() const;
    /// The port that a driver serves.
    [[nodiscard]] std::optional<int> portOf(int driver) const;

private:
    std::vector<Row> m_rows;
};

} // namespace tessaro
