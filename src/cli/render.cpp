// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/commands.h"
#include "cli/console_user.h"
#include "cli/offline_run.h"
#include "cli/progress_line.h"
#include "platform/sound/wav_writer.h"
#include "platform/synth/offline_renderer.h"

#include <algorithm>

namespace tessaro::cli {

int runRender(const RenderOptions& options)
{
    ConsoleUser user(options.file);
    SynthOptions synth;
    synth.rate = options.rate;
    synth.soundFont = options.soundFont;
    std::string why;
    const std::unique_ptr<OfflineRenderer> renderer = OfflineRenderer::create(synth, why);
    if (!renderer) {
        user.sentence(why, MessageKind::error);
        return exitFailure;
    }

    ManualClock clock;
    Player player(clock, *renderer, user);
    if (!player.open(options.file)) return exitFailure;
    const std::optional<PlayRange> range = PlayRange::of(options.from, options.to, player.editor());
    if (!range) return exitUsage;
    WavWriter wav;
    if (!wav.open(options.out, options.rate)) {
        ConsoleUser(options.out).sentence(wav.error(), MessageKind::error);
        return exitFailure;
    }
    if (!player.startEngine(std::vector<std::int32_t>(player.portCount(), 0))) return exitFailure;

    const OfflineRenderer::FrameSink sink = [&wav](std::span<const float> frames) { return wav.write(frames); };
    Smc& smc = player.smc();
    smc.smcLocateQuiet(range->from, true);
    renderer->setStart(clock.now());
    const std::uint32_t to = range->to.value_or(player.editor().GetTimeEnd());
    const std::int64_t ticks = std::max<std::int64_t>(0, std::int64_t{to} - range->from);
    ProgressLine progress(options.out);
    smc.smcPlayStart();
    bool written = runOffline(player, clock, ticks, [&] {
        if (ticks > 0) progress.show(static_cast<double>(player.loom().ticksPlayed()) / static_cast<double>(ticks));
        return renderer->renderUntil(clock.now(), sink);
    });
    written = written && renderer->renderUntil(clock.now(), sink) && renderer->renderTail(sink) && wav.close();
    if (written) {
        progress.show(1);
        return exitSuccess;
    }
    ConsoleUser(options.out).sentence(wav.error(), MessageKind::error);
    return exitFailure;
}

} // namespace tessaro::cli
