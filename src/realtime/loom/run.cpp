// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/run.h"

#include "base/messages.h"
#include "realtime/loom/midi_bytes.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace tessaro {

namespace {

constexpr int midiSync = 1;
constexpr std::uint64_t endOfRun = 5;

/// In MIDI sync the run gets no further than this ahead of the last clock.
constexpr std::int64_t clockLead = std::int64_t{2} * midi::ticksPerClock;

/// Most clocks that a run behind a Song Position makes up for: four beats.
constexpr int mostMissed = 96;

/// No clock goes out sooner behind the one before, lest an absurd tempo fill the wire and the engine's time.
constexpr auto leastClockGap = std::chrono::milliseconds(1);

std::uint32_t tempoOf(const _LOOM_QUE_REC& record)
{
    return static_cast<std::uint16_t>(record.track) * 65'536U + record.length;
}

bool isTempo(std::uint32_t tempo)
{
    constexpr std::uint32_t longest = 0xFF'FFFF;
    return tempo != 0 && tempo <= longest;
}

} // namespace

void Run::advance(Nanos now, bool playing)
{
    noticeNewRun(now);
    const bool internal = m_state.syncMode.load(std::memory_order_relaxed) != midiSync;
    if (internal) m_following = m_awaitsClock = m_relocating = false;
    goOnRelocated();
    if (m_running && !playing) pause({.due = now});
    if (m_running) {
        holdAtLimit(now);
        playDue(now);
    }
    shiftLine(now);
    takeTempo(now);
    if (!internal || !m_state.realtimeOut.load(std::memory_order_relaxed)) m_clockOut.cancel();
    // Playing may have ended above.
    if (playing && internal && !m_running && m_state.playing.load(std::memory_order_acquire)) begin(now);
    watchPreCount(now);
    if (m_running) playDue(now);
    countTicks(now);
}

void Run::noticeNewRun(Nanos now)
{
    const std::uint32_t run = m_state.run.load(std::memory_order_acquire);
    if (run == m_run) return;
    m_run = run;
    if (m_running) pause({.due = now});
    m_started = false;
    m_state.ticksPlayed = -1;
}

/// Sets tick 0 of a new run, or the tick of the pause, to `time`.
void Run::begin(Nanos time)
{
    m_preCount = m_state.preCount.load(std::memory_order_acquire);
    if (m_started) {
        m_line.shift(time - m_pausedAt);
        m_line.setLengthAt(time, m_tempo.length());
    } else {
        m_started = true;
        m_line.start(time, m_tempo.length());
        m_firstRecord = true;
        m_queueTick = -1;
        m_countedTick = 0;
        m_anchorTick = 0;
        m_anchorSong = m_state.position.load(std::memory_order_acquire);
        m_songPosition = m_anchorSong;
        m_clockTick = 0;
        m_place.restart(m_anchorSong);
        if (!m_preCount) m_place.jump(0, m_anchorSong);
    }
    lineChanged(time);
    m_lastDue = time;
    m_running = true;
    if (!m_preCount) leadOthers(m_line.tickAt(time), time);
}

void Run::pause(Stamp stamp)
{
    m_running = false;
    m_pausedAt = stamp.due;
    m_place.stand(stamp.due);
    m_clockOut.stop(m_ports, stamp);
}

void Run::playDue(Nanos now)
{
    while (m_running) {
        const Upcoming next = upcoming();
        if (next.what == Next::nothing || m_line.due(next.tick) > now) return;
        switch (next.what) {
        case Next::clock: playClock(next.tick); break;
        case Next::record: playRecord(*next.record, next.tick); break;
        case Next::end: end(next.tick); break;
        case Next::nothing: break;
        }
    }
}

/// At one tick the clock goes first and the end last.
Run::Upcoming Run::upcoming()
{
    const _LOOM_QUE_REC* record = m_queue.front();
    // Asked behind the queue, so that no record of a run armed meanwhile is taken for one of this run.
    if (m_state.run.load(std::memory_order_acquire) != m_run) return {};

    Upcoming next;
    const auto consider = [&](Next what, std::int64_t tick) {
        if (next.what == Next::nothing || tick < next.tick) next = {.what = what, .tick = tick, .record = record};
    };
    if (m_clockOut.running()) consider(Next::clock, m_clockOut.nextTick());
    if (record) consider(Next::record, recordTick(*record));
    const std::uint32_t playEnd = m_state.playEnd.load(std::memory_order_relaxed);
    if (playEnd != 0 && !m_preCount)
        consider(Next::end, m_anchorTick + std::int64_t{playEnd} - std::int64_t{m_anchorSong});
    if (next.what != Next::nothing && following() && next.tick > followLimit()) return {};
    return next;
}

/// The queue counts from one tick before the run, so that a first record of delta 1 falls due with tick 0; one of delta
/// 0 cannot be earlier.
std::int64_t Run::recordTick(const _LOOM_QUE_REC& record) const
{
    const std::int64_t delta = std::max(record.delta, 0);
    return m_firstRecord ? std::max<std::int64_t>(m_queueTick + delta, 0) : m_queueTick + delta;
}

/// The due time of a tick for the next message; times of a run never go back.
Nanos Run::stampDue(std::int64_t tick)
{
    m_lastDue = std::max(m_lastDue, m_line.due(tick));
    return m_lastDue;
}

void Run::playRecord(const _LOOM_QUE_REC& queued, std::int64_t tick)
{
    const _LOOM_QUE_REC record = queued;
    m_queue.pop();
    m_firstRecord = false;
    m_queueTick = tick;
    const Stamp stamp{.due = stampDue(tick), .songTick = record.time};
    switch (record.status) {
    case que::tempo: playTempo(tempoOf(record), tick); break;
    case que::songPosition:
    case que::continuePlay:
    case que::stopPlay: playRealtime(record, tick, stamp); break;
    default: m_player.play(record, stamp); break;
    }
    m_anchorTick = tick;
    m_anchorSong = record.time;
    if (m_preCount) return;
    m_place.jump(tick, record.time);
    m_state.position.store(record.time, std::memory_order_release);
}

void Run::playTempo(std::uint32_t tempo, std::int64_t tick)
{
    if (!isTempo(tempo)) return;
    m_tempo.play(tempo);
    if (following()) return;
    const Nanos due = m_line.due(tick);
    m_line.setLengthFrom(tick, m_tempo.length());
    lineChanged(due);
}

void Run::playRealtime(const _LOOM_QUE_REC& record, std::int64_t tick, Stamp stamp)
{
    if (!m_state.realtimeOut.load(std::memory_order_relaxed)) return;
    if (record.status == que::songPosition) {
        constexpr std::uint32_t last = 0x3FFF;
        const std::uint32_t sixteenths = std::min(record.time / midi::ticksPerSixteenth, last);
        const std::array<std::uint8_t, 3> message{midi::songPosition, static_cast<std::uint8_t>(sixteenths & 0x7F),
                                                  static_cast<std::uint8_t>(sixteenths >> 7)};
        m_songPosition = record.time;
        m_ports.sendToAll(message, stamp);
        return;
    }
    m_ports.sendToAll({&record.status, 1}, stamp);
    if (record.status == que::continuePlay && m_clockOut.running()) m_clockOut.realign(tick, m_songPosition);
}

void Run::end(std::int64_t tick)
{
    const Stamp stamp{.due = stampDue(tick)};
    m_state.armed = false;
    m_state.playing.store(false, std::memory_order_release);
    countTicks(stamp.due);
    pause(stamp);
    m_player.releaseAll(stamp);
    if (MessageTarget* window = m_state.mainWindow)
        window->post({.id = msg::realtime, .wParam = endOfRun, .lParam = m_state.position.load()});
}

Nanos Run::nextDue()
{
    if (!m_running) return Nanos::max();
    const Upcoming next = upcoming();
    return next.what == Next::nothing ? Nanos::max() : m_line.due(next.tick);
}

Nanos Run::dueOf(std::int64_t tick) const { return m_running ? m_line.due(tick) : Nanos::max(); }

std::uint32_t Run::songTickAt(Nanos time)
{
    if (!m_started) return m_state.position.load(std::memory_order_relaxed);
    std::int64_t tick = m_place.tickAt(time);
    std::uint32_t song = m_place.songAt(tick);
    if (!m_running || m_preCount) return song;

    // A driver may be ahead of time by a period: what falls due by then counts, though it has not been played.
    const _LOOM_QUE_REC* record = m_queue.front();
    if (!record || m_state.run.load(std::memory_order_acquire) != m_run) return song;
    std::int64_t due = recordTick(*record);
    TimeLine line = m_line;
    for (std::size_t i = 1; record && due <= tick; ++i) {
        if (record->status == que::tempo && isTempo(tempoOf(*record)) && !following()) {
            line.setLengthFrom(due, m_tempo.lengthAt(tempoOf(*record)));
            tick = std::max(line.nearestTickAt(time), due);
        }
        song = songTickFrom(record->time, tick - due);
        record = m_queue.peek(i);
        if (record) due += std::max(record->delta, 0);
    }
    return song;
}

void Run::lineChanged(Nanos from)
{
    if (following())
        m_place.follow(from, m_line, followLimit());
    else
        m_place.follow(from, m_line);
}

void Run::shiftLine(Nanos now)
{
    const int ms = m_state.offsetToApply.exchange(0);
    if (ms == 0 || !m_running) return;
    m_line.shift(-std::chrono::milliseconds(ms));
    lineChanged(now);
}

void Run::takeTempo(Nanos now)
{
    if (!m_tempo.takeRequest() || !m_running || following()) return;
    m_line.setLengthAt(now, m_tempo.length());
    lineChanged(now);
}

/// Behind the pre-count the song goes on from the record played last, however late the news comes.
void Run::watchPreCount(Nanos now)
{
    const bool preCount = m_state.preCount.load(std::memory_order_acquire);
    if (preCount == m_preCount) return;
    countTicks(now);
    m_preCount = preCount;
    if (!m_running) return;
    const std::uint32_t position = m_state.position.load(std::memory_order_acquire);
    if (preCount) {
        m_place.hold(position);
        return;
    }
    m_songPosition = position;
    m_place.jump(m_anchorTick, m_anchorSong);
    const std::int64_t start = m_anchorTick - (std::int64_t{m_anchorSong} - position);
    leadOthers(start, stampDue(start));
    m_state.position.store(m_anchorSong, std::memory_order_release);
}

/// Moves the counters on to the present tick.
void Run::countTicks(Nanos now)
{
    if (!m_running) return;
    std::int64_t tick = m_line.tickAt(now);
    if (following()) tick = std::min(tick, followLimit());
    if (tick > m_countedTick) {
        if (!m_preCount) m_state.innerTime.fetch_add(static_cast<std::uint32_t>(tick - m_countedTick));
        m_countedTick = tick;
    }
    m_state.ticksPlayed.store(m_countedTick, std::memory_order_release);
}

void Run::leadOthers(std::int64_t tick, Nanos time)
{
    const bool internal = m_state.syncMode.load(std::memory_order_relaxed) != midiSync;
    if (internal && m_state.realtimeOut.load(std::memory_order_relaxed))
        m_clockOut.start(m_ports, tick, m_state.position.load(std::memory_order_relaxed), {.due = time});
}

void Run::playClock(std::int64_t tick)
{
    const Nanos due = stampDue(tick);
    m_clockOut.sendClock(m_ports, {.due = due});
    m_clockOut.skipTo(m_line.tickAt(due + leastClockGap));
}

// MIDI sync

std::int64_t Run::followLimit() const
{
    const std::int64_t sure = m_clockTick - std::int64_t{m_follower.doubtful()} * midi::ticksPerClock;
    return sure + clockLead + std::llround(m_clockDelay / m_follower.period() * midi::ticksPerClock);
}

void Run::startArrived()
{
    m_leaderRuns = true;
    m_clocksMissed = 0;
    if (!m_state.armed.load(std::memory_order_acquire)) return;
    m_awaitsClock = true;
    m_state.playing.store(true, std::memory_order_release);
}

void Run::stopArrived(Nanos now)
{
    m_awaitsClock = m_leaderRuns = false;
    m_state.playing.store(false, std::memory_order_release);
    if (!m_running) return;
    countTicks(now);
    pause({.due = now});
    m_player.releaseAll({.due = now});
}

/// The application will arm a run at the new place; until then a Continue must not take up the old one.
void Run::songPositionArrived()
{
    if (!m_state.armed.exchange(false)) return;
    m_relocating = true;
    m_leaderRuns = m_running || m_awaitsClock;
    m_clocksMissed = 0;
}

void Run::goOnRelocated()
{
    if (!m_relocating || !m_state.armed.load(std::memory_order_acquire)) return;
    m_relocating = false;
    if (!m_leaderRuns || m_clocksMissed > mostMissed) return;
    m_awaitsClock = true;
    m_state.playing.store(true, std::memory_order_release);
}

void Run::clockArrived(Nanos when, Nanos now)
{
    constexpr double nanosPerMinute = 60e9;
    constexpr int clocksPerBeat = 24;
    constexpr double longestDelay = 100e6;
    constexpr double delayFades = 0.99;
    const int clocks = m_follower.clock(when);
    if (m_follower.measured())
        m_state.followedBeats = static_cast<int>(std::lround(nanosPerMinute / (clocksPerBeat * m_follower.period())));
    const auto delay = static_cast<double>((now - when).count());
    m_clockDelay = std::min(std::max(delay, m_clockDelay * delayFades), longestDelay);
    if (m_relocating && m_leaderRuns) m_clocksMissed += clocks;

    noticeNewRun(now);
    if (!m_state.playing.load(std::memory_order_acquire)) return;
    if (!m_running) {
        if (!m_awaitsClock) return;
        const bool resumed = m_started;
        begin(when);
        m_clockTick += std::int64_t{midi::ticksPerClock} * (resumed ? 1 : m_clocksMissed);
        m_line.place(m_clockTick, when);
    } else if (m_following) {
        m_clockTick += std::int64_t{midi::ticksPerClock} * clocks;
    } else {
        // Taken over in the middle of a run: the clock stands for the nearest place it can.
        m_clockTick = std::llround(m_line.positionAt(when) / midi::ticksPerClock) * midi::ticksPerClock;
    }
    m_awaitsClock = false;
    m_clocksMissed = 0;
    m_following = true;
    lineChanged(when);
    steer(now);
}

/// Stands still where the clocks have stopped.
void Run::holdAtLimit(Nanos now)
{
    if (following() && m_line.tickAt(now) > followLimit()) m_line.place(followLimit(), now);
}

/// Lets the tick of a clock to come, one period away or more, fall due when that clock would come without jitter.
void Run::steer(Nanos now)
{
    constexpr double least = 0.25; // of the plain length of a tick
    constexpr double most = 4;
    constexpr double unitsPerNano = 12.0 / 25.0;
    constexpr std::int64_t fraction = 4096;

    holdAtLimit(now);
    if (!m_follower.measured()) {
        const TickLength song = m_tempo.length();
        m_follower.guess(static_cast<double>(song.numerator) / static_cast<double>(song.denominator) / unitsPerNano
                         * midi::ticksPerClock);
    }
    const double period = m_follower.period();
    const double plain = period / midi::ticksPerClock;
    const double sinceLast = static_cast<double>((now - m_follower.last()).count());
    const double clocks = 1 + std::max(std::ceil(sinceLast / period), 0.0);
    const double span = clocks * period - sinceLast;
    const double ticks = static_cast<double>(m_clockTick) + clocks * midi::ticksPerClock - m_line.positionAt(now);
    const double wanted = ticks > 0 ? span / ticks : plain * most;
    const double length = std::clamp(wanted, plain * least, plain * most) * unitsPerNano;
    m_line.setLengthAt(now, {.numerator = std::llround(length * fraction), .denominator = fraction});
    lineChanged(now);
}

} // namespace tessaro
