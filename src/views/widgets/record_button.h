// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/widgets/tool_button.h"

namespace tessaro {

/// The record button: a red dot; a red ring around a dimmed button while recording waits for the song; all red while
/// it runs.
class RecordButton : public ToolButton {
public:
    enum class State { off, armed, recording };

    using ToolButton::ToolButton;
    void setState(State state);
    [[nodiscard]] State state() const { return m_state; }

protected:
    [[nodiscard]] Colours colours() const override;
    void paintEvent(QPaintEvent* event) override;

private:
    State m_state = State::off;
};

} // namespace tessaro
