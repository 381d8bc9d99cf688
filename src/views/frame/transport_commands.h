// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tessaro {

class CCnpWindow;
class CEditor;
class FrameActions;
class NumberField;
class TransportBar;
enum class WindStep;
struct FrameParts;

/// The commands of the transport: actions, and what is typed into the boxes of the control panel, go to the panel.
/// While long work runs the boxes take nothing.
class TransportCommands {
public:
    /// All outlive this object.
    TransportCommands(const FrameParts& parts, FrameActions& actions, TransportBar& bar);

    /// Whether long work runs.
    std::function<bool()> isBusy;
    /// A command is done: the buttons are to follow the panel, not the click.
    std::function<void()> onDone;
    /// The blocks to be looped: those that are selected, otherwise all of the current track.
    std::function<std::vector<POSITION>()> blksToLoop;

    /// Marks the span, and turns the loop on.
    void markLoop(std::uint32_t start, std::uint32_t end);
    void locate(std::uint32_t tick);

private:
    void connectButtons();
    void connectBoxes(TransportBar& bar);
    void connectLoop(NumberField& field, bool isStart);
    void toggleLoop();
    void loopBlks();
    void setMidiSync(bool on);
    void turnLocation(int beats);
    [[nodiscard]] std::optional<std::uint32_t> typedTick(const QString& text) const;
    [[nodiscard]] CCnpWindow& panel() const;
    [[nodiscard]] CEditor& song() const;

    const FrameParts& m_parts;
    FrameActions& m_actions;
};

/// Whole beats a minute as typed, 1 to 999; a fraction is rounded. None for anything else.
[[nodiscard]] std::optional<int> typedTempo(const QString& text);

} // namespace tessaro
