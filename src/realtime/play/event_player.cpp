// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/event_player.h"

#include "core/maps/tempo_map.h"
#include "core/model/evnt.h"
#include "core/model/meta.h"
#include "realtime/loom/loom.h"
#include "realtime/play/beat_marker.h"
#include "realtime/play/direct_sender.h"
#include "realtime/play/joins.h"
#include "realtime/play/output_filter.h"
#include "realtime/play/queue_writer.h"
#include "realtime/play/track_table.h"

#include <algorithm>

namespace tessaro {

bool isSampleSysex(std::span<const std::uint8_t> bytes) noexcept
{
    return bytes.size() >= 4 && bytes[0] == 0x43 && bytes[1] < 0x20 && bytes[2] == 0x68;
}

const std::uint8_t* chordBytes(const CEvnt& event) noexcept
{
    if (!event.isMeta(meta::sequencer)) return nullptr;
    const std::span<const std::uint8_t> data = event.payload();
    const bool chord = data.size() == 7 && data[0] == 0x43 && data[1] == 0x7B && data[2] == 0x01;
    return chord ? &data[3] : nullptr;
}

void EventPlayer::play(const TrackCursors::DueEvent& due, std::uint32_t nowTick, bool beforeLoop)
{
    const CEvnt& event = *due.event;
    const std::uint8_t status = event.GetStatus();
    const int track = due.track;
    if (m_tracks.filter(track) & filter::bitOf(status)) return;

    switch (status::kind(status)) {
    case status::rest: break;
    case status::nrpn:
        channelMessage(track, status::control, 99, event.GetPost1());
        channelMessage(track, status::control, 98, event.GetPost2());
        channelMessage(track, status::control, 6, event.GetPost3());
        break;
    case status::rpn:
        channelMessage(track, status::control, 101, event.GetPost1());
        channelMessage(track, status::control, 100, event.GetPost2());
        channelMessage(track, status::control, 6, event.GetPost3());
        break;
    case status::voice:
        channelMessage(track, status::control, 0, event.GetPost1());
        channelMessage(track, status::control, 32, event.GetPost2());
        channelMessage(track, status::program, event.GetPost3(), 0);
        break;
    case status::mci: mci(track, event); break;
    case status::syng:
        sysex(track, event.payload());
        note(track, event.GetPost1(), event.GetPost2(), event.GetGateTime());
        break;
    case status::note: notes(track, due.time, event.GetPost1(), event.GetPost2(), event.GetGateTime()); break;
    case status::polyPressure:
    case status::control:
    case status::pitchBend: channelMessage(track, status, event.GetPost1(), event.GetPost2()); break;
    case status::program:
    case status::pressure: channelMessage(track, status, event.GetPost1(), 0); break;
    default:
        if (status == status::sysex)
            sysex(track, event.payload());
        else if (status != status::metaEvent)
            m_queue.longMessage(track, m_tracks.port(track), status, event.payload());
        else if (track == 0)
            masterMeta(event, nowTick, beforeLoop);
        break;
    }
}

void EventPlayer::play(const TakeEcho::Event& event)
{
    if (m_tracks.filter(event.track) & filter::bitOf(event.status)) return;
    if (event.status == status::note)
        notes(event.track, event.time, event.data1, event.data2, event.gate);
    else
        channelMessage(event.track, event.status, event.data1, event.data2);
}

void EventPlayer::channelMessage(int track, std::uint8_t kind, std::uint8_t data1, std::uint8_t data2)
{
    const auto status = static_cast<std::uint8_t>(status::kind(kind) | m_tracks.channel(track));
    m_queue.shortMessage(track, m_tracks.port(track), status, data1, data2);
}

void EventPlayer::note(int track, int key, std::uint8_t velocity, std::uint32_t gate)
{
    const NoteOff off{static_cast<std::int16_t>(track), m_tracks.port(track),
                      static_cast<std::uint8_t>(status::note | m_tracks.channel(track)),
                      static_cast<std::uint8_t>(key)};
    if (m_notes.add(m_queue.stepCount() + std::max(gate, 1U), off))
        m_queue.shortMessage(track, off.port, off.status, off.key, velocity);
}

void EventPlayer::notes(int track, std::uint32_t time, int key, std::uint8_t velocity, std::uint32_t gate)
{
    note(track, key, velocity, gate);
    const int interval = m_ottavas->interval(track, time);
    if (interval == 0) return;
    const int second = key + interval;
    note(track, second < 0 ? second + 12 : second > 127 ? second - 12 : second, velocity, gate);
}

void EventPlayer::sysex(int track, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty() || isSampleSysex(bytes)) return;
    const std::uint8_t port = m_tracks.port(track);
    const std::size_t chunk = std::max<std::size_t>(m_sender.chunkSize(), 2);
    const std::size_t first = std::min(bytes.size(), chunk - 1);
    m_queue.longMessage(track, port, status::sysex, bytes.first(first));
    for (bytes = bytes.subspan(first); !bytes.empty();) {
        const std::size_t slice = std::min(bytes.size(), chunk);
        m_queue.longMessage(track, port, status::sysexPart, bytes.first(slice));
        bytes = bytes.subspan(slice);
    }
}

void EventPlayer::masterMeta(const CEvnt& event, std::uint32_t nowTick, bool beforeLoop)
{
    const std::span<const std::uint8_t> data = event.payload();
    const std::uint8_t port = m_tracks.port(0);
    if (event.isMeta(meta::tempo) && data.size() == 3 && ReadTempo(data.data()) != 0) {
        if (!(m_tracks.filter(0) & filter::tempo) && m_loom.getLoomSyncMode() == 0) {
            m_queue.tempo(port, ReadTempo(data.data()), data.data());
            return;
        }
    } else if (event.isMeta(meta::timeSignature) && data.size() == 4) {
        m_queue.longMessage(0, port, que::signature, data);
        setSignature(m_loom, data[0], data[1], 0);
        return;
    } else if (const std::uint8_t* chord = chordBytes(event)) {
        m_styles->chord(std::span<const std::uint8_t, 4>{chord, 4}, nowTick, beforeLoop);
    }
    m_queue.longMessage(0, port, que::meta, data);
}

void EventPlayer::mci(int track, const CEvnt& event)
{
    const std::span<const char> text = m_mciStrings.add(event.GetMciCommand(), event.GetFileName());
    m_queue.longMessage(track, m_tracks.port(track), que::mci,
                        {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

void EventPlayer::end(const NoteOff& off) { m_queue.shortMessage(off.track, off.port, off.status, off.key, 0); }

void EventPlayer::dueNotesOff()
{
    NoteOff off;
    while (m_notes.takeDue(m_queue.stepCount(), off)) end(off);
}

void EventPlayer::allNotesOff()
{
    NoteOff off;
    while (m_notes.takeHead(off)) end(off);
}

} // namespace tessaro
