// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/midi_system.h"

#include "realtime/loom/send_observer.h"

namespace tessaro {

MidiOut::~MidiOut() = default;
MidiInSink::~MidiInSink() = default;
MidiIn::~MidiIn() = default;
MidiSystem::~MidiSystem() = default;
SendObserver::~SendObserver() = default;

} // namespace tessaro
