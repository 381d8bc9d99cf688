// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/take.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "realtime/play/output_filter.h"
#include "realtime/play/take_echo.h"
#include "realtime/rec/blk_selection.h"
#include "realtime/rec/range_clear.h"
#include "realtime/rec/take_merge.h"

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {
constexpr std::uint32_t openGate = 10;    ///< of a note whose end is not known yet
constexpr std::int64_t punchWindow = 120; ///< ticks before the punch from which on what comes begins with it

bool isSysex(const LoomRingEntry& entry) noexcept
{
    return entry.status == status::sysex || entry.status == status::sysexPart;
}

bool isRelease(const Take::ShortMessage& message) noexcept
{
    return status::kind(message.status) == status::note && message.data2 == 0;
}
} // namespace

Take::Take(CEditor& editor, const TakeStart& start, const Audience& audience)
    : m_editor(editor)
    , m_start(start)
    , m_audience(audience)
    , m_loop(start.loop)
    , m_earlyTick(start.topTick)
    , m_lastTick(start.topTick)
{
    makeBlks();
    const RecordSettings& settings = m_start.settings;
    // A range that ends before it begins is no punch at all.
    m_punch = settings.realMode == RealRecMode::punch && settings.punchOut > settings.punchIn;
    if (!m_punch) return;
    m_earlyTick = tick::clamped(settings.punchIn);
    if (settings.punchIn < 0) return;
    for (const Track& track : m_tracks)
        clearRange(m_editor, track.trk, track.blk, m_earlyTick, tick::clamped(settings.punchOut));
}

void Take::makeBlks()
{
    m_trackOf.fill(-1);
    for (const int number : m_start.tracks) makeBlk(number);
    std::vector<Track> byChannel;
    for (int& index : m_trackOf) {
        if (index < 0) continue;
        byChannel.push_back(std::move(m_tracks[static_cast<std::size_t>(index)]));
        index = static_cast<int>(byChannel.size()) - 1;
    }
    m_tracks = std::move(byChannel);
    if (m_tracks.size() == 1) m_trackOf.fill(0);
}

void Take::makeBlk(int number)
{
    CTrk* trk = List<CTrk>::get(m_editor.GetTrkPos(number));
    if (!trk || trk->GetType() == trktype::wave || trk->GetCh() >= m_trackOf.size()) return;
    int& index = m_trackOf[trk->GetCh()];
    if (index >= 0) return;
    std::vector<POSITION> selected = m_audience.selection.selectedBlks(trk);
    const POSITION blk = m_editor.BlkRealRec(trk, m_start.topTick, m_start.topTick);
    if (!blk) return;
    index = static_cast<int>(m_tracks.size());
    m_tracks.push_back({number, trk, blk, std::move(selected)});
    m_audience.selection.markRecBlk(trk, blk);
}

const CBlk* Take::blkOn(POSITION trk) const noexcept
{
    const auto at = std::find_if(m_tracks.begin(), m_tracks.end(), [trk](const Track& t) { return t.trk == trk; });
    return at == m_tracks.end() ? nullptr : List<CBlk>::get(at->blk);
}

Take::Track* Take::trackOf(std::uint8_t status) noexcept
{
    const int index = m_trackOf[status::channel(status)];
    return index < 0 ? nullptr : &m_tracks[static_cast<std::size_t>(index)];
}

bool Take::isFiltered(const ShortMessage& message) const noexcept
{
    if (m_start.inFilter & filter::bitOf(message.status)) return true;
    return status::kind(message.status) == status::control && m_start.dropController[message.data1] != 0;
}

bool Take::isPunching(std::uint32_t tick) const noexcept
{
    return !m_punch || (tick >= m_start.settings.punchIn && tick < m_start.settings.punchOut);
}

// What comes in

void Take::received(const LoomRingEntry& entry)
{
    const bool early = entry.time <= m_start.topTick;
    if (!early && m_hasEarly) beginEarly();
    const std::optional<std::uint32_t> tick = early ? earlyTick(entry.time) : entry.time;
    if (isSysex(entry)) {
        if (tick) takeSysex(entry, *tick);
        return;
    }
    ShortMessage message{entry.status, static_cast<std::uint8_t>(entry.data1 & 0x7FU),
                         static_cast<std::uint8_t>(entry.data2 & 0x7FU)};
    if (status::kind(message.status) == status::noteOff)
        message = {static_cast<std::uint8_t>(message.status | status::note), message.data1, 0};
    if (!trackOf(message.status) || isFiltered(message)) return;
    if (early)
        takeEarly(message, tick);
    else
        take(message, entry.time);
}

/// Where an entry that is not later than the top goes; none when it is left out.
std::optional<std::uint32_t> Take::earlyTick(std::uint32_t time) const noexcept
{
    const std::int64_t in = m_start.settings.punchIn;
    if (m_punch && (time + punchWindow < in || time >= in)) return std::nullopt;
    return m_earlyTick;
}

void Take::takeSysex(const LoomRingEntry& entry, std::uint32_t tick)
{
    const std::uint32_t size = entry.status == status::sysex ? entry.length : entry.size;
    if (m_tracks.empty() || !entry.data || size == 0 || m_start.inFilter & filter::sysex) return;
    _EDT_EVNT rec;
    rec.status = status::sysex;
    rec.time = tick;
    rec.data = entry.data + 1;
    rec.szData = size - 1;
    CEditor::RealRecEvnt(List<CBlk>::get(m_tracks.front().blk), rec);
}

void Take::takeEarly(const ShortMessage& message, std::optional<std::uint32_t> tick)
{
    if (isRelease(message)) {
        EarlyNote* early = m_earlyNotes.find(message.status, message.data1);
        HeldNote* held = early ? nullptr : m_held.find(message.status, message.data1);
        if (early && tick) NoteSlots<EarlyNote>::clear(*early);
        if (held) endNote(*held, m_loop.end); // the song has gone back since it began
        return;
    }
    if (!tick) return;
    switch (status::kind(message.status)) {
    case status::note:
        m_earlyNotes.add({{message.status, message.data1}, message.data2});
        m_hasEarly = true;
        break;
    case status::pitchBend:
        m_earlyBends[status::channel(message.status)] = {message.data1, message.data2};
        m_hasEarly = true;
        break;
    case status::control:
    case status::program: record(message, *tick); break;
    default: break;
    }
}

/// What has waited for the take begins with it.
void Take::beginEarly()
{
    m_hasEarly = false;
    m_earlyNotes.forEach([this](const EarlyNote& note) {
        beginNote({note.status, note.key, note.velocity}, m_earlyTick);
    });
    m_earlyNotes.clear();
    for (std::uint8_t channel = 0; channel < m_earlyBends.size(); ++channel) {
        const Bend bend = std::exchange(m_earlyBends[channel], {});
        const auto bendStatus = static_cast<std::uint8_t>(status::pitchBend | channel);
        if (bend != Bend{}) record({bendStatus, bend.low, bend.high}, m_earlyTick);
    }
}

void Take::take(const ShortMessage& message, std::uint32_t tick)
{
    if (isRelease(message)) {
        HeldNote* held = m_held.find(message.status, message.data1);
        if (held) endNote(*held, tick < held->tick ? m_loop.end : tick);
    } else if (status::kind(message.status) != status::note) {
        record(message, tick);
    } else if (isPunching(tick)) {
        beginNote(message, tick);
    }
}

void Take::beginNote(const ShortMessage& message, std::uint32_t tick)
{
    HeldNote* note = m_held.add({{message.status, message.data1}, nullptr, tick});
    if (!note) return;
    note->evnt = record(message, tick);
    if (!note->evnt) NoteSlots<HeldNote>::clear(*note);
}

void Take::endNote(HeldNote& note, std::int64_t end)
{
    if (m_punch) end = std::min(end, m_start.settings.punchOut);
    CEditor::RealRecGate(note.evnt, tick::clamped(end - note.tick));
    echo(*trackOf(note.status), note.evnt);
    NoteSlots<HeldNote>::clear(note);
}

/// The new event; null, and the message lost, when memory is out.
POSITION Take::record(const ShortMessage& message, std::uint32_t tick)
{
    const Track& track = *trackOf(message.status);
    _EDT_EVNT rec;
    rec.status = message.status;
    rec.time = tick;
    rec.post1 = message.data1;
    rec.post2 = message.data2;
    const bool isNote = status::kind(message.status) == status::note;
    if (isNote) rec.gateTime = openGate;
    const POSITION evnt = CEditor::RealRecEvnt(List<CBlk>::get(track.blk), rec);
    if (evnt && !isNote) echo(track, evnt);
    return evnt;
}

/// In a loop, what is recorded is heard the next time round.
void Take::echo(const Track& track, POSITION evnt)
{
    if (!m_audience.echo || !m_loop.on) return;
    _EDT_EVNT rec;
    List<CEvnt>::get(evnt)->Get(rec);
    rec.time += m_start.topTick;
    m_audience.echo->add(track.number, rec);
}

// The course of the song

void Take::passed(std::uint32_t tick, const LoopRange& loop)
{
    m_loop = loop;
    if (tick > m_lastTick) {
        m_lastTick = tick;
    } else if (m_wrapPending && loop.on) {
        m_wrapPending = false;
        for (const Track& track : m_tracks) m_editor.BlkRecSize(track.trk, track.blk, loop.end);
    }
}

void Take::finish(std::uint32_t stop, std::uint32_t last)
{
    endHeld(stop);
    std::uint32_t end = m_start.topTick;
    for (const Track& track : m_tracks) {
        m_editor.BlkSize(track.trk, track.blk, last);
        end = std::max(end, m_editor.GetBlkTimeEnd(track.trk, track.blk));
    }
    m_audience.selection.deselectAll();
    for (Track& track : m_tracks) {
        if (m_start.settings.realMode == RealRecMode::replace)
            clearRange(m_editor, track.trk, track.blk, m_start.topTick, end);
        if (!m_start.settings.newBlock) track.blk = mergeTake(m_editor, track.trk, track.blk, track.selected);
    }
}

void Take::endHeld(std::uint32_t stop)
{
    m_held.forEach([this, stop](const HeldNote& note) {
        const Track& track = *trackOf(note.status);
        _EDT_EVNT rec;
        List<CEvnt>::get(note.evnt)->Get(rec);
        rec.time += m_start.topTick;
        rec.gateTime = std::max(stop, note.tick + 1) - note.tick;
        m_editor.SetEvnt(track.trk, track.blk, note.evnt, rec);
    });
    m_held.clear();
}

void Take::select()
{
    for (const Track& track : m_tracks) m_audience.selection.selectBlk(track.trk, track.blk);
}

} // namespace tessaro
