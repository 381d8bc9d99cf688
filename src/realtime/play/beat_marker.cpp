// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/beat_marker.h"

#include "core/maps/meas_map.h"
#include "realtime/loom/loom.h"
#include "realtime/play/queue_writer.h"

#include <cstdint>

namespace tessaro {

namespace {
constexpr std::uint32_t clickTicks = 20;
}

void markBeat(Loom& loom, QueueWriter& queue)
{
    const std::uint32_t bar = loom.getLoomMaxbeat();
    const std::uint32_t beat = loom.getLoomBeat1();
    if (bar == 0 || beat == 0) return;
    const std::uint32_t inBar = loom.getLoomMbeat() % bar;
    const std::uint32_t inBeat = inBar % beat;
    if (inBeat == 0)
        queue.beat(inBar == 0 ? 0 : 1, true);
    else if (inBeat == clickTicks)
        queue.beat(inBar == clickTicks ? 0 : 1, false);
    loom.setLoomMbeat(inBar + 1 < bar ? inBar + 1 : 0);
}

void setSignature(Loom& loom, unsigned numerator, unsigned denominatorPower, unsigned offset)
{
    if (numerator == 0 || denominatorPower > 5) return;
    const std::uint32_t beat = 1920U >> denominatorPower;
    const std::uint32_t bar = numerator * beat;
    loom.setLoomBeat1(beat);
    loom.setLoomMaxbeat(bar);
    loom.setLoomMbeat(offset % bar);
}

} // namespace tessaro
