// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "realtime/loom/que_rec.h"
#include "realtime/loom/rt_section.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tessaro {

class Engine;
class MessageTarget;
class MidiSystem;
class SendObserver;

/// The real-time MIDI engine: a delta-timed queue of records played against a clock, immediate sending,
/// the MIDI drivers, thru, and two rings of incoming and of played messages.
///
/// Units: ticks of 480 a quarter note; a tempo is microseconds a quarter note; a port is an index of the
/// output map, 0 to 127. A tick lasts tempo / 480 us * 1000 / (1000 + relative tempo).
///
/// Time of a run. loomPlayStart sets the queue's position to one tick before the run, so a first record
/// of delta 1 is due at the moment the queue begins to play; a first record of delta 0, as a count-in
/// has, is due at that moment too. Every later record keeps its distance. A message carries its exact
/// due time to the driver, also when the record came late; the time line never waits for records.
///
/// What leaves is valid MIDI. A channel message with a data byte above 0x7F is dropped. A slice of a
/// system exclusive with a byte above 0x7F elsewhere than as its closing 0xF7 is dropped and ends the
/// message; a continuation with nothing to continue is dropped; a message left open is closed with a 0xF7
/// before the next message of that port. A note that transposition carries out of 0 to 127 stays silent,
/// its note-off with it. A note-off is sent for each note-on that was sent, with the port, channel and
/// key of then, whatever has changed since; others are not sent. A track that is switched off gets its
/// note-offs at once.
///
/// Threads. Device operations, start and shutdown: one thread, the user interface's; they may wait for
/// the engine. putLoomQueData: one thread at a time. All else: any thread, and never blocks. The engine
/// runs as a task of `clock`; nothing in it allocates, locks or waits. Objects handed over are borrowed
/// and outlive the Loom or their replacement. No operation raises an exception.
class TESSARO_API Loom {
public:
    Loom(Clock& clock, MidiSystem& midi);
    ~Loom(); ///< ends the engine and closes every driver
    Loom(const Loom&) = delete;
    Loom& operator=(const Loom&) = delete;

    // Start and shutdown

    /// Makes the table of sounding notes, while the engine does not run. False without memory. Queued notes
    /// stay silent as long as there is no table.
    bool CreateNoteOnTbl();
    void TerminateNoteOnTbl();
    /// The longest time between two steps of the engine; 4 by default.
    void setLoomTicIntval(int milliseconds);
    /// Starts the engine's task. The result names it; 0 on failure, or when it runs already. The interval is
    /// that of setLoomTicIntval, or `period` when none was set; the other arguments have no meaning here.
    unsigned CallTimeSetEvent(unsigned period, unsigned resolution, std::uintptr_t user, unsigned kind);
    /// Closes MIDI in and ends the task. No other thread may be in a call to this object.
    void CallTimeKillEvent(unsigned id);
    /// With an empty `outMap`: closes every driver and prepares the buffers. Otherwise opens both sides;
    /// the result is that of setLoomOutPortMap, with bit 0 set when MIDI in failed.
    unsigned setLoomMidiPorts(std::size_t inDriver, std::size_t inSize, std::span<const std::int32_t> outMap,
                              std::size_t outSize, unsigned outInterval);
    void setLoomMidiPortsReset(); ///< closes every driver
    void setLoomMainWnd(MessageTarget* window);
    /// Clears the play state: not playing, queue dropped, no play end, inner time and timer offset 0. Keeps
    /// position, tempo, tracks, pre-count and settings.
    void setLoomInit();

    // Ports

    /// Closes all outputs, behind the note-offs of what sounds there, and opens the drivers of the first
    /// `count` entries of `drivers`. A number outside the list of drivers means none. `size` is the longest
    /// piece of a system exclusive that is sent in one; `interval` is for the caller's own use. The low 4 bits
    /// of the result are nonzero when a driver failed to open; the others go on.
    unsigned setLoomOutPortMap(std::span<const std::int32_t> drivers, std::size_t size, unsigned interval,
                               std::size_t count);
    /// Closes MIDI in and opens a driver; a number outside the list leaves it closed. False when the
    /// driver failed to open.
    bool setLoomInPort(std::size_t driver, std::size_t size);
    bool setLoomThruPort(int port);  ///< any number above 127 turns thru off
    void setLoomThruCh(int channel); ///< 0 to 15; -1 keeps the incoming channel
    void setLoomThruTrns(int semitones);
    void setLoomThruFlag(int on);
    void setLoomThruFilt(std::uint32_t mask); ///< a set bit keeps the kind from thru
    /// Whether Start, Continue, Stop, Song Position and clock go out, to every open port. Clock, and the
    /// Start and Stop of a run, are sent in internal sync only.
    void setLoomRealTimeMessagesSw(int on);
    /// 1 makes the queue run on incoming MIDI clock: armed by loomPlayStart, it begins with the first clock
    /// behind a Start or Continue, and stands still from a Stop to the next of these.
    void setLoomSyncMode(int mode);
    [[nodiscard]] int getLoomSyncMode() const;

    // Immediate sending. The status word is 0 when the message was taken.

    /// Nonzero: no such message, no driver at the port, engine not running, or line full.
    unsigned loomSendShortMsg(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2);
    /// A system exclusive or a slice of one; the bytes are copied. Keeps its order with short messages of
    /// the same thread.
    unsigned loomSendLongMsg(int port, const void* bytes, std::size_t length);
    [[nodiscard]] int getLoomInLongmsg() const; ///< 1 while a long message is under way
    void setLoomInLongmsg(int flag);            ///< 0 forgets what is under way

    // Queue and clock

    /// Appends a copy. False, and nothing done, when 32,767 records wait.
    bool putLoomQueData(const _LOOM_QUE_REC& record);
    [[nodiscard]] unsigned getLoomQueCount() const;
    void setLoomQueplying(int playing);
    [[nodiscard]] int getLoomQueplying() const;
    /// Arms a new run: records queued before are dropped, the queue stands before its first tick.
    void loomPlayStart();
    void ClrKeyTable();
    void setLoomQueAlloff(int request);
    [[nodiscard]] int getLoomQueQlloff() const;
    void setLoomQplaytime(std::uint32_t tick);
    [[nodiscard]] std::uint32_t getLoomQplaytime() const;
    /// The engine stops at the time of this tick, behind the records due by then, sends the note-offs of all
    /// that sounds and posts message 0x433 with code 5. 0: it goes on.
    void setLoomQplayend(std::uint32_t tick);
    void setLoomInnerTime(std::uint32_t ticks);
    [[nodiscard]] std::uint32_t getLoomInnerTime() const;
    void setLoomLocating(int locating); ///< 1 keeps played messages out of the back-message ring
    void setLoomPreCount(int preCount);
    /// Moves the time line once, by this many ms; positive makes everything still to come fall due earlier.
    void setLoomMidiTimerOfst(int milliseconds);
    [[nodiscard]] int getLoomMidiTimerOfst() const;
    /// Lasting trim of the tempo in millionths; positive is faster. Takes effect with queTimeTic.
    void setLoomMidiTimerAdjust(int millionths);
    [[nodiscard]] int getLoomMidiTimerAdjust() const;
    void setLoomMidiTempo(std::uint8_t high, std::uint16_t low); ///< 0 is ignored
    void queTimeTic();
    /// Whole beats a minute, the base rounded to the nearest; the real tempo is base * (1000 + relative) / 1000,
    /// rounded down, or in MIDI sync that of the incoming clock.
    [[nodiscard]] int getLoomTempo() const;
    [[nodiscard]] int getLoomRealTempo() const;
    void setLoomRelativeTempo(int thousandths); ///< held at -999 to 999,000
    [[nodiscard]] int getLoomRelativeTempo() const;
    void setLoomBeat1(std::uint32_t ticks);
    [[nodiscard]] std::uint32_t getLoomBeat1() const;
    void setLoomMaxbeat(std::uint32_t ticks);
    [[nodiscard]] std::uint32_t getLoomMaxbeat() const;
    void setLoomMbeat(std::uint32_t ticks);
    [[nodiscard]] std::uint32_t getLoomMbeat() const;

    // Tracks, 0 to 116; others are ignored and read as 0. All start switched on and not transposed.

    void setLoomTrkSw(int on, int track);
    [[nodiscard]] int getLoomTrkSw(int track) const;
    void setLoomTrkTrsp(int semitones, int track);
    [[nodiscard]] int getLoomTrkTrsp(int track) const;
    void setLoomTrkTrspFlg(int flag, int track);
    [[nodiscard]] int getLoomTrkTrspFlg(int track) const;
    void setLoomgTransp(int semitones);
    [[nodiscard]] int getLoomgTransp() const;

    // Recording and owners. The rings have loomRingEntries entries each.

    /// What arrived before recording is switched off is still recorded, within the engine's next step.
    void setLoomRecFlag(int on);
    void setLoomRecOwner(MessageTarget* owner);
    void setLoomOwner(MessageTarget* owner);
    [[nodiscard]] const LoomRingEntry* getLoomRecdata() const;
    [[nodiscard]] const LoomRingEntry* getLoomBackMsg() const;
    [[nodiscard]] std::uint16_t getLoomWrdpt() const;
    [[nodiscard]] std::uint16_t getLoomWbmpt() const;
    void loomIncRrdpt();
    void loomIncRbmpt();
    [[nodiscard]] int getLoomRecError() const; ///< 1: incoming data was lost
    void setLoomRecError(int flag);
    void setLoomMetronome(int port, int channel, int note1, int note2, int velocity1, int velocity2);
    void setLoomMetroFlg(int on);

    // Beside the contract

    /// 1 while the engine records; behind setLoomRecFlag(0) until all that arrived before is in the ring. The user
    /// interface's thread.
    [[nodiscard]] int getLoomRecFlag() const;
    /// Read index of the record ring.
    [[nodiscard]] std::uint16_t getLoomRrdpt() const;

    /// Null by default. Set while the engine does not run.
    void setSendObserver(SendObserver* observer);
    void setRtHook(RtHook hook); ///< as above
    /// Ticks of the present run that have fallen due; 0 at its start, -1 before.
    [[nodiscard]] std::int64_t ticksPlayed() const;
    /// When the `ticks`-th tick of the present run falls due if the tempo stays as it is. Exact up to the next
    /// record due, thus up to the next deadline of the engine. Only from the engine's thread or, in simulated
    /// time, between steps.
    [[nodiscard]] Nanos dueOfTick(std::int64_t ticks) const;

private:
    std::unique_ptr<Engine> m_engine;
    int m_interval = 0; // ms; 0: not set
};

} // namespace tessaro
