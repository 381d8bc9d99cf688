// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/smf_out/song_merger.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "core/model/tick.h"
#include "files/smf_out/stages.h"

#include <string>
#include <string_view>

namespace tessaro {

namespace {

constexpr std::string_view illegalRepeat = "Illegal repeat event location !!!!\nrepeat events are not expand";
constexpr std::uint8_t cuePoint = 0x07;      ///< meta type
constexpr std::uint32_t progressMask = 0xFF; ///< the bar moves with every 256th event

std::string_view bodyOf(const CEvnt& e) noexcept
{
    return {reinterpret_cast<const char*>(e.payload().data()), e.payload().size()};
}

/// Not a test of what the text begins with: all that sorts behind these words counts.
bool IsZpihEvnt(const CEvnt& e) noexcept
{
    if (!e.isMeta(meta::text) || e.GetSzData() < 4) return false;
    return bodyOf(e) >= "ZPhd" || bodyOf(e) >= "ZPln";
}

bool IsZpkmEvnt(const CEvnt& e) noexcept { return e.isMeta(meta::lyric) || e.isMeta(cuePoint); }

SmfRecord recordOf(const CEvnt& e, std::uint32_t time, std::uint8_t ch) noexcept
{
    return {.time = time,
            .gate = e.GetGateTime(),
            .status = static_cast<std::uint8_t>(status::kind(e.GetStatus()) | ch),
            .post1 = e.GetPost1(),
            .post2 = e.GetPost2(),
            .post3 = e.GetPost3(),
            .post4 = e.GetPost4()};
}

std::uint64_t countEvnts(const Song& song) noexcept
{
    std::uint64_t count = 0;
    for (const CTrk* trk = song.trks().head(); trk; trk = List<CTrk>::next(trk))
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) count += blk->GetNum();
    return count;
}

} // namespace

SongMerger::SongMerger(CEditor& editor, ScorePlayout& score)
    : m_editor(editor)
    , m_score(score)
    , m_evnts(countEvnts(editor.song()))
{
    m_editor.SetPrgDlgRangeSpd();
    SetRep();
    m_score.SetColl(m_editor);
}

void SongMerger::SetRep()
{
    if (m_score.SetRep(m_editor, m_jumps)) return;
    m_jumps.clear();
    m_editor.user().sentence(illegalRepeat, MessageKind::warning);
}

void SongMerger::MergeAll(RecordList& main)
{
    for (int number = 0; number < trackCount; ++number) {
        showTrk(number);
        mergeBlks(number, ScrPart::all, main, [&main](const CEvnt&) -> RecordList& { return main; });
    }
    finish(main);
}

void SongMerger::MergeZp(ZpLists& lists)
{
    for (int number = trackCount - 1; number >= 0; --number) {
        showTrk(number);
        mergeBlks(number, ScrPart::all, lists.main, [&lists](const CEvnt& e) -> RecordList& {
            if (IsZpihEvnt(e)) return lists.info;
            return IsZpkmEvnt(e) ? lists.messages : lists.main;
        });
    }
    finish(lists.main);
    finish(lists.info);
    finish(lists.messages);
}

void SongMerger::MergeTrk(int number, RecordList& main)
{
    mergeTrk(number, main);
    if (number == 0) MergeScrTempo(main);
    finish(main);
}

void SongMerger::MergeTrkVb(std::uint8_t port, RecordList& main)
{
    for (int number = 0; number < trackCount; ++number) {
        const CTrk& trk = *m_editor.song().trk(number);
        const bool takesPart = number == 0 ? port == 0 : trk.GetType() == trktype::midi && trk.GetPort() == port;
        if (takesPart) mergeTrk(number, main);
    }
    if (port == 0) MergeScrTempo(main);
    finish(main);
}

void SongMerger::mergeTrk(int number, RecordList& main)
{
    const ScrPart part = number == 0 ? ScrPart::all : ScrPart::others;
    mergeBlks(number, part, main, [&main](const CEvnt&) -> RecordList& { return main; });
}

/// Hands over each event of a track with its absolute time.
template <class Take>
void SongMerger::forEvnts(int number, Take&& take)
{
    const CTrk& trk = *m_editor.song().trk(number);
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        const std::uint32_t top = blk->GetTimeTop();
        m_score.SetCollLocation(number, top);
        for (POSITION pos = blk->GetHeadPos(); pos; pos = pos->next) {
            const CEvnt& e = *List<CEvnt>::get(pos);
            take(e, tick::later(top, e.GetTime()));
        }
    }
}

/// Appends the events of a track; `listOf` names the list of a plain event.
template <class ListOf>
void SongMerger::mergeBlks(int number, ScrPart part, RecordList& main, ListOf&& listOf)
{
    forEvnts(number, [&](const CEvnt& e, std::uint32_t time) {
        advance();
        if (!e.isMeta(meta::sequencer) || !m_editor.GetScrArtIndex(e))
            Merge(number, e, time, listOf(e));
        else if (number != 0 || !m_score.isTempoMark(e))
            MergeScr(number, e, time, part, main);
    });
}

void SongMerger::Merge(int number, const CEvnt& e, std::uint32_t time, RecordList& list)
{
    const std::uint8_t ch = m_editor.song().trk(number)->GetCh();
    switch (status::kind(e.GetStatus())) {
    case 0xF0: list.push_back({.time = time, .event = &e, .status = e.GetStatus()}); break;
    case status::nrpn:
    case status::rpn:
    case status::voice:
    case status::polyPressure:
    case status::control:
    case status::program:
    case status::pressure:
    case status::pitchBend: list.push_back(recordOf(e, time, ch)); break;
    case status::syng:
    case status::note: mergeNote(number, e, recordOf(e, time, ch), list); break;
    default: break;
    }
}

void SongMerger::mergeNote(int number, const CEvnt& e, SmfRecord record, RecordList& list)
{
    const CTrk& trk = *m_editor.song().trk(number);
    if (trk.GetTransEnable() && trk.GetTrans() != 0) record.post1 = foldPitch(record.post1 + trk.GetTrans());
    const bool isSyng = status::kind(record.status) == status::syng;
    if (isSyng) record.event = &e;
    list.push_back(record);
    if (isSyng) return;
    const int octave = m_score.ChkColl(number, record.time, record.post1);
    if (octave == 0) return;
    record.post1 = foldPitch(record.post1 + octave);
    list.push_back(record);
}

/// Puts what a score entry sounds in the place of its link.
void SongMerger::MergeScr(int number, const CEvnt& link, std::uint32_t time, ScrPart part, RecordList& list)
{
    m_scoreEvnts.clear();
    m_score.appendEvnts(number, link, time, m_scoreEvnts);
    for (const ScoreEvnt& e : m_scoreEvnts) {
        const ScrPart kind = e.event->isMeta(meta::tempo) ? ScrPart::tempos : ScrPart::others;
        if (part == ScrPart::all || part == kind) Merge(number, *e.event, e.time, list);
    }
}

void SongMerger::MergeScrTempo(RecordList& list)
{
    if (!m_editor.score().any()) return;
    for (int number = 0; number < trackCount; ++number)
        forEvnts(number, [&](const CEvnt& e, std::uint32_t time) {
            if (e.isMeta(meta::sequencer) && m_editor.GetScrArtIndex(e))
                MergeScr(number, e, time, ScrPart::tempos, list);
        });
}

void SongMerger::finish(RecordList& list) const
{
    sortByTime(list);
    if (m_jumps.empty()) return;
    RecordList scratch;
    Repeat(list, m_jumps, scratch);
    list.swap(scratch);
}

void SongMerger::showTrk(int number) { m_editor.SetPrgDlgText("Merge Track " + std::to_string(number + 1)); }

void SongMerger::advance()
{
    if ((m_done++ & progressMask) == 0) m_editor.SetPrgDlgPosSpd(static_cast<std::uint32_t>(m_done * 100 / m_evnts));
}

} // namespace tessaro
