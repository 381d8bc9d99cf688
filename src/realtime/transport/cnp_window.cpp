// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/cnp_window.h"

#include "base/messages.h"
#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "core/ports/user.h"
#include "realtime/loom/loom.h"
#include "realtime/transport/realtime_messages.h"

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {
constexpr const char* section = "System";
constexpr const char* midiChaseKey = "MIDI Chase";
constexpr const char* viewChaseKey = "View Chase";
constexpr int largestTranspose = 127;
constexpr int midiSync = 1;
constexpr int stopAttempts = 10;
} // namespace

CnpObserver::~CnpObserver() = default;

CCnpWindow::CCnpWindow(const RecorderPorts& ports)
    : m_smc(ports.smc)
    , m_profile(ports.profile)
    , m_user(ports.user)
    , m_recorder(ports)
    , m_tempoBox(m_smc)
    , m_midiChase(m_profile.getInt(section, midiChaseKey, 0) != 0)
{
    m_locationBox.setViewsFollow(m_profile.getInt(section, viewChaseKey, 1) != 0);
    m_smc.setTempoDisplay(this);
    m_smc.setTakeInfo(&m_recorder);
}

CCnpWindow::~CCnpWindow()
{
    m_smc.setTakeInfo(nullptr);
    m_smc.setTempoDisplay(nullptr);
}

void CCnpWindow::setObserver(CnpObserver* observer) noexcept
{
    m_observer = observer;
    m_locationBox.setObserver(observer);
    m_tempoBox.setObserver(observer);
}

void CCnpWindow::changed()
{
    if (m_observer) m_observer->stateChanged();
}

bool CCnpWindow::hasSong()
{
    if (m_smc.song()) return true;
    m_winding.forget();
    changed();
    return false;
}

bool CCnpWindow::inMidiSync() const { return m_smc.loom().getLoomSyncMode() == midiSync; }

void CCnpWindow::wantTimer(bool on)
{
    if (m_timerOn == on) return;
    m_timerOn = on;
    if (m_observer) m_observer->timerWanted(on);
}

// Transport

void CCnpWindow::Start()
{
    WindReleased();
    if (!hasSong() || steps()) return;
    if (m_smc.running()) { // by fast forward, of which no more comes than the tempo
        m_fastPlay = false;
        m_play = true;
        changed();
        return;
    }
    run(Entry::countIn);
}

// The song stands.
void CCnpWindow::run(Entry entry)
{
    m_resumes = false;
    m_startTick = m_smc.smcGetPlayCount();
    const bool recording = IsRecButton();
    if (recording && !m_recorder.begin(m_startTick, loop())) {
        Stop();
        return;
    }
    m_play = true;
    wantTimer(true);
    m_smc.smcLocateQuiet(m_startTick, false);
    applyLoop();
    if (!steps()) {
        if (recording && entry == Entry::countIn) m_smc.smcSetPreCount(true);
        m_smc.smcPlayStart();
    }
    const std::uint32_t at = m_smc.smcGetPlayCount(); // before the start when the song itself is the count-in
    m_reachedTake = at >= m_startTick;
    changed();
    m_locationBox.jumpTo(at);
}

int CCnpWindow::Stop()
{
    WindReleased();
    endFastForward();
    m_play = m_resumes = false;
    if (inMidiSync() || m_smc.running()) {
        m_smc.smcPlayStop();
        m_smc.smcRecStop();
    }
    endTake();
    wantTimer(false);
    // Another machine's Start may have come in between.
    for (int i = 0; i < stopAttempts && m_smc.smcPlayStatus(); ++i) m_smc.smcPlayStop();
    m_locationBox.show(m_smc.smcGetPlayCount());
    changed();
    if (m_mainFrame) m_mainFrame->send({msg::playStopped, 0, 0});
    return 1;
}

void CCnpWindow::StopClicked()
{
    const bool take = records() && !steps();
    Stop();
    if (take && !plays()) SetLocation(static_cast<long>(m_startTick));
}

void CCnpWindow::SpaceKey()
{
    if (!hasSong()) return;
    if (!m_play)
        Start();
    else if (steps())
        m_recorder.rest();
    else
        Stop();
}

void CCnpWindow::ESCKey()
{
    if (!hasSong()) return;
    if (!plays()) Stop();
    SetLocation(static_cast<long>(m_startTick));
}

void CCnpWindow::Top()
{
    WindReleased();
    if (!hasSong()) return;
    const bool played = m_play && !steps();
    if (plays() || records()) Stop();
    locateAndShow(0);
    if (played) Start();
}

void CCnpWindow::End()
{
    if (!hasSong()) return;
    Stop();
    locateAndShow(m_smc.song()->GetTimeEnd());
}

void CCnpWindow::playOn()
{
    m_smc.smcLocateQuiet(m_smc.smcGetPlayCount(), m_midiChase);
    applyLoop();
    m_smc.smcPlayStart();
}

// Held buttons

void CCnpWindow::FastForwardPressed()
{
    WindReleased();
    if (!hasSong() || GetFastForward()) return;
    if (!IsRecButton()) {
        m_fastPlay = !plays();
        m_tempoBox.beginFast();
        if (m_fastPlay) {
            m_smc.smcLocateQuiet(m_smc.smcGetPlayCount(), false);
            applyLoop();
            m_smc.smcPlayStart();
            wantTimer(true);
        }
    }
    changed();
}

void CCnpWindow::FastForwardReleased()
{
    const bool played = m_fastPlay;
    endFastForward();
    if (played)
        Stop();
    else
        changed();
}

void CCnpWindow::endFastForward()
{
    m_fastPlay = false;
    if (GetFastForward()) m_tempoBox.endFast();
}

void CCnpWindow::Wind(int direction, WindStep step)
{
    if (!hasSong()) return;
    if (plays()) Stop();
    const std::uint32_t from = steps() ? m_recorder.stepTick() : GetLocation();
    const std::uint32_t to = m_winding.repeat(*m_smc.song(), from, direction, step);
    if (steps()) m_recorder.setStepTick(to);
    m_locationBox.jumpTo(to);
}

void CCnpWindow::WindReleased()
{
    if (m_winding.held() && hasSong()) locateAndShow(m_winding.release(*m_smc.song(), GetLocation()));
}

// Recording

void CCnpWindow::ShortCutRECClicked()
{
    WindReleased();
    if (!hasSong()) return;
    if (IsRecButton()) {
        RecStop();
        return;
    }
    if (GetFastForward()) FastForwardReleased();
    if (m_mainFrame && m_recorder.arm(*m_mainFrame) && m_play) {
        m_smc.smcPlayStop();
        run(Entry::atOnce);
    }
    changed();
}

void CCnpWindow::RecStop()
{
    if (!IsRecButton()) return;
    if (steps()) {
        Stop();
        return;
    }
    const bool played = m_smc.running();
    if (played) m_smc.smcPlayStop(); // what plays on reads the take
    endTake();
    if (played) playOn();
    changed();
}

void CCnpWindow::endTake()
{
    if (!IsRecButton()) return;
    m_endingTake = true;
    m_recorder.end(loop());
    m_endingTake = false;
    m_smc.takeEcho().clear();
}

void CCnpWindow::received(const LoomRingEntry& entry) { m_recorder.received(entry); }

void CCnpWindow::recordError()
{
    if (!plays() && !IsRecButton()) return; // of a busy time more than one comes
    StopClicked();
    m_user.message(TextId::midiReceiveError, MessageKind::error);
}

// Location

void CCnpWindow::SetLocation(long tick)
{
    m_winding.forget();
    if (!hasSong()) return;
    if (GetFastForward()) FastForwardReleased();
    if (inMidiSync() && steps()) Stop(); // there, a new location ends whatever is recorded
    const bool played = m_play && !steps();
    if (inMidiSync() || plays()) {
        m_smc.smcPlayStop();
        m_smc.smcRecStop();
        endTake();
    }
    locateAndShow(static_cast<std::uint32_t>(std::max(tick, 0L)));
    m_resumes = played;
    if (played && (inMidiSync() || !m_mainFrame || !m_mainFrame->post(RealtimeMessages::resume()))) Resume();
    changed();
}

void CCnpWindow::Resume()
{
    if (m_resumes && !m_smc.running()) run(Entry::atOnce);
}

void CCnpWindow::Spp(long tick)
{
    if (!hasSong()) return;
    const auto target = static_cast<std::uint32_t>(std::max(tick, 0L));
    if (target != m_smc.smcGetPlayCount()) endTake(); // a take that waits there for its start waits on
    locateAndShow(target);
    changed();
}

void CCnpWindow::locateAndShow(std::uint32_t tick)
{
    if (m_observer) m_observer->busy(true);
    m_smc.smcLocate(tick, m_midiChase);
    if (m_observer) m_observer->busy(false);
    m_startTick = m_smc.smcGetPlayCount();
    if (steps()) m_recorder.setStepTick(m_startTick);
    applyLoop();
    m_locationBox.jumpTo(m_startTick);
}

void CCnpWindow::DrawLocation(const std::string& text)
{
    if (m_observer) m_observer->textShown(text);
}

void CCnpWindow::SetTop()
{
    m_winding.forget();
    if (goesOn() || IsRecButton()) Stop();
    m_loopStart = m_loopEnd = 0;
    m_loop = m_metronome = false;
    m_startTick = 0;
    m_smc.loom().setLoomMetroFlg(0);
    applyLoop();
    applyTranspose(0);
    m_tempoBox.setRelative(0);
    m_locationBox.show(0);
    changed();
}

// The song may have wrapped since the last call, or be at the count-in still.
void CCnpWindow::timer()
{
    if (m_winding.held()) return;
    if (goesOn() && !plays() && !steps()) {
        if (records() || !isBeingEdited()) Stop(); // an edit that failed has stopped it for good
        return;
    }
    m_locationBox.showCountIn(m_smc.countInShown());
    const std::uint32_t tick = steps() ? m_recorder.stepTick() : m_smc.smcGetPlayCount();
    m_locationBox.follow(tick, m_loop ? m_loopStart : tick);
    UpdateTempo();
    if (records() && !steps()) passTake(tick);
}

bool CCnpWindow::isBeingEdited() const
{
    return m_smc.song() && (m_smc.song()->IsUndoOpen() || m_smc.song()->IsPrgDlg());
}

// What comes before the take's beginning is the song as its own count-in.
void CCnpWindow::passTake(std::uint32_t tick)
{
    m_reachedTake = m_reachedTake || tick >= m_startTick;
    if (m_reachedTake) m_recorder.passed(tick, loop());
}

// Loop

bool CCnpWindow::GetLoop(std::uint32_t& start, std::uint32_t& end) const noexcept
{
    const bool song = m_smc.song() != nullptr;
    start = song ? m_loopStart : 0;
    end = song ? m_loopEnd : 0;
    return song && m_loop;
}

void CCnpWindow::SetLoop(std::uint32_t start, std::uint32_t end)
{
    if (!hasSong()) return;
    m_loopStart = start;
    m_loopEnd = end;
    applyLoop();
    changed();
}

void CCnpWindow::applyLoop()
{
    m_smc.smcSetLoopStart(m_loopStart);
    m_smc.smcSetLoopEnd(m_loop ? m_loopEnd : m_loopStart);
}

void CCnpWindow::ShortCutLoopClicked()
{
    m_loop = m_smc.song() && !m_loop;
    applyLoop();
    changed();
}

// Boxes and switches

void CCnpWindow::ShortCutMETRONOMEClicked()
{
    m_metronome = m_smc.song() && !m_metronome;
    m_smc.loom().setLoomMetroFlg(m_metronome);
    changed();
}

void CCnpWindow::ShortCutLocDClicked()
{
    if (hasSong() && m_observer) m_observer->locationWanted();
}

void CCnpWindow::SetSyncMode(unsigned mode)
{
    m_syncMode = mode;
    changed();
}

void CCnpWindow::SetTempo(int tempo)
{
    if (hasSong()) m_tempoBox.wish(tempo);
}

void CCnpWindow::SetRelativeTempo(long thousandths)
{
    if (hasSong()) m_tempoBox.setRelative(thousandths);
}

void CCnpWindow::SetTranspose(int semitones)
{
    if (hasSong()) applyTranspose(semitones);
}

void CCnpWindow::applyTranspose(int semitones)
{
    m_transpose = std::clamp(semitones, -largestTranspose, largestTranspose);
    m_smc.loom().setLoomgTransp(m_transpose);
    changed();
}

void CCnpWindow::SetMIDIChase(bool on)
{
    m_midiChase = on;
    m_profile.setInt(section, midiChaseKey, on);
}

void CCnpWindow::SetViewChase(bool on)
{
    m_locationBox.setViewsFollow(on);
    m_profile.setInt(section, viewChaseKey, on);
}

} // namespace tessaro
