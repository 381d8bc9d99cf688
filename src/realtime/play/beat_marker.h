// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

class Loom;
class QueueWriter;

/// Queues the beat marker of this tick, if there is one, and moves the position inside the bar by a tick. A beat is on
/// for 20 ticks. Bar and beat lengths are the engine's. Feeder.
void markBeat(Loom& loom, QueueWriter& queue);

/// Sets bar and beat length in the engine, and the position inside the bar, which is `offset` ticks behind a bar line.
/// A signature that has no length is ignored.
void setSignature(Loom& loom, unsigned numerator, unsigned denominatorPower, unsigned offset);

} // namespace tessaro
