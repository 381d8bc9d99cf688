// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/midi_backend.h"

namespace tessaro {

MidiBackend::~MidiBackend() = default;

} // namespace tessaro
