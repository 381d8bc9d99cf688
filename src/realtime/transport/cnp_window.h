// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "realtime/play/smc.h"
#include "realtime/rec/recorder.h"
#include "realtime/transport/cnp_observer.h"
#include "realtime/transport/location_box.h"
#include "realtime/transport/tempo_box.h"
#include "realtime/transport/winding.h"

#include <cstdint>
#include <string>

namespace tessaro {

class MessageTarget;
class SettingsStore;

/// The control panel: what the transport's buttons and boxes do, without their looks. The real-time layer holds the
/// truth while a song plays; what is held here is what the person sees. Without a song a command does nothing but tell
/// the observer to look at the buttons again.
///
/// The play button is on while the song plays, while it waits in MIDI sync or for the main frame to let it go on, and
/// during step input. Whatever moves the position or stops the song ends a take.
///
/// Views on its list get the messages 0x415 (the play position moved) and 0x416 (it jumped), the tick in wParam, while
/// views follow the position; the main frame gets 0x417 (play has stopped). Ticks; main thread only. Borrows all.
class TESSARO_API CCnpWindow final : public TempoDisplay {
public:
    /// The profile keeps `MIDI Chase` and `View Chase` in section System.
    explicit CCnpWindow(const RecorderPorts& ports);
    ~CCnpWindow() override;
    CCnpWindow(const CCnpWindow&) = delete;
    CCnpWindow& operator=(const CCnpWindow&) = delete;

    void setObserver(CnpObserver* observer) noexcept;
    void setMainFrame(MessageTarget* mainFrame) noexcept { m_mainFrame = mainFrame; }
    void addView(MessageTarget* view) { m_locationBox.addView(view); }
    void removeView(const MessageTarget* view) noexcept { m_locationBox.removeView(view); }
    /// Timer calls from one redraw of the location to the next; 0 counts as 1.
    void setThinTime(int calls) noexcept { m_locationBox.setThinTime(calls); }

    void Start();
    /// Ends everything: play, a take, fast forward. Always 1.
    int Stop();
    /// The stop button: after a take the position goes back to where it began.
    void StopClicked();
    /// Plays, or stops what plays; a rest in step input.
    void SpaceKey();
    /// Stops, and goes back to where play began; what plays goes on from there.
    void ESCKey();
    /// Nothing; always 1.
    int BSKey() { return 1; }
    void Top();
    void End();
    void ShortCutTOPClicked() { Top(); }

    /// The fast forward button, held: four times the tempo.
    void FastForwardPressed();
    void FastForwardReleased();
    [[nodiscard]] bool GetFastForward() const noexcept { return m_tempoBox.isFast(); }
    /// The rewind (-1) or forward (1) button, held: to be called when it goes down and for each repetition after. Stops
    /// what plays.
    void Wind(int direction, WindStep step);
    void WindReleased();

    // Recording

    [[nodiscard]] Recorder& recorder() noexcept { return m_recorder; }
    /// The record button: arms, or ends what is armed or recorded. In a playing song a take begins, or ends, on the
    /// spot and the song plays on.
    void ShortCutRECClicked();
    [[nodiscard]] bool IsRecButton() const noexcept { return m_recorder.IsRecButton(); }
    [[nodiscard]] bool IsStepRec() const noexcept { return m_recorder.IsStepRec(); }
    [[nodiscard]] const CBlk* GetRecBlk(POSITION trk) const { return m_recorder.GetRecBlk(trk); }
    /// Ends a take if there is one; the song plays on.
    void RecStop();
    /// Message 0x432 for the record owner: the entry is taken in and freed.
    void received(const LoomRingEntry& entry);
    /// Message 0x434: ends play and a take, and says so; nothing when neither runs.
    void recordError();

    [[nodiscard]] std::uint32_t GetLocation() const noexcept { return m_locationBox.tick(); }
    /// Negative is 0. A playing song goes on from there, once the main frame has had its message.
    void SetLocation(long tick);
    /// That message: a song that was to go on does, unless it has been stopped since.
    void Resume();
    /// The location that a song position message tells; nothing plays.
    void Spp(long tick);

    // For who interrupts a playing song

    /// Whether the song is to play on after an interruption.
    [[nodiscard]] bool goesOn() const noexcept { return (m_play || m_fastPlay) && !m_endingTake; }
    /// Plays on from the present position.
    void playOn();

    /// A new song: all to zero and off.
    void SetTop();

    /// Whether the loop is on; without a song 0 and points of 0.
    bool GetLoop(std::uint32_t& start, std::uint32_t& end) const noexcept;
    void SetLoop(std::uint32_t start, std::uint32_t end);
    /// The loop button.
    void ShortCutLoopClicked();

    [[nodiscard]] bool GetPlayBtn() const noexcept { return m_play; }
    [[nodiscard]] bool GetMetronome() const noexcept { return m_metronome; }
    void ShortCutMETRONOMEClicked();
    /// Wants the location box to be typed into.
    void ShortCutLocDClicked();
    void SetSyncMode(unsigned mode);
    [[nodiscard]] unsigned GetSyncMode() const noexcept { return m_syncMode; }

    /// Wishes for the real tempo in beats a minute: a value, one more, one less, the song's own.
    void SetTempo(int tempo);
    void TempoUp() { SetTempo(GetTempo() + 1); }
    void TempoDown() { SetTempo(GetTempo() - 1); }
    void TempoReset() { SetRelativeTempo(0); }
    void SetRelativeTempo(long thousandths);
    void UpdateTempo() override { m_tempoBox.update(); }
    [[nodiscard]] int GetTempo() const noexcept { return m_tempoBox.tempo(); }
    /// Global transposition in semitones.
    [[nodiscard]] int GetTranspose() const noexcept { return m_transpose; }
    void SetTranspose(int semitones);
    void TransposeUp() { SetTranspose(m_transpose + 1); }
    void TransposeDown() { SetTranspose(m_transpose - 1); }

    void DrawLocation(const std::string& text);
    [[nodiscard]] bool GetMIDIChase() const noexcept { return m_midiChase; }
    void SetMIDIChase(bool on);
    [[nodiscard]] bool GetViewChase() const noexcept { return m_locationBox.viewsFollow(); }
    void SetViewChase(bool on);

    /// To be called every 100 ms while it is wanted.
    void timer();

private:
    enum class Entry { countIn, atOnce };
    void run(Entry entry);
    void endTake();
    void endFastForward();
    void locateAndShow(std::uint32_t tick);
    void passTake(std::uint32_t tick);
    /// A step is open, or long work goes on: the song stands still as long as that takes.
    [[nodiscard]] bool isBeingEdited() const;
    void applyLoop();
    void applyTranspose(int semitones);
    void wantTimer(bool on);
    void changed();

    /// Without a song, lets the observer look at the buttons again.
    [[nodiscard]] bool hasSong();
    [[nodiscard]] bool inMidiSync() const;
    [[nodiscard]] bool plays() const { return m_resumes || m_smc.running(); }
    /// A take or step input runs.
    [[nodiscard]] bool records() const noexcept { return m_recorder.state() == RecState::recording; }
    [[nodiscard]] bool steps() const noexcept { return records() && m_recorder.IsStepRec(); }
    [[nodiscard]] LoopRange loop() const noexcept { return {m_loop, m_loopStart, m_loopEnd}; }

    Smc& m_smc;
    SettingsStore& m_profile;
    UserPort& m_user;
    Recorder m_recorder;
    LocationBox m_locationBox;
    TempoBox m_tempoBox;
    Winding m_winding;
    CnpObserver* m_observer = nullptr;
    MessageTarget* m_mainFrame = nullptr;

    std::uint32_t m_startTick = 0; ///< where play began
    std::uint32_t m_loopStart = 0;
    std::uint32_t m_loopEnd = 0;
    int m_transpose = 0;
    unsigned m_syncMode = 0;
    bool m_loop = false;
    bool m_play = false;
    bool m_fastPlay = false;    ///< the song plays only because fast forward is held
    bool m_resumes = false;     ///< play goes on when the main frame has had its message
    bool m_endingTake = false;  ///< the transport stands until the take is complete
    bool m_reachedTake = false; ///< the song has come to where the take begins
    bool m_timerOn = false;
    bool m_metronome = false;
    bool m_midiChase;
};

} // namespace tessaro
