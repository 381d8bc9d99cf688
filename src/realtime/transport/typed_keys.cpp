// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/typed_keys.h"

namespace tessaro {

TypedKeys::~TypedKeys() = default;

} // namespace tessaro
