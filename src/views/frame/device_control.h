// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QTimer>

#include <functional>

namespace tessaro {

class StatusLine;
struct FrameParts;
struct Message;

/// The devices as the main window tells of them: which ones are in use stands in the status line. Those that come or go
/// are taken up.
class DeviceControl {
public:
    /// Both outlive this object.
    DeviceControl(const FrameParts& parts, StatusLine& status);

    /// Whether devices must stay as they are at the moment.
    std::function<bool()> isBusy;

    void show();
    /// Devices have come or gone; taken up as soon as possible.
    void changed(const Message& message);
    /// The names of the MIDI output ports.
    [[nodiscard]] static QStringList portNames(const FrameParts& parts);

private:
    const FrameParts& m_parts;
    StatusLine& m_status;
    QTimer m_timer;
};

} // namespace tessaro
