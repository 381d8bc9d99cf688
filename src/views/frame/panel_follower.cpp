// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/panel_follower.h"

#include "core/doc/tr9doc.h"
#include "realtime/loom/loom.h"
#include "views/frame/editor_windows.h"
#include "views/frame/frame_actions.h"
#include "views/frame/frame_parts.h"
#include "views/frame/status_line.h"
#include "views/text/ui_text.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/transpose_text.h"
#include "views/transport/location_text.h"
#include "views/transport/transport_bar.h"
#include "views/widgets/number_field.h"

#include <QApplication>

namespace tessaro {
namespace {

constexpr int panelInterval = 100; // ms
constexpr int followInterval = 33;

RecordButton::State buttonState(RecState state)
{
    switch (state) {
    case RecState::armed: return RecordButton::State::armed;
    case RecState::recording: return RecordButton::State::recording;
    default: return RecordButton::State::off;
    }
}

/// "+12.5 %"; nothing for 0.
QString relativeText(int thousandths)
{
    if (thousandths == 0) return {};
    return QStringLiteral("%1%2 %")
        .arg(thousandths > 0 ? QStringLiteral("+") : QString())
        .arg(thousandths / 10.0, 0, 'f', 1);
}

} // namespace

PanelFollower::PanelFollower(const FrameParts& parts, const Places& places) : m_parts(parts), m_places(places)
{
    QObject::connect(&m_panelTimer, &QTimer::timeout, [this] { m_parts.panel.timer(); });
    QObject::connect(&m_followTimer, &QTimer::timeout, [this] { follow(static_cast<int>(m_sinceFollow.restart())); });
    m_parts.panel.setObserver(this);
}

PanelFollower::~PanelFollower() { m_parts.panel.setObserver(nullptr); }

const CEditor& PanelFollower::song() const { return m_parts.document.GetEditor(); }

void PanelFollower::refresh()
{
    stateChanged();
    if (!m_countingIn) showPosition(m_parts.panel.GetLocation(), false);
}

// What the panel tells

void PanelFollower::stateChanged()
{
    CCnpWindow& panel = m_parts.panel;
    FrameActions& actions = m_places.actions;
    actions.play.setChecked(panel.GetPlayBtn());
    actions.record.setChecked(panel.IsRecButton());
    actions.fastForward.setChecked(panel.GetFastForward());
    actions.metronome.setChecked(panel.GetMetronome());
    actions.midiChase.setChecked(panel.GetMIDIChase());
    actions.viewChase.setChecked(panel.GetViewChase());
    actions.midiSync.setChecked(panel.GetSyncMode() != 0);
    actions.tempoReset.setEnabled(m_parts.smc.loom().getLoomRelativeTempo() != 0);
    m_places.bar.setRecordState(buttonState(panel.recorder().state()));
    m_places.bar.setTranspose(transposeText(panel.GetTranspose()));
    showLoop();
    m_places.tracks.panelChanged();
    tellRecState();
    if (onState) onState();
}

void PanelFollower::showLoop()
{
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    m_places.actions.loop.setChecked(m_parts.panel.GetLoop(start, end));
    const auto place = [this](std::uint32_t tick) {
        _EDT_MEAS at;
        song().TimeToMeas(tick, at);
        return utf8Text(locationText(at));
    };
    m_places.bar.setLoop(place(start), place(end));
}

/// In the status line, whenever recording goes on a step.
void PanelFollower::tellRecState()
{
    const RecState state = m_parts.panel.recorder().state();
    if (state == m_recState) return;
    m_recState = state;
    const bool steps = m_parts.panel.IsStepRec();
    const auto sentence = [&] {
        switch (state) {
        case RecState::armed: return m_parts.text(TextId::newsArmed);
        case RecState::recording: return m_parts.text(steps ? TextId::newsStepInput : TextId::newsRecording);
        default: return QString();
        }
    };
    m_places.status.setNews(sentence());
}

void PanelFollower::locationShown(std::uint32_t tick)
{
    m_countingIn = false;
    showPosition(tick, true);
}

void PanelFollower::textShown(const std::string& text)
{
    m_countingIn = true;
    m_places.bar.setCountIn(utf8Text(text));
}

void PanelFollower::tempoShown(int)
{
    m_places.actions.tempoReset.setEnabled(m_parts.smc.loom().getLoomRelativeTempo() != 0);
    showTempo(m_parts.panel.GetLocation());
}

void PanelFollower::locationWanted() { m_places.bar.locationField().edit(); }

void PanelFollower::showPosition(std::uint32_t tick, bool turnPages)
{
    _EDT_MEAS place;
    _EDT_MEASINFO measure;
    song().TimeToMeas(tick, place);
    song().GetMeasInfo(place.meas, measure);
    m_places.bar.setLocation(utf8Text(locationText(place)));
    m_places.bar.setClock(utf8Text(clockText(song().TimeToMsecond(tick))));
    m_places.bar.setSignature(utf8Text(signatureText(measure.num, measure.den)));
    showTempo(tick);
    m_places.windows.setPosition(tick, turnPages && m_parts.panel.GetViewChase());
}

/// The song's own tempo to the hundredth; a changed one in the whole beats that it was changed by.
void PanelFollower::showTempo(std::uint32_t tick)
{
    const int relative = m_parts.smc.loom().getLoomRelativeTempo();
    _EDT_TIMEINFO own;
    song().GetTimeInfo(tick, own);
    m_places.bar.setTempo(relative == 0 ? utf8Text(tempoText(own.tempo)) : QString::number(m_parts.panel.GetTempo()),
                          relativeText(relative));
}

void PanelFollower::busy(bool on)
{
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

// While the song plays

void PanelFollower::timerWanted(bool on)
{
    if (on) {
        m_places.tracks.startLights(m_parts.smc.smcGetPlayCount());
        m_sinceFollow.start();
        m_panelTimer.start(panelInterval);
        m_followTimer.start(followInterval);
    } else {
        m_panelTimer.stop();
        m_followTimer.stop();
        m_places.tracks.clearLights();
    }
}

void PanelFollower::follow(int milliseconds)
{
    if (m_places.status.busy() || m_countingIn || m_parts.smc.countInShown()) return;
    const std::uint32_t now = m_parts.panel.IsStepRec() ? m_parts.panel.GetLocation() : m_parts.smc.smcGetPlayCount();
    showPosition(now, true);
    m_places.tracks.followPlay(now, milliseconds);
}

} // namespace tessaro
