// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/messages.h"

namespace tessaro {

MessageTarget::~MessageTarget() = default;

} // namespace tessaro
