// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/feeder.h"

#include "base/messages.h"
#include "core/edit/editor.h"
#include "realtime/loom/loom.h"
#include "realtime/play/beat_marker.h"
#include "realtime/play/joins.h"
#include "realtime/play/output_filter.h"
#include "realtime/play/track_table.h"

namespace tessaro {

namespace {
constexpr unsigned enoughRecords = 512;   // a step does not begin above it
constexpr unsigned roomLimit = 16384;     // nor go on above this
constexpr std::uint32_t starveTicks = 64; // the engine hears of the queue at least so often
} // namespace

Feeder::Feeder(Loom& loom, Clock& clock, const TrackTable& tracks, const DirectSender& sender, TakeEcho& echo,
               const PlayJoins& joins)
    : m_loom(loom)
    , m_clock(clock)
    , m_tracks(tracks)
    , m_joins(joins)
    , m_queue(loom)
    , m_player(loom, m_queue, tracks, sender)
    , m_echo(echo)
{
    setJoins(joins);
}

void Feeder::setJoins(const PlayJoins& joins) noexcept
{
    m_joins = joins;
    m_player.setJoins(*joins.ottavas, *joins.styles);
}

void Feeder::setNow(std::uint32_t tick) noexcept
{
    m_nowTick = tick;
    m_queue.setTime(tick - m_bias);
}

void Feeder::bind(CEditor* editor, const LeftOut& leftOut)
{
    m_editor = editor;
    m_cursors.chain(editor, leftOut);
    setLoopStart(0);
    setLoopEnd(0);
    locate(0);
}

void Feeder::locate(std::uint32_t tick)
{
    m_queue.restart();
    m_player.clear();
    m_cursors.locate(tick, m_queue.stepCount() + 1);
    m_echo.locate(tick);
    m_bias = 0;
    setNow(tick);
    m_bias = 1;
    m_starveCount = 0;
    m_tickOpen = false;
}

void Feeder::beginRun(const RunSettings& settings)
{
    m_run = settings;
    m_player.clear();
    m_fedTicks = 0;
}

void Feeder::pass()
{
    if (m_loom.getLoomQueplying() && m_loom.getLoomQueCount() <= enoughRecords) {
        const auto lead = static_cast<std::int32_t>(m_fedTicks - m_loom.getLoomInnerTime());
        if (lead > 0) m_echo.takeOver(); // else what is recorded now could be played at once
        if (lead >= leadTicks) {
            feed(1);
        } else {
            feed(leadTicks - lead);
            m_queue.nullRecord();
        }
    }
}

void Feeder::feed(int ticks)
{
    for (; ticks > 0 && m_loom.getLoomQueCount() <= enoughRecords && tick(); --ticks) ++m_fedTicks;
}

bool Feeder::tick()
{
    if (!m_tickOpen) openTick();
    m_tickOpen = !stepTracks();
    if (m_tickOpen) return false;
    closeTick();
    return true;
}

void Feeder::openTick()
{
    m_queue.step();
    setNow(m_nowTick + 1);
    if (m_starveCount++ % starveTicks == 0) m_queue.nullRecord();

    std::uint32_t target = 0;
    m_jumped = false;
    if (loopActive()) {
        if (m_nowTick == loopEnd()) jump(loopStart(), true);
    } else if (m_joins.repeats->IsEnd(m_nowTick)) {
        m_loom.setLoomQplayend(m_nowTick);
        m_cursors.finish();
    } else if (m_joins.repeats->GetJump(m_nowTick, target)) {
        jump(target, false);
    }
    if (!m_jumped) m_player.dueNotesOff();
}

bool Feeder::stepTracks()
{
    TrackCursors::DueEvent due;
    while (m_cursors.peek(m_queue.stepCount(), due)) {
        if (m_loom.getLoomQueCount() > roomLimit) return false;
        m_player.play(due, m_nowTick, m_nowTick <= loopStart());
        m_cursors.advance();
    }
    while (m_loom.getLoomQueCount() <= roomLimit) {
        const TakeEcho::Event* event = m_echo.next(m_nowTick - m_bias);
        if (!event) return true;
        m_player.play(*event);
    }
    return false;
}

void Feeder::closeTick()
{
    if (!m_jumped) {
        m_joins.styles->dueNotesOff();
        m_joins.styles->tick(m_nowTick);
    }
    markBeat(m_loom, m_queue);
}

void Feeder::jump(std::uint32_t target, bool isLoop)
{
    m_joins.styles->allNotesOff();
    m_player.allNotesOff();
    m_joins.waves->reset();
    closeMedia(m_mainWindow);
    m_joins.waves->close();
    m_joins.ottavas->locate(target);

    if (isLoop && m_run.realTimeMessages) {
        const auto interval = std::chrono::milliseconds{m_run.repeatIntervalMs};
        m_queue.system(que::stopPlay);
        m_clock.sleepFor(interval);
        m_queue.setTime(target);
        m_queue.system(que::songPosition);
        m_clock.sleepFor(interval);
        m_queue.system(que::continuePlay);
    } else {
        m_queue.nullRecord();
    }

    m_cursors.jump(target, m_queue.stepCount());
    m_echo.locate(target);
    m_joins.styles->locate(target, isLoop);
    queueTempo(target);

    m_bias = 0;
    setNow(target);
    m_jumped = true;
    m_queue.nullRecord();
    restartWaves(target);
}

// Through the queue, so that what plays before the jump keeps its tempo.
void Feeder::queueTempo(std::uint32_t target)
{
    if ((m_tracks.filter(0) & filter::tempo) || m_loom.getLoomSyncMode() != 0) return;
    _EDT_TIMEINFO info;
    m_editor->GetTimeInfo(target, info);
    m_queue.tempo(m_tracks.port(0), info.tempo);
}

void Feeder::restartWaves(std::uint32_t target)
{
    if (!m_joins.waves->any()) return;
    m_loom.setLoomMidiTimerOfst(0);
    m_joins.waves->prepare(*m_editor, m_editor->TimeToMsecond(target));
    while (m_loom.getLoomQueCount() > 0 && m_loom.getLoomQueplying()) m_clock.sleepFor(std::chrono::milliseconds{4});
    m_joins.waves->restart();
}

} // namespace tessaro
