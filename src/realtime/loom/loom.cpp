// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/loom.h"

#include "base/messages.h"
#include "realtime/loom/engine.h"
#include "realtime/loom/midi_bytes.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>

namespace tessaro {

namespace {

constexpr unsigned statusOk = 0;
constexpr unsigned statusFailed = 1;
constexpr unsigned timerId = 1;
constexpr int defaultInterval = 4;

} // namespace

Loom::Loom(Clock& clock, MidiSystem& midi) : m_engine(std::make_unique<Engine>(clock, midi)) {}
Loom::~Loom() = default;

// Start and shutdown

bool Loom::CreateNoteOnTbl() { return !m_engine->running() && m_engine->notes.create(); }

void Loom::TerminateNoteOnTbl()
{
    if (!m_engine->running()) m_engine->notes.destroy();
}

void Loom::setLoomTicIntval(int milliseconds) { m_interval = std::clamp(milliseconds, 1, 1000); }

unsigned Loom::CallTimeSetEvent(unsigned period, unsigned, std::uintptr_t, unsigned)
{
    if (m_interval == 0) m_interval = period == 0 ? defaultInterval : static_cast<int>(std::min(period, 1000U));
    return m_engine->start(std::chrono::milliseconds(m_interval)) ? timerId : 0;
}

void Loom::CallTimeKillEvent(unsigned id)
{
    if (id == timerId) m_engine->stop();
}

unsigned Loom::setLoomMidiPorts(std::size_t inDriver, std::size_t inSize, std::span<const std::int32_t> outMap,
                                std::size_t outSize, unsigned outInterval)
{
    if (!outMap.empty())
        return setLoomOutPortMap(outMap, outSize, outInterval, outMap.size())
             | (setLoomInPort(inDriver, inSize) ? statusOk : statusFailed);
    m_engine->closeInput();
    return setLoomOutPortMap({}, outSize, outInterval, 0);
}

void Loom::setLoomMidiPortsReset()
{
    m_engine->closeInput();
    setLoomOutPortMap({}, 0, 0, 0);
}

void Loom::setLoomMainWnd(MessageTarget* window) { m_engine->state.mainWindow = window; }

void Loom::setLoomInit()
{
    LoomState& state = m_engine->state;
    state.armed = false;
    state.playing.store(false, std::memory_order_release);
    m_engine->queue.drop();
    state.run.fetch_add(1, std::memory_order_release);
    state.playEnd = 0;
    state.innerTime = 0;
    state.offset = state.offsetToApply = 0;
    m_engine->release();
    m_engine->wake();
}

// Ports

unsigned Loom::setLoomOutPortMap(std::span<const std::int32_t> drivers, std::size_t size, unsigned, std::size_t count)
{
    try {
        const auto used = drivers.first(std::min(drivers.size(), count));
        return m_engine->replacePorts(used, size) ? statusOk : statusFailed;
    } catch (const std::exception&) {
        return statusFailed;
    }
}

bool Loom::setLoomInPort(std::size_t driver, std::size_t size)
{
    try {
        return m_engine->replaceInput(driver, size);
    } catch (const std::exception&) {
        return false;
    }
}

bool Loom::setLoomThruPort(int port)
{
    m_engine->thru.setPort(port);
    return true;
}

void Loom::setLoomThruCh(int channel) { m_engine->thru.setChannel(channel); }
void Loom::setLoomThruTrns(int semitones) { m_engine->thru.setTransposition(std::clamp(semitones, -1000, 1000)); }
void Loom::setLoomThruFlag(int on) { m_engine->thru.setEnabled(on != 0); }
void Loom::setLoomThruFilt(std::uint32_t mask) { m_engine->thru.setFilter(mask); }
void Loom::setLoomRealTimeMessagesSw(int on) { m_engine->state.realtimeOut = on != 0; }
void Loom::setLoomSyncMode(int mode) { m_engine->state.syncMode = mode; }
int Loom::getLoomSyncMode() const { return m_engine->state.syncMode; }

// Immediate sending

unsigned Loom::loomSendShortMsg(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    const std::array<std::uint8_t, 3> bytes{status, data1, data2};
    const auto message = std::span(bytes).first(messageLength(status));
    if (!m_engine->accepts(port) || !isShortMessage(message)) return statusFailed;
    if (!m_engine->immediate.putShort(port, message)) return statusFailed;
    m_engine->wake();
    return statusOk;
}

unsigned Loom::loomSendLongMsg(int port, const void* bytes, std::size_t length)
{
    if (length == 0) return statusOk;
    if (!bytes || !m_engine->accepts(port)) return statusFailed;
    if (!m_engine->immediate.putLong(port, {static_cast<const std::uint8_t*>(bytes), length})) return statusFailed;
    m_engine->wake();
    return statusOk;
}

int Loom::getLoomInLongmsg() const { return m_engine->immediate.longUnderWay() ? 1 : 0; }

void Loom::setLoomInLongmsg(int flag)
{
    if (flag == 0) m_engine->immediate.forgetLong();
}

// Queue and clock

bool Loom::putLoomQueData(const _LOOM_QUE_REC& record)
{
    const bool starved = m_engine->queue.size() == 0;
    if (!m_engine->queue.put(record)) return false;
    if (starved && m_engine->state.playing) m_engine->wake();
    return true;
}

unsigned Loom::getLoomQueCount() const { return static_cast<unsigned>(m_engine->queue.size()); }

void Loom::setLoomQueplying(int playing)
{
    if (playing == 0) m_engine->state.armed = false;
    m_engine->state.playing.store(playing != 0, std::memory_order_release);
    m_engine->wake();
}

int Loom::getLoomQueplying() const { return m_engine->state.playing.load(std::memory_order_acquire) ? 1 : 0; }

void Loom::loomPlayStart()
{
    m_engine->queue.drop();
    m_engine->state.run.fetch_add(1, std::memory_order_release);
    m_engine->state.armed.store(true, std::memory_order_release);
    m_engine->wake();
}

void Loom::ClrKeyTable() { m_engine->clearNotes(); }

void Loom::setLoomQueAlloff(int request)
{
    if (request != 0) m_engine->queue.drop();
    m_engine->setAllOff(request != 0);
    m_engine->wake();
}

int Loom::getLoomQueQlloff() const { return m_engine->allOff() ? 1 : 0; }

void Loom::setLoomQplaytime(std::uint32_t tick) { m_engine->state.position = tick; }
std::uint32_t Loom::getLoomQplaytime() const { return m_engine->state.position; }

void Loom::setLoomQplayend(std::uint32_t tick)
{
    m_engine->state.playEnd = tick;
    m_engine->wake();
}

void Loom::setLoomInnerTime(std::uint32_t ticks) { m_engine->state.innerTime = ticks; }
std::uint32_t Loom::getLoomInnerTime() const { return m_engine->state.innerTime; }
void Loom::setLoomLocating(int locating) { m_engine->state.locating = locating != 0; }

void Loom::setLoomPreCount(int preCount)
{
    m_engine->state.preCount.store(preCount != 0, std::memory_order_release);
    m_engine->wake();
}

void Loom::setLoomMidiTimerOfst(int milliseconds)
{
    m_engine->state.offset = milliseconds;
    m_engine->state.offsetToApply = milliseconds;
}

int Loom::getLoomMidiTimerOfst() const { return m_engine->state.offset; }
void Loom::setLoomMidiTimerAdjust(int millionths) { m_engine->tempo.setTrim(millionths); }
int Loom::getLoomMidiTimerAdjust() const { return m_engine->tempo.trim(); }

void Loom::setLoomMidiTempo(std::uint8_t high, std::uint16_t low)
{
    m_engine->tempo.setBase(std::uint32_t{high} << 16 | low);
}

void Loom::queTimeTic()
{
    m_engine->tempo.request();
    m_engine->wake();
}

int Loom::getLoomTempo() const { return m_engine->tempo.baseBeats(); }

int Loom::getLoomRealTempo() const
{
    const LoomState& state = m_engine->state;
    const int followed = state.followedBeats;
    return state.syncMode == 1 && followed > 0 ? followed : m_engine->tempo.realBeats();
}

void Loom::setLoomRelativeTempo(int thousandths) { m_engine->tempo.setRelative(thousandths); }
int Loom::getLoomRelativeTempo() const { return m_engine->tempo.relative(); }
void Loom::setLoomBeat1(std::uint32_t ticks) { m_engine->state.beatLength = ticks; }
std::uint32_t Loom::getLoomBeat1() const { return m_engine->state.beatLength; }
void Loom::setLoomMaxbeat(std::uint32_t ticks) { m_engine->state.barLength = ticks; }
std::uint32_t Loom::getLoomMaxbeat() const { return m_engine->state.barLength; }
void Loom::setLoomMbeat(std::uint32_t ticks) { m_engine->state.tickInBar = ticks; }
std::uint32_t Loom::getLoomMbeat() const { return m_engine->state.tickInBar; }

// Tracks

void Loom::setLoomTrkSw(int on, int track)
{
    m_engine->tracks.setOn(track, on != 0);
    if (on == 0) m_engine->wake();
}

int Loom::getLoomTrkSw(int track) const { return m_engine->tracks.on(track) ? 1 : 0; }
void Loom::setLoomTrkTrsp(int semitones, int track) { m_engine->tracks.setTransposition(track, semitones); }
int Loom::getLoomTrkTrsp(int track) const { return m_engine->tracks.transposition(track); }
void Loom::setLoomTrkTrspFlg(int flag, int track) { m_engine->tracks.setTransposed(track, flag != 0); }
int Loom::getLoomTrkTrspFlg(int track) const { return m_engine->tracks.transposed(track) ? 1 : 0; }
void Loom::setLoomgTransp(int semitones) { m_engine->tracks.setGlobalTransposition(semitones); }
int Loom::getLoomgTransp() const { return m_engine->tracks.globalTransposition(); }

// Recording and owners

void Loom::setLoomRecFlag(int on)
{
    m_engine->setRecording(on != 0);
    m_engine->wake();
}

void Loom::setLoomRecOwner(MessageTarget* owner) { m_engine->state.recordOwner = owner; }
void Loom::setLoomOwner(MessageTarget* owner) { m_engine->state.playOwner = owner; }
const LoomRingEntry* Loom::getLoomRecdata() const { return m_engine->recorded.entries(); }
const LoomRingEntry* Loom::getLoomBackMsg() const { return m_engine->played.entries(); }
std::uint16_t Loom::getLoomWrdpt() const { return m_engine->recorded.writeIndex(); }
std::uint16_t Loom::getLoomWbmpt() const { return m_engine->played.writeIndex(); }
void Loom::loomIncRrdpt() { m_engine->recorded.free(); }
void Loom::loomIncRbmpt() { m_engine->played.free(); }
int Loom::getLoomRecError() const { return m_engine->inputLost ? 1 : 0; }
void Loom::setLoomRecError(int flag) { m_engine->inputLost = flag != 0; }

void Loom::setLoomMetronome(int port, int channel, int note1, int note2, int velocity1, int velocity2)
{
    const auto byte = [](int value, int most) { return static_cast<std::uint8_t>(std::clamp(value, 0, most)); };
    m_engine->metronome.set({.port = byte(port, loomPorts),
                             .channel = byte(channel, 15),
                             .barKey = byte(note1, 127),
                             .beatKey = byte(note2, 127),
                             .barVelocity = byte(velocity1, 127),
                             .beatVelocity = byte(velocity2, 127)});
}

void Loom::setLoomMetroFlg(int on) { m_engine->metronome.setOn(on != 0); }

// Beside the contract

int Loom::getLoomRecFlag() const { return m_engine->recording() ? 1 : 0; }
std::uint16_t Loom::getLoomRrdpt() const { return m_engine->recorded.readIndex(); }

void Loom::setSendObserver(SendObserver* observer)
{
    if (!m_engine->running()) m_engine->setObserver(observer);
}

void Loom::setRtHook(RtHook hook)
{
    if (!m_engine->running()) m_engine->setRtHook(hook);
}

std::int64_t Loom::ticksPlayed() const { return m_engine->state.ticksPlayed; }
Nanos Loom::dueOfTick(std::int64_t ticks) const { return m_engine->dueOf(ticks); }

} // namespace tessaro
