// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/smc.h"

#include "base/messages.h"
#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/loom/loom.h"
#include "realtime/play/beat_marker.h"
#include "realtime/play/master_setup.h"
#include "realtime/play/output_filter.h"
#include "realtime/play/tempo_setting.h"
#include "realtime/rec/record_settings.h"

#include <algorithm>
#include <cassert>

namespace tessaro {

namespace {
constexpr std::chrono::milliseconds feederInterval{10};
constexpr std::chrono::milliseconds countInInterval{1};
constexpr int internalSync = 0;
constexpr int midiSync = 1;
} // namespace

TempoDisplay::~TempoDisplay() = default;

Smc::Smc(const Surroundings& around)
    : m_loom(around.loom)
    , m_clock(around.clock)
    , m_profile(around.profile)
    , m_wsIni(around.wsIni)
    , m_user(around.user)
    , m_strings(around.strings)
    , m_sender(m_loom, m_clock)
    , m_owners(m_loom, m_clock)
    , m_recordThread(m_loom, m_clock, m_owners)
    , m_feeder(m_loom, m_clock, m_tracks, m_sender, m_echo, m_joins)
{
}

Smc::~Smc()
{
    m_feederTask.reset();
    stopEngine();
}

void Smc::setMainWindow(MessageTarget* window)
{
    m_mainWindow = window;
    m_feeder.setMainWindow(window);
    m_loom.setLoomMainWnd(window);
}

void Smc::setJoins(const PlayJoins& joins)
{
    m_joins = joins;
    m_feeder.setJoins(joins);
}

int Smc::systemInt(const char* key, int otherwise) const { return m_profile.getInt("System", key, otherwise); }

// Song and tracks

void Smc::smcBindSong(CEditor* editor)
{
    if (running()) smcPlayStop();
    m_loom.setLoomInit();
    m_editor = editor;
    m_joins.styles->bind(editor);
    m_loom.setLoomQplaytime(0);
    if (!editor) {
        m_feeder.bind(nullptr, {});
        return;
    }
    smcInitPlay(true);
    m_joins.ottavas->locate(0);
    m_owners.clear();
    smcSendSampleSysex();
}

void Smc::smcInitPlay(bool full)
{
    if (!m_editor) return;
    for (int track = 0; full && track < trackCount; ++track) {
        const CTrk* trk = m_editor->song().trk(track);
        if (!trk) continue;
        m_loom.setLoomTrkSw(1, track);
        takeTrack(track, *trk);
    }
    m_loom.setLoomInLongmsg(0);
    m_loom.setLoomInit();
    m_feeder.bind(m_editor, leftOut());

    _EDT_TIMEINFO head;
    m_editor->GetHeadTimeInfo(head);
    if (full) {
        m_loom.setLoomRelativeTempo(0);
        m_loom.setLoomgTransp(0);
    }
    setTempo(m_loom, head.tempo);

    _EDT_MEASINFO first;
    m_editor->GetMeasInfo(1, first);
    setSignature(m_loom, first.num, first.den, 0);
}

// The feeder never reads a block that is being filled.
LeftOut Smc::leftOut() const
{
    LeftOut out;
    if (!m_take) return out;
    const bool inTime = m_take->recordsInTime();
    const bool muted = inTime && m_wsIni.getInt("RealtimeRec", "Mute", 0) != 0;
    const bool armed = inTime && RecordSettings::read(m_profile).realMode == RealRecMode::replace;
    for (std::size_t track = 0; track < out.takeBlks.size(); ++track) {
        CTrk* trk = m_editor->song().trk(static_cast<int>(track));
        if (!trk) continue;
        out.tracks[track] = (muted && trk->GetMute()) || (armed && trk->GetRec());
        out.takeBlks[track] = m_take->GetRecBlk(trk);
    }
    return out;
}

void Smc::takeTrack(int track, const CTrk& trk)
{
    m_tracks.setPort(track, trk.GetPort());
    m_tracks.setChannel(track, trk.GetCh());
    m_loom.setLoomTrkTrsp(trk.GetTrans(), track);
    m_loom.setLoomTrkTrspFlg(trk.GetTransEnable(), track);
}

void Smc::reloadTracks()
{
    if (!m_editor) return;
    for (int track = 0; track < trackCount; ++track)
        if (const CTrk* trk = m_editor->song().trk(track)) takeTrack(track, *trk);
}

// Locating

void Smc::smcLocate(std::uint32_t tick, bool chase)
{
    locate(tick, chase);
    if (m_loom.getLoomSyncMode() == internalSync && m_realTimeMessages) {
        const std::uint32_t sixteenths = tick / 120;
        m_sender.shortMessage(0, que::songPosition, sixteenths & 0x7FU, (sixteenths >> 7U) & 0x7FU);
    }
    if (m_tempoDisplay) m_tempoDisplay->UpdateTempo();
}

void Smc::smcLocateQuiet(std::uint32_t tick, bool chase)
{
    locate(tick, chase);
    if (m_tempoDisplay) m_tempoDisplay->UpdateTempo();
}

void Smc::locate(std::uint32_t tick, bool chase)
{
    if (!m_editor) return;
    assert(!running());
    m_joins.styles->resetChord();
    smcInitPlay(false);

    m_loom.setLoomLocating(1);
    const CTrk* master = m_editor->song().trk(0);
    SignatureAt signature;
    if (master) signature = sendMaster(*master, std::max(tick, 1U), m_sender, m_tracks, *m_joins.styles);
    if (tick > 0) {
        if (m_tempoDisplay) m_tempoDisplay->UpdateTempo();
        if (chase) Chase{m_sender, m_owners, m_tracks, m_ports}.run(m_editor->song(), tick);
        setSignature(m_loom, signature.numerator, signature.denominatorPower, tick - signature.tick);
    }
    m_feeder.locate(tick);
    m_loom.setLoomLocating(0);
    m_loom.setLoomQplaytime(tick);

    _EDT_TIMEINFO info;
    m_editor->GetTimeInfo(tick, info);
    const std::uint32_t styleTempo = m_joins.styles->locate(tick, chase);
    const bool filtered = m_tracks.filter(0) & filter::tempo;
    setTempo(m_loom, styleTempo != 0 && !filtered ? styleTempo : info.tempo);
}

// Transport

bool Smc::smcSetLoopStart(std::uint32_t tick)
{
    m_feeder.setLoopStart(tick);
    return m_feeder.loopActive();
}

void Smc::smcSetLoopEnd(std::uint32_t tick) { m_feeder.setLoopEnd(tick); }

void Smc::smcSetPreCount(bool on)
{
    if (on && m_loom.getLoomSyncMode() == midiSync) return;
    m_preCount = on;
    m_loom.setLoomPreCount(on);
}

int Smc::smcSetRelativeTempo(int thousandths)
{
    m_loom.setLoomRelativeTempo(thousandths);
    m_loom.queTimeTic();
    return m_loom.getLoomRelativeTempo();
}

void Smc::smcPlayStart()
{
    if (!m_editor || running()) return;
    const int sync = m_loom.getLoomSyncMode();
    std::uint32_t pos = smcGetPlayCount();
    const int bars = systemInt("Count In Meas", 0);
    if (m_preCount && (bars < 1 || sync != internalSync || countInPlays(pos))) smcSetPreCount(false);

    setPlayEnd(pos);
    m_joins.ottavas->locate(pos);
    m_waveSync = false;
    if (sync == internalSync) {
        m_loom.setLoomMidiTimerAdjust(m_wsIni.getInt("WaveSync", "Adjust", 0));
        m_waveSync = m_wsIni.getInt("WaveSync", "Auto", 1) != 0;
    }
    m_loom.setLoomMidiTimerOfst(0);
    const bool waves = sync != midiSync && m_joins.waves->any();
    if (waves) m_joins.waves->prepare(*m_editor, m_editor->TimeToMsecond(pos));

    m_loom.ClrKeyTable();
    m_loom.loomPlayStart();
    m_loom.setLoomInnerTime(0);
    m_feeder.beginRun(
        {static_cast<unsigned>(std::max(m_wsIni.getInt("Midi Sync", "Repeat Interval", 0), 0)), m_realTimeMessages});
    if (m_preCount) m_countIn.queue(m_feeder.queue(), *m_editor, pos, static_cast<unsigned>(bars));
    m_feeder.feed(Feeder::leadTicks);
    if (m_preCount) m_countIn.begin(m_loom.getLoomQueCount());

    if (sync != midiSync) m_loom.setLoomQueplying(1);
    if (waves && !m_preCount) m_joins.waves->restart();
    startFeeder();
}

// Whether there is song enough before `pos` to play it in place of the clicks; then `pos` is where that starts.
bool Smc::countInPlays(std::uint32_t& pos)
{
    if (systemInt("Count In Play", 0) != 1) return false;
    const auto bars = static_cast<std::uint32_t>(systemInt("Count In Meas", 0));
    _EDT_MEAS place;
    m_editor->TimeToMeas(pos, place);
    place.meas -= std::min(place.meas, 1U);
    if (place.meas < bars) return false;
    pos = m_editor->MeasToTime({place.meas - bars, 0, 0});
    const std::uint32_t loopStart = m_feeder.loopStart();
    const std::uint32_t loopEnd = m_feeder.loopEnd();
    smcLocate(pos, true);
    smcSetLoopStart(loopStart);
    smcSetLoopEnd(loopEnd);
    return true;
}

void Smc::setPlayEnd(std::uint32_t pos)
{
    // An open editing step is a take, and a take has no end of its own.
    if (m_editor->IsUndoOpen()) {
        m_loom.setLoomQplayend(0);
        m_joins.repeats->Reset();
        return;
    }
    _EDT_MEASINFO last;
    m_editor->GetMeasInfo(0, last);
    m_loom.setLoomQplayend(last.measClock * 3 + m_editor->GetTimeEnd());
    m_joins.repeats->Init(*m_editor, pos);
}

void Smc::startFeeder()
{
    m_feederTask = m_clock.start(Urgency::feeder, [this](Nanos now) { return feederStep(now); });
}

Nanos Smc::feederStep(Nanos now)
{
    if (m_countIn.shown()) {
        if (m_countIn.follow(m_loom.getLoomQueCount())) return now + countInInterval;
        m_loom.setLoomPreCount(0);
        m_loom.setLoomInnerTime(0);
        m_joins.waves->restart();
    }
    m_feeder.pass();
    if (m_waveSync && m_joins.waves->any()) m_joins.waves->sync(m_editor->TimeToMsecond(smcGetPlayCount()));
    return now + feederInterval;
}

void Smc::smcPlayStop()
{
    smcSetPreCount(false);
    m_joins.waves->reset();
    closeMedia(m_mainWindow);

    m_loom.setLoomQueplying(0);
    m_loom.setLoomQueAlloff(1);
    for (int i = 0; i < 10 && m_loom.getLoomQueQlloff(); ++i) m_sender.sleep(1);
    m_joins.waves->close();
    if (m_mainWindow) m_mainWindow->send({msg::allSoundOff, 0, 0});

    m_feederTask.reset();
    m_countIn.clear();
    m_joins.repeats->Reset();
    m_joins.ottavas->locate(0);
    m_loom.setLoomQueplying(0);
}

std::optional<int> Smc::countInShown() const noexcept { return m_countIn.shown(); }

std::uint32_t Smc::smcGetPlayCount() const { return m_loom.getLoomQplaytime(); }

bool Smc::smcPlayStatus() const { return m_loom.getLoomQueplying() != 0; }

void Smc::startWaves()
{
    if (!m_editor || !m_joins.waves->any()) return;
    m_loom.setLoomMidiTimerOfst(0);
    m_joins.waves->prepare(*m_editor, m_editor->TimeToMsecond(smcGetPlayCount()));
    m_joins.waves->restart();
}

void Smc::stopWaves()
{
    m_joins.waves->reset();
    closeMedia(m_mainWindow);
}

} // namespace tessaro
