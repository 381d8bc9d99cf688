// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/offline_run.h"

#include "cli/position.h"

#include <algorithm>
#include <cstdio>

namespace tessaro::cli {

std::optional<PlayRange> PlayRange::of(const std::string& from, const std::string& to, const CEditor& editor)
{
    PlayRange range;
    const auto take = [&editor](const std::string& text, auto& tick) {
        if (text.empty()) return true;
        const std::optional<std::uint32_t> place = tickOf(text, editor);
        if (place) tick = *place;
        return place.has_value();
    };
    if (take(from, range.from) && take(to, range.to)) return range;
    std::fputs("tessaro-cli: measures and beats count from 1\n", stderr);
    return std::nullopt;
}

bool runOffline(Player& player, ManualClock& clock, std::optional<std::int64_t> ticks,
                const std::function<bool()>& advanced)
{
    Loom& loom = player.loom();
    bool wanted = true;
    while (wanted && loom.getLoomQueplying()) {
        const Nanos next = clock.nextDue();
        if (ticks && loom.dueOfTick(*ticks) <= next) {
            // What is due at the end itself is not played any more.
            clock.advanceTo(std::max(clock.now(), loom.dueOfTick(*ticks) - Nanos(1)));
            break;
        }
        clock.advanceTo(next);
        wanted = !advanced || advanced();
    }
    player.smc().smcPlayStop();
    return wanted;
}

} // namespace tessaro::cli
