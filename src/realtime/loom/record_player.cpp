// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/record_player.h"

#include "base/messages.h"
#include "realtime/loom/midi_bytes.h"

#include <array>

namespace tessaro {

namespace {

std::span<const std::uint8_t> dataOf(const _LOOM_QUE_REC& record)
{
    if (!record.data) return {};
    return {static_cast<const std::uint8_t*>(record.data), record.length};
}

std::uint8_t trackOf(const _LOOM_QUE_REC& record) { return static_cast<std::uint8_t>(record.track); }

} // namespace

void RecordPlayer::play(const _LOOM_QUE_REC& record, Stamp stamp)
{
    if (!TrackSwitches::valid(record.track)) return;
    if (isChannelStatus(record.status)) {
        playChannel(record, stamp);
        return;
    }
    switch (record.status) {
    case que::sysex:
    case que::continuation: playSysex(record, stamp); break;
    case que::beat: playBeat(record, stamp); break;
    case que::mci:
        if (MessageTarget* window = m_state.mainWindow; window && m_tracks.on(record.track))
            window->post({.id = msg::mciCommand, .lParam = reinterpret_cast<std::intptr_t>(record.data)});
        break;
    default: break;
    }
}

void RecordPlayer::playChannel(const _LOOM_QUE_REC& record, Stamp stamp)
{
    const std::size_t length = messageLength(record.status);
    if (!isData(record.data1) || (length == 3 && !isData(record.data2))) return;
    // The end of a note that sounds comes through a switch that is off; the table knows whether there is one.
    if (isNoteOff(record.status, record.data2)) {
        playNoteOff(record, stamp);
    } else if (!m_tracks.on(record.track)) {
        return;
    } else if (isNoteOn(record.status, record.data2)) {
        playNoteOn(record, stamp);
    } else if (kindOf(record.status) == midi::polyTouch) {
        playPolyTouch(record, stamp);
    } else {
        sendAndTell(record.port, record.status, record.data1, record.data2, stamp);
    }
}

void RecordPlayer::playNoteOn(const _LOOM_QUE_REC& record, Stamp stamp)
{
    const int key = m_tracks.soundingKey(record.track, record.data1);
    if (key < 0 || key > 127 || !m_ports.isOpen(record.port)) return;
    const SoundingNote note{.track = trackOf(record),
                            .songKey = record.data1,
                            .port = record.port,
                            .channel = channelOf(record.status),
                            .key = static_cast<std::uint8_t>(key)};
    if (!m_notes.add(note)) return;
    if (!sendAndTell(note.port, record.status, note.key, record.data2, stamp))
        m_notes.take(note.track, note.port, note.channel, note.songKey);
}

void RecordPlayer::playNoteOff(const _LOOM_QUE_REC& record, Stamp stamp)
{
    const auto note = m_notes.take(trackOf(record), record.port, channelOf(record.status), record.data1);
    if (!note) return;
    const auto status = static_cast<std::uint8_t>(kindOf(record.status) | note->channel);
    sendAndTell(note->port, status, note->key, record.data2, stamp);
}

void RecordPlayer::playPolyTouch(const _LOOM_QUE_REC& record, Stamp stamp)
{
    if (const auto note = m_notes.find(trackOf(record), record.port, channelOf(record.status), record.data1)) {
        const auto status = static_cast<std::uint8_t>(midi::polyTouch | note->channel);
        sendAndTell(note->port, status, note->key, record.data2, stamp);
        return;
    }
    const int key = m_tracks.soundingKey(record.track, record.data1);
    if (key < 0 || key > 127) return;
    sendAndTell(record.port, record.status, static_cast<std::uint8_t>(key), record.data2, stamp);
}

void RecordPlayer::playSysex(const _LOOM_QUE_REC& record, Stamp stamp)
{
    const std::span<const std::uint8_t> data = dataOf(record);
    if (record.status == que::continuation) {
        // A message that has begun is finished, whatever the switch says now.
        if (!m_ports.sendSysex(record.port, trackOf(record), data, stamp)) return;
        if (ownersListen()) m_played.putSysex(record.port, data);
    } else if (m_tracks.on(record.track)) {
        if (!m_ports.beginSysex(record.port, trackOf(record), data, stamp)) return;
        if (ownersListen()) m_played.putSysex(record.port, {&midi::sysex, 1}, data);
    }
}

void RecordPlayer::playBeat(const _LOOM_QUE_REC& record, Stamp stamp)
{
    if (record.data2 == 0) {
        m_metronome.silence(m_ports, stamp);
    } else if (m_metronome.isOn() || m_state.preCount.load(std::memory_order_relaxed)) {
        m_metronome.click(m_ports, record.data1 == 0, stamp);
    }
}

void RecordPlayer::releaseAll(Stamp stamp)
{
    m_metronome.silence(m_ports, stamp);
    m_notes.releaseIf([](const SoundingNote&) { return true; },
                      [&](const SoundingNote& note) { endNote(note, stamp); });
}

void RecordPlayer::releaseSwitchedOff(Stamp stamp)
{
    m_notes.releaseIf([&](const SoundingNote& note) { return !m_tracks.on(note.track); },
                      [&](const SoundingNote& note) { endNote(note, stamp); });
}

void RecordPlayer::endNote(const SoundingNote& note, Stamp stamp)
{
    sendAndTell(note.port, static_cast<std::uint8_t>(midi::noteOn | note.channel), note.key, 0, stamp);
}

bool RecordPlayer::sendAndTell(std::uint8_t port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                               Stamp stamp)
{
    const std::array<std::uint8_t, 3> message{status, data1, data2};
    if (!m_ports.send(port, std::span(message).first(messageLength(status)), stamp)) return false;
    if (ownersListen()) m_played.putShort(port, status, data1, data2);
    return true;
}

bool RecordPlayer::ownersListen() const
{
    return m_state.playOwner.load(std::memory_order_relaxed) && !m_state.locating.load(std::memory_order_relaxed);
}

} // namespace tessaro
