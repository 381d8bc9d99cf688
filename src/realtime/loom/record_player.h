// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/loom_state.h"
#include "realtime/loom/message_ring.h"
#include "realtime/loom/metronome.h"
#include "realtime/loom/note_table.h"
#include "realtime/loom/out_ports.h"
#include "realtime/loom/track_switches.h"

namespace tessaro {

/// Sends what a due queue record asks for: applies track switches and transposition, keeps the table of sounding notes,
/// clicks, and tells the play owners through the ring of played messages. Engine thread.
class RecordPlayer {
public:
    RecordPlayer(LoomState& state, TrackSwitches& tracks, NoteTable& notes, OutPorts& ports, Metronome& metronome,
                 MessageRing& played)
        : m_state(state)
        , m_tracks(tracks)
        , m_notes(notes)
        , m_ports(ports)
        , m_metronome(metronome)
        , m_played(played)
    {
    }

    void play(const _LOOM_QUE_REC& record, Stamp stamp);
    /// Ends every note that sounds, and the click.
    void releaseAll(Stamp stamp);
    /// Ends the notes of tracks that are switched off.
    void releaseSwitchedOff(Stamp stamp);

private:
    void playChannel(const _LOOM_QUE_REC& record, Stamp stamp);
    void playNoteOn(const _LOOM_QUE_REC& record, Stamp stamp);
    void playNoteOff(const _LOOM_QUE_REC& record, Stamp stamp);
    void playPolyTouch(const _LOOM_QUE_REC& record, Stamp stamp);
    void playSysex(const _LOOM_QUE_REC& record, Stamp stamp);
    void playBeat(const _LOOM_QUE_REC& record, Stamp stamp);
    void endNote(const SoundingNote& note, Stamp stamp);
    bool sendAndTell(std::uint8_t port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2, Stamp stamp);
    [[nodiscard]] bool ownersListen() const;

    LoomState& m_state;
    TrackSwitches& m_tracks;
    NoteTable& m_notes;
    OutPorts& m_ports;
    Metronome& m_metronome;
    MessageRing& m_played;
};

} // namespace tessaro
