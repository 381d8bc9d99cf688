// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/frame/frame_parts.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class QWidget;

namespace tessaro {

struct PushedRange;
struct RecordPlaySettings;

/// The commands that show a dialog of settings, and apply what comes of it.
class SetupCommands {
public:
    /// `window` owns the dialogs; it and the parts outlive this object.
    SetupCommands(QWidget& window, const FrameParts& parts) : m_window(window), m_parts(parts) {}

    /// Whether long work runs; then nothing is shown.
    std::function<bool()> isBusy;
    /// The names of the output ports.
    std::function<QStringList()> portNames;

    /// Stops the song, and looks for devices anew.
    void systemSetup();
    /// Stops the song.
    void recordSettings();
    void metronomeSettings();
    /// The system set-up is on screen, with the devices as it found them.
    [[nodiscard]] bool isSystemSetupShown() const { return m_systemSetupShown; }

private:
    std::optional<std::vector<int>> detectModules(QWidget& dialog);
    void take(const RecordPlaySettings& settings, const PushedRange& loop);

    QWidget& m_window;
    const FrameParts& m_parts;
    bool m_systemSetupShown = false;
};

} // namespace tessaro
