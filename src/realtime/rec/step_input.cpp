// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/step_input.h"

#include "core/edit/undo_scope.h"
#include "core/model/tick.h"
#include "realtime/loom/que_rec.h"
#include "realtime/play/smc.h"

#include <algorithm>
#include <string>

namespace tessaro {

namespace {

constexpr std::uint32_t newBlkLength = 1920;

POSITION firstArmedTrk(const CEditor& editor)
{
    for (int number = 1; number < trackCount; ++number) {
        CTrk* trk = nullptr;
        if (editor.GetTrk(number, &trk) && trk->GetRec() && trk->GetType() != trktype::wave)
            return editor.GetTrkPos(number);
    }
    return nullptr;
}

/// The first block of a track for which `matches` holds.
template <class Matches>
CBlk* findOn(const CEditor& editor, POSITION trk, Matches&& matches)
{
    CBlk* blk = nullptr;
    for (POSITION at = editor.GetHeadBlkPos(trk); at && editor.GetNextBlk(trk, at, &blk);)
        if (matches(*blk)) return blk;
    return nullptr;
}

} // namespace

bool StepInput::begin(std::uint32_t tick, const LoopRange& loop)
{
    m_editor = m_smc.song();
    m_trk = m_editor ? firstArmedTrk(*m_editor) : nullptr;
    m_blk = nullptr;
    m_tick = tick;
    m_loop = loop;
    m_recNotes.clear();
    m_recChord.clear();
    if (!m_trk || (!findBlk() && !makeFirstBlk())) {
        m_editor = nullptr;
        return false;
    }
    m_palette->showForInput(true);
    return true;
}

void StepInput::end()
{
    if (!m_editor) return;
    m_editor = nullptr;
    m_smc.smcLocate(m_tick, false);
    m_palette->showForInput(false);
}

void StepInput::received(const LoomRingEntry& entry)
{
    if (!m_editor) return;
    const Key key{static_cast<std::uint8_t>(status::note | (entry.status & 0x0FU)), entry.data1};
    const std::uint8_t kind = status::kind(entry.status);
    if (kind == status::note && entry.data2 != 0)
        press(key);
    else if (kind == status::note || kind == status::noteOff)
        release(key);
}

void StepInput::press(const Key& key)
{
    if (m_recNotes.size() < mostKeys) m_recNotes.push_back(key);
    m_recChord.clear();
}

void StepInput::release(const Key& key)
{
    const auto held = std::ranges::find(m_recNotes, key);
    if (held == m_recNotes.end()) return;
    m_recNotes.erase(held);
    m_recChord.push_back(key);
    if (!m_recNotes.empty()) return;
    if (enterChord()) advance();
    m_recChord.clear();
}

bool StepInput::enterChord()
{
    const UndoScope step(*m_editor, std::string(m_strings(TextId::undoEventInsert)));
    if (!step || (!findBlk() && !makeBlk())) return false;
    _EDT_EVNT note;
    note.time = m_tick;
    note.post2 = static_cast<std::uint8_t>(m_palette->GetVolocity());
    const std::int64_t gate = std::int64_t{m_palette->GetDuration()} * m_palette->step() / 100;
    note.gateTime = std::max(tick::clamped(gate), std::uint32_t{1});
    for (const Key& key : m_recChord) {
        note.status = key.status;
        note.post1 = key.note;
        m_editor->RecEvnt(m_trk, m_blk, note);
    }
    return true;
}

void StepInput::advance()
{
    const std::uint32_t next = tick::later(m_tick, m_palette->step());
    const bool wraps = m_loop.on && m_tick < m_loop.end && next >= m_loop.end;
    m_tick = wraps ? m_loop.start : next;
}

/// Finds the block for the present tick: the one before, as long as it stands and does not begin later, otherwise one
/// that reaches over the tick.
bool StepInput::findBlk()
{
    const CBlk* before = GetRecBlk(m_trk);
    if (before && before->GetTimeTop() <= m_tick) return true;
    m_blk = findOn(*m_editor, m_trk, [&](const CBlk& blk) {
        return blk.GetType() == blktype::real && blk.GetTimeTop() <= m_tick && m_tick < blk.GetTimeEnd();
    });
    return m_blk;
}

/// Within an editing step.
bool StepInput::makeBlk()
{
    m_blk = m_editor->BlkRec(m_trk, m_tick, tick::later(m_tick, newBlkLength));
    return m_blk;
}

bool StepInput::makeFirstBlk()
{
    const UndoScope step(*m_editor, std::string(m_strings(TextId::undoBlockNew)));
    return step && makeBlk();
}

const CBlk* StepInput::GetRecBlk(POSITION trk) const
{
    // Compared, not looked into: a block that an undo took away may be gone for good.
    if (!m_editor || trk != m_trk) return nullptr;
    return findOn(*m_editor, m_trk, [&](const CBlk& blk) { return &blk == m_blk; });
}

} // namespace tessaro
