// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/mci_strings.h"

#include "base/messages.h"

namespace tessaro {

void closeMedia(MessageTarget* mainWindow) noexcept
{
    static constexpr char command[] = "close all";
    if (mainWindow) mainWindow->post({msg::mciCommand, 0, reinterpret_cast<std::intptr_t>(&command[0])});
}

} // namespace tessaro
