// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "files/smf_out/record.h"
#include "files/smf_out/score_playout.h"

#include <cstdint>
#include <vector>

namespace tessaro {

class CEditor;
class CEvnt;

/// The lists that a song is sorted into for a ZP file.
struct ZpLists {
    RecordList main;
    RecordList info;     ///< texts of the information header
    RecordList messages; ///< lyrics and cue points
};

/// Flattens a song into lists of records sorted by time, repeats played out. All blocks of all tracks take part; solo
/// and mute do not matter. Events of equal tick keep the order in which they were merged: track, block, place in the
/// block. An event takes its track's channel, notes its transposition. Progress goes to the editor's bar.
///
/// Made for one save; it borrows the song and the score. Raises what the allocator raises. Main thread only.
class TESSARO_API SongMerger {
public:
    SongMerger(CEditor& editor, ScorePlayout& score);

    void MergeAll(RecordList& main);
    /// Tracks from the last to the first.
    void MergeZp(ZpLists& lists);
    /// One track; the master track takes the tempos of all score marks along.
    void MergeTrk(int number, RecordList& main);
    /// The MIDI tracks of a port; the master track is one of port 0.
    void MergeTrkVb(std::uint8_t port, RecordList& main);

private:
    /// What MergeScr lets pass: tempos, the other events, or both.
    enum class ScrPart : std::uint8_t { tempos = 1, others = 2, all = 3 };

    void SetRep();
    template <class Take>
    void forEvnts(int number, Take&& take);
    template <class ListOf>
    void mergeBlks(int number, ScrPart part, RecordList& main, ListOf&& listOf);
    void mergeTrk(int number, RecordList& main);
    void Merge(int number, const CEvnt& e, std::uint32_t time, RecordList& list);
    void mergeNote(int number, const CEvnt& e, SmfRecord record, RecordList& list);
    void MergeScr(int number, const CEvnt& link, std::uint32_t time, ScrPart part, RecordList& list);
    void MergeScrTempo(RecordList& list);
    void finish(RecordList& list) const;
    void showTrk(int number);
    void advance();

    CEditor& m_editor;
    ScorePlayout& m_score;
    std::vector<RepeatJump> m_jumps;
    std::vector<ScoreEvnt> m_scoreEvnts;
    std::uint64_t m_evnts = 0; ///< of the song
    std::uint64_t m_done = 0;
};

} // namespace tessaro
