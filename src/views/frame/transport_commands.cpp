// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/transport_commands.h"

#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "realtime/transport/cnp_window.h"
#include "views/frame/frame_actions.h"
#include "views/frame/frame_parts.h"
#include "views/setup/position_scale.h"
#include "views/transport/transport_bar.h"
#include "views/widgets/number_field.h"

#include <cmath>
#include <cstdlib>

namespace tessaro {

std::optional<int> typedTempo(const QString& text)
{
    bool fine = false;
    const double tempo = QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&fine);
    if (!fine || !(tempo >= 1 && tempo < 1000)) return std::nullopt;
    return static_cast<int>(std::lround(tempo));
}

TransportCommands::TransportCommands(const FrameParts& parts, FrameActions& actions, TransportBar& bar)
    : m_parts(parts)
    , m_actions(actions)
{
    connectButtons();
    connectBoxes(bar);
}

CCnpWindow& TransportCommands::panel() const { return m_parts.panel; }
CEditor& TransportCommands::song() const { return m_parts.document.GetEditor(); }

void TransportCommands::connectButtons()
{
    const auto on = [this](QAction& action, auto work) {
        QObject::connect(&action, &QAction::triggered, [this, work] {
            work();
            onDone();
        });
    };
    CCnpWindow& panel = m_parts.panel;
    on(m_actions.play, [&panel] { panel.SpaceKey(); });
    on(m_actions.stop, [&panel] { panel.StopClicked(); });
    on(m_actions.record, [&panel] { panel.ShortCutRECClicked(); });
    on(m_actions.top, [&panel] { panel.ShortCutTOPClicked(); });
    on(m_actions.end, [&panel] { panel.End(); });
    on(m_actions.back, [&panel] { panel.ESCKey(); });
    on(m_actions.goTo, [&panel] { panel.ShortCutLocDClicked(); });
    on(m_actions.tempoUp, [&panel] { panel.TempoUp(); });
    on(m_actions.tempoDown, [&panel] { panel.TempoDown(); });
    on(m_actions.tempoReset, [&panel] { panel.TempoReset(); });
    on(m_actions.transposeUp, [&panel] { panel.TransposeUp(); });
    on(m_actions.transposeDown, [&panel] { panel.TransposeDown(); });
    on(m_actions.loop, [this] { toggleLoop(); });
    on(m_actions.loopTrack, [this] { loopBlks(); });
    on(m_actions.metronome, [&panel] { panel.ShortCutMETRONOMEClicked(); });
    on(m_actions.midiChase, [&panel] { panel.SetMIDIChase(!panel.GetMIDIChase()); });
    on(m_actions.viewChase, [&panel] { panel.SetViewChase(!panel.GetViewChase()); });
    on(m_actions.midiSync, [this, &panel] { setMidiSync(panel.GetSyncMode() == 0); });

    const auto winds = [&](HeldAction& action, int direction) {
        action.onHold = [&panel, direction](Qt::KeyboardModifiers keys) {
            const WindStep step = keys & Qt::ControlModifier ? WindStep::faster
                                : keys & Qt::ShiftModifier   ? WindStep::bar
                                                             : WindStep::beat;
            panel.Wind(direction, step);
        };
        action.onRelease = [&panel] { panel.WindReleased(); };
        on(action, [&action] {
            action.press({});
            action.release();
        });
    };
    winds(m_actions.rewind, -1);
    winds(m_actions.forward, 1);
    m_actions.fastForward.onHold = [&panel](Qt::KeyboardModifiers) { panel.FastForwardPressed(); };
    m_actions.fastForward.onRelease = [&panel] { panel.FastForwardReleased(); };
    on(m_actions.fastForward, [&panel] { // from the menu it lasts until it is chosen again
        panel.GetFastForward() ? panel.FastForwardReleased() : panel.FastForwardPressed();
    });
}

void TransportCommands::connectBoxes(TransportBar& bar)
{
    bar.locationField().onTyped = [this](const QString& text) {
        const auto tick = typedTick(text);
        if (tick) locate(*tick);
        return tick.has_value();
    };
    bar.locationField().onTurned = [this](int beats) { turnLocation(beats); };
    bar.tempoField().onTyped = [this](const QString& text) {
        const auto tempo = typedTempo(text);
        if (tempo) panel().SetTempo(*tempo);
        return tempo.has_value();
    };
    bar.tempoField().onTurned = [this](int steps) { panel().SetTempo(panel().GetTempo() + steps); };
    bar.transposeField().onTyped = [this](const QString& text) {
        bool fine = false;
        const int semitones = text.toInt(&fine);
        if (fine) panel().SetTranspose(semitones);
        return fine;
    };
    bar.transposeField().onTurned = [this](int steps) { panel().SetTranspose(panel().GetTranspose() + steps); };
    connectLoop(bar.loopStartField(), true);
    connectLoop(bar.loopEndField(), false);
}

void TransportCommands::connectLoop(NumberField& field, bool isStart)
{
    const auto set = [this, isStart](auto next) {
        PushedRange loop;
        panel().GetLoop(loop.start, loop.end);
        if (isStart)
            loop.setStart(next(loop.start));
        else
            loop.setEnd(next(loop.end));
        panel().SetLoop(loop.start, loop.end);
    };
    field.onTyped = [this, set](const QString& text) {
        const auto tick = typedTick(text);
        if (tick) set([&](std::uint32_t) { return *tick; });
        return tick.has_value();
    };
    field.onTurned = [this, set](int bars) {
        set([&](std::uint32_t tick) { return PositionScale(&song()).moveBars(tick, bars); });
    };
}

std::optional<std::uint32_t> TransportCommands::typedTick(const QString& text) const
{
    return PositionScale(&song()).parse(text.toStdString());
}

void TransportCommands::locate(std::uint32_t tick)
{
    if (!isBusy()) panel().SetLocation(static_cast<long>(tick));
}

void TransportCommands::turnLocation(int beats)
{
    Winding winding;
    std::uint32_t tick = panel().GetLocation();
    for (int i = 0; i < std::abs(beats); ++i) tick = winding.repeat(song(), tick, beats < 0 ? -1 : 1, WindStep::beat);
    locate(tick);
}

void TransportCommands::toggleLoop()
{
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    panel().GetLoop(start, end);
    if (start == end) panel().SetLoop(0, song().GetTimeEnd()); // all of the song until one is marked
    panel().ShortCutLoopClicked();
}

void TransportCommands::markLoop(std::uint32_t start, std::uint32_t end)
{
    std::uint32_t oldStart = 0;
    std::uint32_t oldEnd = 0;
    const bool on = panel().GetLoop(oldStart, oldEnd);
    panel().SetLoop(start, end);
    if (!on) panel().ShortCutLoopClicked();
}

void TransportCommands::loopBlks()
{
    const std::vector<POSITION> blks = blksToLoop();
    if (blks.empty()) return;
    std::uint32_t start = List<CBlk>::get(blks.front())->GetTimeTop();
    std::uint32_t end = 0;
    for (POSITION at : blks) {
        const CBlk& blk = *List<CBlk>::get(at);
        start = std::min(start, blk.GetTimeTop());
        end = std::max(end, blk.GetTimeEnd());
    }
    if (start < end) markLoop(start, end);
}

void TransportCommands::setMidiSync(bool on)
{
    Settings settings = m_parts.app.GetSettings();
    settings.sync = on ? 1 : 0;
    m_parts.app.SetSettings(settings);
}

} // namespace tessaro
