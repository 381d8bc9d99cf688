// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/edit/editor_ports.h"
#include "core/edit/hint_board.h"
#include "core/edit/progress_bar.h"
#include "core/edit/solo_mute.h"
#include "core/edit/song.h"
#include "core/edit/song_maps.h"
#include "core/edit/step_flags.h"
#include "core/edit/style_track.h"
#include "core/edit/temp_waves.h"
#include "core/edit/undo_history.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaro {

/// The song editor: the facade of the song. It owns the song and its maps, offers every edit as an operation
/// on list positions or track numbers, and tells all views of each change by a numbered hint. A document
/// has one editor for its whole life; a new song or a load resets it. The transport stands still while
/// tracks, blocks or events change, apart from solo and mute.
///
/// Times are ticks, 480 to the quarter note: absolute, except where a name or a line says block-relative.
/// Tracks go by number, 0 to 100, or by position. Operations answer false or null when a track, block or
/// event is missing. Main thread only; the feeder reads tracks, blocks and maps while the song plays.
class TESSARO_API CEditor {
public:
    /// Makes a new song; a failure is shown, and what stands stays.
    explicit CEditor(const EditorPorts& ports);
    CEditor(const CEditor&) = delete;
    CEditor& operator=(const CEditor&) = delete;
    ~CEditor();

    // Life of the song ------------------------------------------------------------------------------------

    /// Throws the song away and makes a new one. The transport must not be bound to the old song.
    bool InitEditor();
    /// Makes the tracks of a new song; there are none before the call. Shows a failure.
    bool InitTrk();
    /// Throws the song away and reads another one; the measure map stands afterwards, as far as the file's
    /// signatures allow, the tempo map not yet. After a failure the song is unusable until InitEditor.
    LoadResult Load(const _EDT_FILE& file);

    /// The steps that make a song of what a reader has read, for the kind of file it came from.
    void BlkSize(std::uint8_t kind);
    /// Joins each system exclusive with its continuations; continuations without a start are lost.
    void PackSysex();
    /// Ends of all wave blocks from the lengths of their sound files.
    void BlkSizeWave();
    /// The same for one block of type 1; false when no length is known.
    bool BlkSizeWave(POSITION trk, POSITION blk);

    /// Marks the document as modified, and keeps the mark when undo runs back to the beginning.
    void SetModify();
    [[nodiscard]] bool GetModifyLock() const noexcept { return m_modifyLock; }
    void SetModifyLock(bool lock) noexcept { m_modifyLock = lock; }

    /// Stops a running transport and remembers that it ran.
    void StopSeq();
    /// Lets the transport run on if StopSeq stopped it.
    void PlaySeq();

    [[nodiscard]] Song& song() noexcept { return m_song; }
    [[nodiscard]] const Song& song() const noexcept { return m_song; }
    [[nodiscard]] UserPort& user() noexcept { return m_ports.user; }

    // Editing steps ---------------------------------------------------------------------------------------

    /// Opens a step, its title UTF-8. False while one is open, and when memory is out and the user does not want
    /// to go on without undo.
    bool OpenUndoNode(const std::string& title);
    /// Ends the step: the document becomes modified if anything changed, views show the new state, the
    /// transport runs on.
    void CloseUndoNode();
    /// Ends a step that could not be recorded: says so, and throws the history away. Always true, so that the
    /// operation goes on.
    bool ErrCloseUndoNode();
    [[nodiscard]] bool IsUndoOpen() const noexcept { return m_history.isOpen(); }
    /// Whether there is something to undo or redo, and its title.
    bool IsEnableUndo(std::string& title) const;
    bool IsEnableRedo(std::string& title) const;
    /// One step, or as many as told up to the first failure, which is shown. False on a failure, and while a step
    /// is open.
    bool UndoNode();
    bool RedoNode();
    bool UndoNode(int count);
    bool RedoNode(int count);
    /// Turns the changes of a step round, the last one first, or makes them again; stops at the first failure.
    bool Undo(CUndoNode* node);
    bool Redo(CUndoNode* node);
    /// The same for one change.
    bool Undo(CUndo* change);
    bool Redo(CUndo* change);
    [[nodiscard]] int GetUndoRedoCount() const noexcept { return m_history.count(); }
    /// The step applied last, -1 when there is none.
    [[nodiscard]] int GetUndoRedoIndex() const noexcept { return m_history.index(); }
    bool GetUndoNode(int index, CUndoNode** node) const noexcept;
    /// Throws the history away when there is any; the document then stays marked as modified.
    bool ClearUndoRedo();
    /// Throws the history away.
    void InitUndoNode();
    /// Deletes the real blocks that no block, set-up or phrase of the song shows. Linear; after InitUndoNode only,
    /// since parked blocks do not count.
    void RemoveScratch();
    /// The same for score entries.
    void RemoveScratchScr() { m_ports.score.removeScratch(); }
    [[nodiscard]] StepFlags& flags() noexcept { return m_flags; }
    [[nodiscard]] UndoHistory& history() noexcept { return m_history; }

    // Progress of long work -------------------------------------------------------------------------------

    void SetPrgDlg() { m_progress.open(0, 100); }
    void SetPrgDlg(std::uint32_t low, std::uint32_t high, std::string_view text);
    void SetPrgDlg(std::uint32_t low, std::uint32_t high, TextId text);
    void SetPrgDlgRange(std::uint32_t low, std::uint32_t high) { m_progress.range(low, high); }
    void SetPrgDlgPos(std::uint32_t pos) { m_progress.pos(pos); }
    void SetPrgDlgText(std::string_view text) { m_progress.text(text); }
    void EndPrgDlg() { m_progress.close(); }
    /// Long work is under way: the song may stand between two states.
    [[nodiscard]] bool IsPrgDlg() const noexcept { return m_progress.isOpen(); }
    void SetPrgDlgSpd(std::string_view text) { SetPrgDlg(0, 100, text); }
    void SetPrgDlgRangeSpd() { m_progress.range(0, 100); }
    void SetPrgDlgPosSpd(std::uint32_t pos) { m_progress.pos(pos); }
    /// Bytes done of the file that is being loaded.
    void Progress(std::uint32_t bytes) { m_progress.bytes(bytes, m_fileLength); }

    // Tracks ----------------------------------------------------------------------------------------------

    [[nodiscard]] POSITION GetTrkPos(int number) const noexcept { return m_song.trk(number); }
    [[nodiscard]] POSITION GetHeadTrkPos() const noexcept { return m_song.trks().head(); }
    [[nodiscard]] POSITION GetTailTrkPos() const noexcept { return m_song.trks().tail(); }
    bool GetNextTrk(POSITION& pos, CTrk** trk) const noexcept;
    bool GetPrevTrk(POSITION& pos, CTrk** trk) const noexcept;
    bool GetTrk(POSITION pos, CTrk** trk) const noexcept;
    bool GetTrk(int number, CTrk** trk) const noexcept;
    bool GetIndexTrk(POSITION pos, int* number) const noexcept;
    bool GetTrkInfo(POSITION trk, _EDT_TRKINFO& info) const;
    bool GetTrkInfo(int number, _EDT_TRKINFO& info) const;
    [[nodiscard]] std::uint32_t GetTrkInstType(POSITION trk) const noexcept;
    [[nodiscard]] std::uint32_t GetTrkInstType(int number) const noexcept { return GetTrkInstType(GetTrkPos(number)); }
    [[nodiscard]] std::uint8_t GetTrkStaffType(POSITION trk) const noexcept;
    [[nodiscard]] std::uint8_t GetTrkStaffType(int number) const noexcept { return GetTrkStaffType(GetTrkPos(number)); }
    [[nodiscard]] std::uint8_t GetTrkWavVol(POSITION trk) const noexcept;
    [[nodiscard]] std::uint8_t GetTrkWavVol(int number) const noexcept { return GetTrkWavVol(GetTrkPos(number)); }

    /// Only while the track is empty.
    bool SetTrkType(POSITION trk, std::uint8_t type);
    bool SetTrkType(int number, std::uint8_t type) { return SetTrkType(GetTrkPos(number), type); }
    /// The same without marking the document, for loaders.
    bool SetTrkTypePrivate(int number, std::uint8_t type);
    bool SetTrkPort(POSITION trk, std::uint8_t port);
    bool SetTrkPort(int number, std::uint8_t port) { return SetTrkPort(GetTrkPos(number), port); }
    /// Tells the views that the ports of all tracks may look different.
    void SetTrkPort() { HintTrkPort(); }
    /// 0 to 15.
    bool SetTrkCh(POSITION trk, std::uint8_t ch);
    bool SetTrkCh(int number, std::uint8_t ch) { return SetTrkCh(GetTrkPos(number), ch); }
    /// -36 to +36 semitones.
    bool SetTrkTranspose(POSITION trk, int semitones);
    bool SetTrkTranspose(int number, int semitones) { return SetTrkTranspose(GetTrkPos(number), semitones); }
    bool SetTrkTransEnable(POSITION trk, bool on);
    bool SetTrkTransEnable(int number, bool on) { return SetTrkTransEnable(GetTrkPos(number), on); }
    bool SetTrkRec(POSITION trk, bool on);
    bool SetTrkRec(int number, bool on) { return SetTrkRec(GetTrkPos(number), on); }
    bool SetTrkName(POSITION trk, const std::string& name);
    bool SetTrkName(int number, const std::string& name) { return SetTrkName(GetTrkPos(number), name); }
    bool SetTrkInstType(POSITION trk, std::uint32_t type);
    bool SetTrkInstType(int number, std::uint32_t type) { return SetTrkInstType(GetTrkPos(number), type); }
    bool SetTrkStaffType(POSITION trk, std::uint8_t type);
    bool SetTrkStaffType(int number, std::uint8_t type) { return SetTrkStaffType(GetTrkPos(number), type); }
    bool SetTrkWavVol(POSITION trk, std::uint8_t volume);
    bool SetTrkWavVol(int number, std::uint8_t volume) { return SetTrkWavVol(GetTrkPos(number), volume); }
    /// Moves a track behind `after`; numbers follow.
    bool SetTrkArrange(POSITION trk, POSITION after);
    bool SetTrkArrange(int number, int after) { return SetTrkArrange(GetTrkPos(number), GetTrkPos(after)); }

    // Solo and mute ---------------------------------------------------------------------------------------

    bool SetTrkSolo(POSITION trk, bool on) { return on ? SetSoloOn(trk) : SetSoloOff(trk); }
    bool SetTrkSolo(int number, bool on) { return SetTrkSolo(GetTrkPos(number), on); }
    bool SetTrkMute(POSITION trk, bool on);
    bool SetTrkMute(int number, bool on) { return SetTrkMute(GetTrkPos(number), on); }
    /// Takes every other solo away; the switches follow at once.
    bool SetSoloOn(POSITION trk);
    /// The switches follow with the next SetTrkOnOff.
    bool SetSoloOff(POSITION trk);
    void SetTrkSoloMute();
    /// Sets the engine's switch of every track from solo and mute.
    void SetTrkOnOff() { m_soloMute.setOnOff(); }
    [[nodiscard]] bool IsSoloExist() const { return m_soloMute.isSoloExist(); }
    [[nodiscard]] bool IsSoloExistStyle() const { return m_soloMute.isSoloExistStyle(); }
    /// All MIDI tracks of a port and channel; solo leaves all others without.
    void SetChSoloOn(std::uint8_t port, std::uint8_t ch);
    void SetChSoloOff(std::uint8_t port, std::uint8_t ch);
    void SetChMuteOn(std::uint8_t port, std::uint8_t ch);
    void SetChMuteOff(std::uint8_t port, std::uint8_t ch);

    // Blocks ----------------------------------------------------------------------------------------------

    [[nodiscard]] POSITION GetBlkPos(POSITION trk, std::uint32_t index) const noexcept;
    [[nodiscard]] POSITION GetBlkPos(int trk, std::uint32_t index) const noexcept
    {
        return GetBlkPos(GetTrkPos(trk), index);
    }
    [[nodiscard]] POSITION GetHeadBlkPos(POSITION trk) const noexcept;
    [[nodiscard]] POSITION GetHeadBlkPos(int trk) const noexcept { return GetHeadBlkPos(GetTrkPos(trk)); }
    [[nodiscard]] POSITION GetTailBlkPos(POSITION trk) const noexcept;
    [[nodiscard]] POSITION GetTailBlkPos(int trk) const noexcept { return GetTailBlkPos(GetTrkPos(trk)); }
    bool GetNextBlk(POSITION trk, POSITION& pos, CBlk** blk) const noexcept;
    bool GetPrevBlk(POSITION trk, POSITION& pos, CBlk** blk) const noexcept;
    bool GetBlk(POSITION trk, POSITION pos, CBlk** blk) const noexcept;
    bool GetBlk(int trk, std::uint32_t index, CBlk** blk) const noexcept;
    [[nodiscard]] std::uint8_t GetBlkType(POSITION trk, POSITION blk) const noexcept;
    [[nodiscard]] std::uint8_t GetBlkType(int trk, std::uint32_t blk) const noexcept;
    /// "Untitled" for a block without a name.
    [[nodiscard]] std::string GetBlkName(POSITION trk, POSITION blk) const;
    [[nodiscard]] std::string GetBlkName(int trk, std::uint32_t blk) const;
    bool GetBlkTime(POSITION trk, POSITION blk, std::uint32_t* top, std::uint32_t* end) const noexcept;
    bool GetBlkTime(int trk, std::uint32_t blk, std::uint32_t* top, std::uint32_t* end) const noexcept;
    [[nodiscard]] std::uint32_t GetBlkTimeTop(POSITION trk, POSITION blk) const noexcept;
    [[nodiscard]] std::uint32_t GetBlkTimeTop(int trk, std::uint32_t blk) const noexcept;
    [[nodiscard]] std::uint32_t GetBlkTimeEnd(POSITION trk, POSITION blk) const noexcept;
    [[nodiscard]] std::uint32_t GetBlkTimeEnd(int trk, std::uint32_t blk) const noexcept;
    /// The running number of automatic block names.
    [[nodiscard]] std::uint32_t GetBlkNameNum() const noexcept { return m_song.namer().GetBlkNameNum(); }
    void IncBlkNameNum() noexcept { m_song.namer().IncBlkNameNum(); }

    [[nodiscard]] std::uint32_t GetRealBlkCount() const noexcept;
    [[nodiscard]] POSITION GetHeadRealBlkPos() const noexcept { return m_song.realBlks().head(); }
    bool GetNextRealBlk(POSITION& pos, CRealBlk** real) const noexcept;
    [[nodiscard]] POSITION FindIndexRealBlk(std::uint32_t index) const noexcept;
    [[nodiscard]] POSITION FindRealBlk(const CRealBlk* real) const noexcept;
    /// False for a real block that is not of this song. Linear.
    bool GetIndexRealBlk(const CRealBlk* real, std::uint32_t* index) const noexcept;
    /// Null when memory is out.
    CRealBlk* NewAddTailRealBlk();
    /// Deletes a real block with its events; no block shows it any more.
    bool DelRealBlk(POSITION real);

    // Block operations: each stops the transport and records undo, the caller holds the step open. The master
    // track refuses all that make, move or delete blocks. A track of another type than the block's must be empty, and
    // takes its type then.

    /// A new block of type 1 on an empty real block.
    bool BlkNew(POSITION trk, std::uint32_t top, std::uint32_t end);
    /// The same while the transport runs; null on a refusal.
    POSITION BlkRec(POSITION trk, std::uint32_t top, std::uint32_t end);
    /// The same for a take, on MIDI tracks only; the real block begins with two empty text events.
    POSITION BlkRealRec(POSITION trk, std::uint32_t top, std::uint32_t end);
    /// An independent copy; that of a ghost is a ghost.
    bool BlkCopy(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);
    /// A ghost of the block's real block.
    bool BlkGhost(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);
    /// The block gets a new position.
    bool BlkMove(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time, POSITION* moved = nullptr);
    /// The move without undo, hint and taking the old block away; null on a refusal.
    POSITION BlkMoveCore(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);
    /// With a source go its ghosts, after a question once a step.
    bool BlkDel(POSITION trk, POSITION blk);
    void BlkDelGhost(POSITION trk, POSITION blk);
    /// Merges a block into the second one at its own top, then deletes it.
    bool BlkApp(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2);
    /// Divides a real block; a note that reaches over the division is cut. The ghosts follow the first half.
    bool BlkDiv(POSITION trk, POSITION blk, std::uint32_t time);
    /// Copies the events of a block into another, as if its top were `time`.
    bool BlkMerge(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2, std::uint32_t time);
    /// Makes a ghost a real block with a copy of the events.
    bool BlkRealize(POSITION trk, POSITION blk);
    /// Not shorter than the last sound.
    bool BlkSize(POSITION trk, POSITION blk, std::uint32_t end);
    /// The same for the block of a take, which nobody plays: the transport runs on.
    bool BlkRecSize(POSITION trk, POSITION blk, std::uint32_t end);
    bool BlkName(POSITION trk, POSITION blk, const std::string& name);
    /// Shifts the events inside the block; none gets before its top.
    bool BlkOfst(POSITION trk, POSITION blk, std::int64_t delta);
    /// A new block of type 1 on a real block of the song; null on a refusal.
    POSITION BlkPaste(POSITION trk, std::uint32_t top, std::uint32_t end, CRealBlk* real);
    POSITION BlkPasteNoHint(POSITION trk, std::uint32_t top, std::uint32_t end, CRealBlk* real);
    /// The source of a ghost; false without one.
    bool SrchSrcBlk(POSITION trk, POSITION blk, POSITION& srcTrk, POSITION& srcBlk) const noexcept;
    /// Whether any ghost of the block's real block exists.
    [[nodiscard]] bool IsGhostExist(POSITION trk, POSITION blk) const noexcept;
    /// Grows the block, and its ghosts, to hold the event. Not undone.
    void ChkBlkReSize(POSITION trk, POSITION blk, POSITION evnt);
    /// Every ghost of the block's real block gets the block's length.
    void ChkGhostBlkReSize(const CBlk* blk);

    // Events ----------------------------------------------------------------------------------------------
    // Times in events and records are block-relative.

    [[nodiscard]] POSITION GetHeadEvntPos(POSITION trk, POSITION blk) const noexcept;
    [[nodiscard]] POSITION GetHeadEvntPos(int trk, std::uint32_t blk) const noexcept;
    [[nodiscard]] POSITION GetTailEvntPos(POSITION trk, POSITION blk) const noexcept;
    [[nodiscard]] POSITION GetTailEvntPos(int trk, std::uint32_t blk) const noexcept;
    bool GetEvnt(POSITION trk, POSITION blk, POSITION evnt, CEvnt** e) const noexcept;
    bool GetEvnt(POSITION trk, POSITION blk, POSITION evnt, _EDT_EVNT& rec) const;
    bool GetEvnt(int trk, std::uint32_t blk, POSITION evnt, _EDT_EVNT& rec) const;
    bool GetNextEvnt(POSITION trk, POSITION blk, POSITION& evnt, _EDT_EVNT& rec) const;
    bool GetNextEvnt(int trk, std::uint32_t blk, POSITION& evnt, _EDT_EVNT& rec) const;
    bool GetPrevEvnt(POSITION trk, POSITION blk, POSITION& evnt, _EDT_EVNT& rec) const;
    bool GetPrevEvnt(int trk, std::uint32_t blk, POSITION& evnt, _EDT_EVNT& rec) const;
    POSITION GetHeadEvnt(POSITION trk, POSITION blk, _EDT_EVNT& rec) const;
    POSITION GetHeadEvnt(int trk, std::uint32_t blk, _EDT_EVNT& rec) const;
    POSITION GetTailEvnt(POSITION trk, POSITION blk, _EDT_EVNT& rec) const;
    POSITION GetTailEvnt(int trk, std::uint32_t blk, _EDT_EVNT& rec) const;
    /// First event not before the absolute time; null outside of the block.
    [[nodiscard]] POSITION GetEvntTimePos(POSITION trk, POSITION blk, std::uint32_t time) const;
    [[nodiscard]] POSITION GetEvntTimePos(int trk, std::uint32_t blk, std::uint32_t time) const;

    // Event operations: times in records are absolute. Only blocks of type 1 take them. Those without a word on
    // undo stop the transport, record undo and grow the block; the caller holds the step open.

    /// Whether a record may stand on a track of this number and type.
    [[nodiscard]] static bool IsInsEnable(int trk, std::uint8_t type, const _EDT_EVNT& rec) noexcept;
    /// A signature goes to the next bar line, a copyright notice to the top.
    bool InsEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec);
    /// The same without undo and growth, which are the caller's.
    bool InsEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec, POSITION& evnt);
    /// During recording: the transport runs on, no rules of place apply.
    bool RecEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec);
    /// The same without undo.
    bool RecEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec, POSITION& evnt);
    /// Overwrites while the transport runs; the block does not grow.
    bool RecSetEvnt(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec);
    /// The same without undo, hint and growth, for the speed of a take. The event's position, null on a refusal.
    static POSITION RealRecEvnt(CBlk* blk, const _EDT_EVNT& rec);
    /// Sets a note's gate time as quietly.
    static void RealRecGate(POSITION note, std::uint32_t gate) noexcept;
    /// Rests have no undo.
    bool InsRest(POSITION trk, POSITION blk, const _EDT_EVNT& rec);
    bool DelRest(POSITION trk, POSITION blk, POSITION evnt);
    bool SetEvnt(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec);
    /// A signature and a copyright notice stay where they are, which is said once a step.
    bool SetLocation(POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time);
    /// The signature and the tempo at the song's top stay.
    void DeleteEvnt(POSITION trk, POSITION blk, POSITION evnt);
    /// Takes an event out; recording it before is the caller's.
    void DelEvnt(POSITION trk, POSITION blk, POSITION evnt);
    /// Joins `note` to `note2` of the same pitch, which stays and reaches to the end of both.
    bool NoteApp(POSITION trk, POSITION blk, POSITION note, POSITION note2);
    /// Splits a note at a time strictly inside it.
    bool NoteDiv(POSITION trk, POSITION blk, POSITION note, std::uint32_t time);
    /// Whether the event refers to a score entry.
    [[nodiscard]] bool GetScrArtIndex(const CEvnt& event) const { return m_ports.score.isScoreLink(event); }
    [[nodiscard]] ScoreLinks& score() noexcept { return m_ports.score; }

    // Style track -----------------------------------------------------------------------------------------

    [[nodiscard]] const StyleTrack& styles() const noexcept { return m_styles; }
    [[nodiscard]] StyleTrack& styles() noexcept { return m_styles; }
    /// Deletes all style blocks and puts the settings back.
    void InitStyle() noexcept { m_styles.clear(); }
    void RemoveStyle() noexcept;
    bool RemoveAtStyle(POSITION style) noexcept;
    /// A new block that stands in no list: the caller owns it until it adds it.
    void NewStyle(CStyleBlk** style) { *style = new CStyleBlk; }
    POSITION AddStyle(std::uint32_t time, CStyleBlk* style) noexcept;
    POSITION AddHeadStyle(CStyleBlk* style) noexcept;
    POSITION InsertAfterStyle(POSITION pos, CStyleBlk* style) noexcept;
    bool GetNextStyle(POSITION& pos, CStyleBlk** style) const noexcept;
    bool GetPrevStyle(POSITION& pos, CStyleBlk** style) const noexcept;
    bool GetAtStyle(POSITION pos, CStyleBlk** style) const noexcept;
    [[nodiscard]] int GetCountStyle() const noexcept { return static_cast<int>(m_styles.blks().count()); }
    [[nodiscard]] POSITION GetHeadStylePos() const noexcept { return m_styles.blks().head(); }
    [[nodiscard]] POSITION GetTailStylePos() const noexcept { return m_styles.blks().tail(); }
    [[nodiscard]] POSITION FindStylePos(const CStyleBlk* style) const noexcept { return m_styles.blks().find(style); }

    // Style block operations, with undo; the caller holds the step open.

    bool StyleNew(std::uint32_t time, CStyleBlk* style);
    /// The same while the transport runs.
    POSITION StyleRec(std::uint32_t time, CStyleBlk* style);
    bool StyleDel(POSITION style);
    /// Shares set-up and phrase data with the original.
    bool StyleCopy(POSITION style, std::uint32_t time);
    bool StyleMove(POSITION style, std::uint32_t time);
    /// An end not behind the top becomes one tick more than it.
    bool StyleSize(POSITION style, std::uint32_t end);
    /// Only strictly inside; the second half starts with the section's head.
    bool StyleDiv(POSITION style, std::uint32_t time);
    /// Joins a block to one that does not start later.
    bool StyleApp(POSITION style, POSITION other);

    // Settings of the style track: parts 0 to 15, of which 8 to 15 sound. They mark the song as modified.

    void InitStyleTrkInfo() noexcept { m_styles.info() = {}; }
    void GetStyleTrkInfo(_STYLE_TRK_INFO& info) const { info = m_styles.info(); }
    [[nodiscard]] std::uint8_t GetStylePort(int part) const noexcept;
    /// Sets part 0 to the same port.
    bool SetStylePort(int part, std::uint8_t port);
    [[nodiscard]] std::uint8_t GetStyleCh(int part) const noexcept;
    bool SetStyleCh(int part, std::uint8_t ch);
    [[nodiscard]] int GetStyleTrans(int part) const noexcept;
    bool SetStyleTrans(int part, int semitones);
    [[nodiscard]] bool GetStyleTransEnable(int part) const noexcept;
    bool SetStyleTransEnable(int part, bool on);
    [[nodiscard]] int GetStyleTransOfst() const noexcept { return m_styles.info().transOfst; }
    void SetStyleTransOfst(int semitones);
    [[nodiscard]] bool GetStyleBSetup() const noexcept { return m_styles.info().styleBSetup; }
    void SetStyleBSetup(bool on);
    [[nodiscard]] bool GetStyleBTempo() const noexcept { return m_styles.info().styleBTempo; }
    void SetStyleBTempo(bool on);
    [[nodiscard]] const std::string& GetStyleName() const noexcept { return m_styles.info().styleName; }
    void SetStyleName(const std::string& name);

    // Solo and mute of the style parts 8 to 15; a change does not mark the song.

    [[nodiscard]] bool GetStyleSolo(int part) const noexcept;
    [[nodiscard]] bool GetStyleMute(int part) const noexcept;
    bool SetStyleMute(int part, bool on);
    /// All parts; with `on` the tracks lose their solo.
    void SetStyleSolo(bool on);
    /// With `on` this part alone, and no track.
    bool SetStyleSoloExe(int part, bool on);
    /// The tracks lose their solo when a part has it.
    void SetStyleSolo();
    /// The parts of a port and channel; true when one matched. Solo leaves all others without.
    bool SetStyleChSoloOn(std::uint8_t port, std::uint8_t ch);
    bool SetStyleChSoloOff(std::uint8_t port, std::uint8_t ch);
    bool SetStyleChMuteOn(std::uint8_t port, std::uint8_t ch);
    bool SetStyleChMuteOff(std::uint8_t port, std::uint8_t ch);
    /// Sets the engine's switch of every part from solo and mute.
    void SetStyleOnOff() { m_soloMute.setStyleOnOff(); }

    // Construction by loaders: no hints, no undo ----------------------------------------------------------

    /// A new real block and a block of type 1 at `time`.
    bool NewBlk(int trk, std::uint32_t time);
    /// Signature or tempo in the master block.
    bool AddTs(std::uint32_t time, const std::uint8_t* data);
    bool AddTempo(std::uint32_t time, const std::uint8_t* data);
    /// An event of a block by number, which grows to the event's time: read from a stream at the tail, from a
    /// record at the tail, read from a stream in sorted place.
    bool NewAddTail(int trk, std::uint32_t blk, _EDT_SMF& smf);
    bool NewAddTailEvnt(int trk, std::uint32_t blk, const _EDT_EVNT& rec);
    bool NewSortEvnt(int trk, std::uint32_t blk, _EDT_SMF& smf);

    // Sound files that were unpacked for the song, which last as long as it is open ------------------------

    void AddTempWaveList(const std::string& path) { m_tempWaves.add(path); }
    /// Deletes the files.
    void RemoveTempWave() noexcept { m_tempWaves.removeFiles(); }
    void InitTempWaveList() noexcept { m_tempWaves.forget(); }
    /// Gives the wave events that name one file the name of another; false when there is none.
    bool ChngWaveFileName(const std::string& from, const std::string& to) { return renameWave(m_song, from, to); }

    // Song end --------------------------------------------------------------------------------------------

    /// Block-relative time of the last master event, or 0.
    [[nodiscard]] std::uint32_t GetTimeEndMstr() const noexcept;
    /// The largest block end of tracks 1 to 100.
    [[nodiscard]] std::uint32_t GetTimeEndTrk() const noexcept;
    [[nodiscard]] std::uint32_t GetTimeEndStyle() const noexcept { return m_styles.timeEnd(); }
    /// The largest of the three.
    [[nodiscard]] std::uint32_t GetTimeEnd() const;

    // Measure and tempo maps ------------------------------------------------------------------------------

    bool InitMeasInfo() { return m_maps.buildMeas(); }
    void RemoveMeasInfo() noexcept { m_maps.clearMeas(); }
    [[nodiscard]] MapPos GetHeadMeasInfoPos() const noexcept { return m_maps.meas().count() ? 1 : 0; }
    bool GetNextMeasInfo(MapPos& pos, _EDT_MEASINFO& rec) const noexcept;
    /// Index counted from 1; outside of the map it yields the last node.
    void GetMeasInfo(std::int64_t index, _EDT_MEASINFO& rec) const noexcept { rec = m_maps.meas().GetMeasInfo(index); }
    /// Answers measure and beat counted from 1.
    void TimeToMeas(std::uint32_t time, _EDT_MEAS& meas) const noexcept { meas = m_maps.meas().TimeToMeas(time); }
    /// The same for scans in ascending time; the first call has the head position, measure 0 and last 0.
    void TimeToMeas(std::uint32_t time, std::uint32_t* last, MapPos& pos, _EDT_MEAS& meas) const noexcept;
    /// Takes measure and beat counted from 0.
    [[nodiscard]] std::uint32_t MeasToTime(const _EDT_MEAS& meas) const noexcept
    {
        return m_maps.meas().MeasToTime(meas);
    }
    [[nodiscard]] std::uint32_t GetMeasTime(std::uint32_t time) const noexcept
    {
        return m_maps.meas().GetMeasTime(time);
    }
    [[nodiscard]] std::uint32_t GetBeatTime(std::uint32_t time, std::uint32_t* beat) const noexcept;

    bool InitTimeInfo() { return m_maps.buildTempo(); }
    void RemoveTimeInfo() noexcept { m_maps.clearTempo(); }
    void GetTimeInfo(std::uint32_t time, _EDT_TIMEINFO& rec) const noexcept { rec = m_maps.tempo().GetTimeInfo(time); }
    void GetHeadTimeInfo(_EDT_TIMEINFO& rec) const noexcept { rec = m_maps.tempo().GetHeadTimeInfo(); }
    [[nodiscard]] std::uint32_t TimeToMsecond(std::uint32_t time) const noexcept
    {
        return m_maps.tempo().TimeToMsecond(time);
    }
    [[nodiscard]] std::uint32_t MsecondToTime(std::uint32_t msec) const noexcept
    {
        return m_maps.tempo().MsecondToTime(msec);
    }
    [[nodiscard]] const SongMaps& maps() const noexcept { return m_maps; }

    // Time signatures of the master block -----------------------------------------------------------------
    // A change keeps the signatures behind it on their measure numbers; events of other kinds stay.

    /// After a signature was overwritten. `top`, `num` and `den` are its old time and values.
    void ChngTs(POSITION trk, POSITION blk, POSITION evnt, std::uint32_t top, std::uint8_t num, std::uint8_t den,
                const CEvnt* event);
    /// After a signature was inserted where `prev` was in force, before its insertion is recorded.
    void InsTs(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec, const _EDT_MEASINFO& prev);
    /// Takes a signature out, after its deletion was recorded.
    void DelTs(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec);
    /// Moves every signature from `evnt` to the tail, as a deletion and an insertion each.
    void UpdateTs(POSITION trk, POSITION blk, POSITION evnt, std::int64_t delta);
    /// Deletes every other signature at the tick of `evnt`.
    void DelDuplicateTs(POSITION trk, POSITION blk, POSITION evnt);
    /// Shifts signatures without undo.
    void ChngTs(POSITION trk, POSITION blk, POSITION evnt, std::int64_t delta);

    // Views and hints -------------------------------------------------------------------------------------

    void addObserver(HintObserver* view) { m_hints.addObserver(view); }
    void removeObserver(const HintObserver* view) noexcept { m_hints.removeObserver(view); }
    /// Tells all views but `view` a code, with the fields of the last hint.
    void Hint(const HintObserver* view, int code);

    void HintEvntChng(POSITION trk, POSITION blk, POSITION evnt);
    /// Builds the tempo map anew; wave blocks follow it.
    void HintTimeChng();
    /// Builds the measure map anew.
    void HintMeasChng();
    /// Builds the measure map anew.
    void HintTsChng(POSITION trk, POSITION blk, POSITION evnt);
    /// For a tempo event builds the tempo map anew.
    void HintLocationChng(POSITION trk, POSITION blk, POSITION oldEvnt, POSITION newEvnt);
    void HintDelEvnt(POSITION trk, POSITION blk, POSITION evnt);
    void HintInsEvnt(POSITION trk, POSITION blk, POSITION evnt);
    void HintInsRest(POSITION trk, POSITION blk, POSITION evnt);
    void HintBlkNew(POSITION trk, POSITION blk);
    void HintBlkRealRec(POSITION trk, POSITION blk);
    void HintBlkMove(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2);
    void HintBlkDel(POSITION trk, POSITION blk);
    void HintBlkApp(POSITION trk, POSITION blk);
    void HintBlkDiv(POSITION trk, POSITION blk, POSITION blk2);
    void HintBlkMerge(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2);
    void HintAddBlk(POSITION trk, POSITION blk);
    void HintBlkName(POSITION trk, POSITION blk);
    void HintTrkSolo(POSITION trk);
    void HintTrkSolo(int number) { HintTrkSolo(GetTrkPos(number)); }
    void HintTrkMute(POSITION trk, bool on);
    void HintChSolo(std::uint8_t port, std::uint8_t ch);
    void HintChMute(std::uint8_t port, std::uint8_t ch);
    /// The engine reads the tracks anew first.
    void HintTrkArrange(POSITION trk, POSITION trk2);
    void HintBlkReSize(POSITION trk, POSITION blk);
    void HintBlkReal(POSITION trk, POSITION blk);
    void HintBlkUpdate(POSITION trk, POSITION blk);
    /// The engine gets the channel, or port, first.
    void HintTrkCh(POSITION trk, std::uint8_t ch);
    void HintTrkCh(int number, std::uint8_t ch) { HintTrkCh(GetTrkPos(number), ch); }
    void HintTrkPort(POSITION trk, std::uint8_t port);
    void HintTrkPort(int number, std::uint8_t port) { HintTrkPort(GetTrkPos(number), port); }
    /// Ends an editing step: maps and views are up to date afterwards.
    void HintDispReq();
    void HintSoloMute();
    void HintTrkPort();
    void HintTrkType();
    void HintStyleNew(POSITION style);
    void HintStyleDel(POSITION style);
    void HintStyleMove(POSITION style, POSITION style2);
    void HintStyleSize(POSITION style);
    void HintSysSetupChng();
    void HintTrkInstType(POSITION trk);
    void HintTrkStaffType(POSITION trk);
    void HintTrkWavVol(POSITION trk);
    void HintKeyChng();
    void HintScrEvtMove(POSITION trk, POSITION blk, POSITION evnt, POSITION art, int artIndex, POSITION dsp,
                        int dspIndex);
    void HintScrEvtIndex(POSITION trk, POSITION blk, POSITION evnt, POSITION art, int artIndex, POSITION dsp,
                         int dspIndex);

    // What the present hint is about; to be read during the hint.
    void GetHint(POSITION& trk) const noexcept;
    void GetHint(POSITION& trk, POSITION& blk) const noexcept;
    void GetHint(POSITION& trk, POSITION& blk, POSITION& evnt) const noexcept;
    void GetHintLocationChng(POSITION& trk, POSITION& blk, POSITION& oldEvnt, POSITION& newEvnt) const noexcept;
    void GetHintBlkMove(POSITION& trk, POSITION& blk, POSITION& trk2, POSITION& blk2) const noexcept;
    void GetHintBlkDiv(POSITION& trk, POSITION& blk, POSITION& trk2, POSITION& blk2) const noexcept;
    void GetHintBlkMerge(POSITION& trk, POSITION& blk, POSITION& trk2, POSITION& blk2) const noexcept;
    void GetHintTrkArrange(POSITION& trk, POSITION& trk2) const noexcept;
    void GetHintCh(std::uint8_t& port, std::uint8_t& ch) const noexcept;
    [[nodiscard]] std::uint8_t GetHintCh() const noexcept { return m_hints.fields().ch; }
    [[nodiscard]] std::uint8_t GetHintPort() const noexcept { return m_hints.fields().port; }
    void GetHintStyle(POSITION& style) const noexcept;
    void GetHintStyle(POSITION& style, POSITION& style2) const noexcept;
    void GetHintScrEvt(POSITION& trk, POSITION& blk, POSITION& evnt, POSITION& art, int& artIndex, POSITION& dsp,
                       int& dspIndex) const noexcept;

private:
    void send(int code, const HintFields& fields) { m_hints.send(nullptr, code, this, fields); }
    void clearSong() noexcept;
    bool undoCore();
    bool redoCore();
    void clearMapFlags() noexcept;
    void hintMaps();
    template <class At, class Apply>
    bool applyAll(At first, At end, Apply&& apply);
    void changeChSolo(std::uint8_t port, std::uint8_t ch, bool on);
    void changeChMute(std::uint8_t port, std::uint8_t ch, bool on);
    void clearTrkSolo();
    void sendStyleTrans(int part);
    template <class Change>
    bool forStyleParts(std::uint8_t port, std::uint8_t ch, Change&& change);

    EditorPorts m_ports;
    Song m_song;
    SongMaps m_maps;
    HintBoard m_hints;
    StyleTrack m_styles;
    TempWaves m_tempWaves;
    StepFlags m_flags;
    UndoHistory m_history;
    ProgressBar m_progress;
    SoloMute m_soloMute;
    std::uint32_t m_fileLength = 0;
    bool m_modifyLock = false;
};

} // namespace tessaro
