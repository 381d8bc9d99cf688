// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <string>

namespace tessaro {

/// Draws the control panel. Main thread.
class TESSARO_API CnpObserver {
public:
    virtual ~CnpObserver();
    /// A button, the loop points, sync mode, transposition or the state of recording changed.
    virtual void stateChanged() = 0;
    virtual void locationShown(std::uint32_t tick) = 0;
    /// A text in the location box, until the next location.
    virtual void textShown(const std::string& text) = 0;
    /// The real tempo in whole beats a minute.
    virtual void tempoShown(int tempo) = 0;
    /// While `on`, `timer` wants to be called every 100 ms.
    virtual void timerWanted(bool on) = 0;
    /// Around work that may take seconds.
    virtual void busy(bool on) = 0;
    /// The location box is to be typed into.
    virtual void locationWanted() {}
};

} // namespace tessaro
