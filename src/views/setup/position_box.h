// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/position_scale.h"

#include <QAbstractSpinBox>

#include <functional>

namespace tessaro {

/// A song position that is typed as bar, beat and clock, or turned by bars. What cannot be read gives way to the
/// position that stood there.
class PositionBox : public QAbstractSpinBox {
public:
    explicit PositionBox(const PositionScale& scale, QWidget* parent = nullptr);

    /// The person set another position.
    std::function<void(std::uint32_t tick)> onSet;

    [[nodiscard]] std::uint32_t tick() const { return m_tick; }
    void setTick(std::uint32_t tick);

    void stepBy(int bars) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

private:
    void takeTyped();
    void set(std::uint32_t tick);

    PositionScale m_scale;
    std::uint32_t m_tick = 0;
};

} // namespace tessaro
