// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/device_control.h"

#include "base/messages.h"
#include "core/doc/tr9app.h"
#include "views/frame/frame_parts.h"
#include "views/frame/status_line.h"
#include "views/text/ui_text.h"

namespace tessaro {
namespace {

constexpr int interval = 2000; // ms

} // namespace

DeviceControl::DeviceControl(const FrameParts& parts, StatusLine& status) : m_parts(parts), m_status(status)
{
    QObject::connect(&m_timer, &QTimer::timeout, [this] { show(); });
    m_timer.start(interval);
}

void DeviceControl::show() { m_status.setDevices(m_parts.deviceSentence()); }

void DeviceControl::changed(const Message& message)
{
    if (isBusy()) {
        QTimer::singleShot(interval, &m_timer, [this, message] { changed(message); });
        return;
    }
    m_parts.app.OnDeviceChange(message.wParam);
    show();
}

QStringList DeviceControl::portNames(const FrameParts& parts)
{
    QStringList names;
    for (std::size_t port = 0; port < parts.app.GetMidiOutPortNum(); ++port) {
        const std::uint8_t driver = parts.app.GetMidiOut(static_cast<std::uint8_t>(port));
        const std::string name = parts.app.GetDrvShortName(driver);
        names << (name.empty() ? parts.text(TextId::noDevice) : songText(name));
    }
    return names;
}

} // namespace tessaro
