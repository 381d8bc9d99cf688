// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/clock.h"

namespace tessaro {

TimedTask::~TimedTask() = default;
Clock::~Clock() = default;

} // namespace tessaro
