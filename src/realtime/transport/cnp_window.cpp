// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/cnp_window.h"

#include "base/messages.h"
#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "core/ports/user.h"
#include "realtime/loom/loom.h"
#include "realtime/transport/realtime_messages.h"

#include <algorithm>

namespace tessaro {

namespace {
constexpr const char* section = "System";
constexpr const char* midiChaseKey = "MIDI Chase";
constexpr const char* viewChaseKey = "View Chase";
constexpr int largestTranspose = 127;
} // namespace

CnpObserver::~CnpObserver() = default;

CCnpWindow::CCnpWindow(const RecorderPorts& ports)
    : m_smc(ports.smc)
    , m_profile(ports.profile)
    , m_user(ports.user)
    , m_recorder(ports)
    , m_midiChase(m_profile.getInt(section, midiChaseKey, 0) != 0)
    , m_viewChase(m_profile.getInt(section, viewChaseKey, 1) != 0)
{
    m_smc.setTempoDisplay(this);
}

CCnpWindow::~CCnpWindow() { m_smc.setTempoDisplay(nullptr); }

void CCnpWindow::addView(MessageTarget* view) { m_views.push_back(view); }

void CCnpWindow::removeView(const MessageTarget* view) noexcept { std::erase(m_views, view); }

void CCnpWindow::tellViews(std::uint32_t message, std::uint32_t tick)
{
    if (!m_viewChase) return;
    const std::vector<MessageTarget*> views = m_views; // a view may leave meanwhile
    for (MessageTarget* view : views)
        if (std::find(m_views.begin(), m_views.end(), view) != m_views.end()) view->send({message, tick, 0});
}

void CCnpWindow::changed()
{
    if (m_observer) m_observer->stateChanged();
}

// Transport

void CCnpWindow::Start()
{
    if (!m_smc.song() || m_smc.running()) return;
    if (m_observer) m_observer->timerWanted(true);
    m_startTick = m_smc.smcGetPlayCount();
    m_smc.smcLocateQuiet(m_startTick, false);
    applyLoop();
    m_smc.smcPlayStart();
    m_shownTick = m_startTick;
    show(m_startTick);
    setPlayButton(true);
    tellViews(msg::locationJumped, m_startTick);
}

int CCnpWindow::Stop()
{
    if (m_syncMode == 1 || m_play || m_smc.running()) {
        m_smc.smcPlayStop();
        m_smc.smcRecStop();
    }
    if (m_countIn) show(m_smc.smcGetPlayCount());
    m_countIn.reset();
    setPlayButton(false);
    if (m_observer) m_observer->timerWanted(false);
    if (m_mainFrame) m_mainFrame->send({msg::playStopped, 0, 0});
    return 1;
}

void CCnpWindow::setPlayButton(bool on)
{
    if (m_play == on) return;
    m_play = on;
    changed();
}

void CCnpWindow::StopClicked() { Stop(); }

void CCnpWindow::FastForwardPressed() {}

void CCnpWindow::FastForwardReleased() {}

void CCnpWindow::Wind(int, WindStep) {}

void CCnpWindow::WindReleased() {}

// Recording

void CCnpWindow::ShortCutRECClicked()
{
    if (IsRecButton())
        RecStop();
    else if (m_mainFrame)
        m_recorder.arm(*m_mainFrame);
    changed();
}

void CCnpWindow::RecStop()
{
    m_recorder.end(loop());
    changed();
}

void CCnpWindow::received(const LoomRingEntry& entry) { m_recorder.received(entry); }

void CCnpWindow::recordError()
{
    Stop();
    m_user.message(TextId::midiReceiveError, MessageKind::error);
}

void CCnpWindow::SpaceKey()
{
    if (!m_smc.song()) return;
    if (m_play)
        Stop();
    else
        Start();
}

void CCnpWindow::ESCKey() { SetLocation(static_cast<long>(m_startTick)); }

void CCnpWindow::Top()
{
    if (!m_smc.song()) return;
    const bool played = m_play;
    if (played) Stop();
    locateAndShow(0);
    if (played) Start();
}

void CCnpWindow::End()
{
    if (!m_smc.song()) return;
    Stop();
    locateAndShow(m_smc.song()->GetTimeEnd());
}

// Location

void CCnpWindow::SetLocation(long tick)
{
    if (!m_smc.song()) return;
    const auto target = static_cast<std::uint32_t>(std::max(tick, 0L));
    const bool played = m_play;
    if (m_syncMode == 1 || played) {
        m_smc.smcPlayStop();
        m_smc.smcRecStop();
    }
    locateAndShow(target);
    if (!played) return;
    if (m_syncMode == 1) {
        m_smc.smcPlayStart();
    } else {
        setPlayButton(false);
        if (m_mainFrame) m_mainFrame->post(RealtimeMessages::resume());
    }
}

void CCnpWindow::Spp(long tick)
{
    if (m_smc.song()) locateAndShow(static_cast<std::uint32_t>(std::max(tick, 0L)));
}

void CCnpWindow::locateAndShow(std::uint32_t tick)
{
    if (m_observer) m_observer->busy(true);
    m_smc.smcLocate(tick, m_midiChase);
    if (m_observer) m_observer->busy(false);
    m_startTick = m_shownTick = m_smc.smcGetPlayCount();
    m_countIn.reset();
    applyLoop();
    show(m_startTick);
    tellViews(msg::locationJumped, m_startTick);
}

void CCnpWindow::show(std::uint32_t tick)
{
    m_location = tick;
    m_thinCount = 0;
    if (m_observer) m_observer->locationShown(tick);
}

void CCnpWindow::DrawLocation(const std::string& text)
{
    if (m_observer) m_observer->textShown(text);
}

void CCnpWindow::SetTop()
{
    m_loopStart = m_loopEnd = 0;
    m_loop = m_metronome = false;
    m_startTick = m_shownTick = 0;
    m_smc.loom().setLoomMetroFlg(0);
    applyLoop();
    SetTranspose(0);
    SetRelativeTempo(0);
    show(0);
    changed();
}

// The song may have wrapped since the last call, or be at the count-in still.
void CCnpWindow::timer()
{
    if (const std::optional<int> countIn = m_smc.countInShown(); countIn != m_countIn) {
        m_countIn = countIn;
        if (countIn) DrawLocation(std::to_string(*countIn));
    }
    const std::uint32_t tick = m_smc.smcGetPlayCount();
    if (tick > m_shownTick) {
        if (++m_thinCount >= m_thinTime) show(tick);
        tellViews(msg::playPosition, tick);
    } else if (tick < m_shownTick) {
        show(tick);
        tellViews(msg::locationJumped, m_loop ? m_loopStart : tick);
    }
    m_shownTick = tick;
    UpdateTempo();
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
    m_metronome = !m_metronome;
    m_smc.loom().setLoomMetroFlg(m_metronome);
    changed();
}

void CCnpWindow::ShortCutLocDClicked()
{
    if (m_observer && m_smc.song()) m_observer->locationWanted();
}

void CCnpWindow::SetSyncMode(unsigned mode)
{
    m_syncMode = mode;
    changed();
}

void CCnpWindow::SetTempo(int tempo)
{
    const int base = m_smc.loom().getLoomTempo();
    if (base > 0 && tempo > 0) SetRelativeTempo((long{tempo} * 1000 + base - 1) / base - 1000);
}

void CCnpWindow::SetRelativeTempo(long thousandths)
{
    m_smc.smcSetRelativeTempo(static_cast<int>(thousandths));
    UpdateTempo();
}

void CCnpWindow::UpdateTempo()
{
    const int tempo = m_smc.loom().getLoomRealTempo();
    if (tempo == m_tempo) return;
    m_tempo = tempo;
    if (m_observer) m_observer->tempoShown(tempo);
}

void CCnpWindow::SetTranspose(int semitones)
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
    m_viewChase = on;
    m_profile.setInt(section, viewChaseKey, on);
}

} // namespace tessaro
