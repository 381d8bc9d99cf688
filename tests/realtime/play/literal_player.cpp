// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/literal_player.h"

#include <algorithm>

namespace tessaro::test {

LiteralPlayer::LiteralPlayer(const CEditor& editor, std::uint32_t from, std::uint32_t loopStart, std::uint32_t loopEnd)
    : m_editor(editor)
    , m_now(from)
    , m_loopStart(loopStart)
    , m_loopEnd(loopEnd)
{
    for (int track = 0; track < trackCount; ++track) {
        for (const CBlk* blk = editor.song().trk(track)->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            Block block{track, blk->GetTimeTop(), {}};
            POSITION pos = blk->GetHeadPos();
            _EDT_EVNT event;
            while (blk->GetNextEvnt(pos, event)) block.events.push_back(event);
            m_blocks.push_back(block);
        }
    }
    place(from);
}

void LiteralPlayer::place(std::uint32_t tick)
{
    for (Block& block : m_blocks) {
        block.next = 0;
        while (block.next < block.events.size() && block.top + block.events[block.next].time < tick) ++block.next;
        block.finished = block.next == block.events.size();
        if (!block.finished) block.wait = std::int64_t{block.top} + block.events[block.next].time - tick + 1;
    }
}

std::vector<LiteralPlayer::Out> LiteralPlayer::steps(unsigned count)
{
    for (; count > 0; --count) {
        ++m_now;
        if (m_loopStart != m_loopEnd && m_now == m_loopEnd) {
            for (NoteOff& note : m_notes) {
                note.out.tick = m_now - m_bias;
                m_out.push_back(note.out);
            }
            m_notes.clear();
            place(m_loopStart);
            m_now = m_loopStart;
            m_bias = 0;
        } else {
            for (NoteOff& note : m_notes) --note.wait;
            while (!m_notes.empty() && m_notes.front().wait < 1) {
                m_notes.front().out.tick = m_now - m_bias;
                m_out.push_back(m_notes.front().out);
                m_notes.erase(m_notes.begin());
            }
        }
        stepTracks();
    }
    return m_out;
}

void LiteralPlayer::stepTracks()
{
    for (Block& block : m_blocks) {
        if (block.finished) continue;
        --block.wait;
        while (block.wait == 0 && !block.finished) {
            const _EDT_EVNT& event = block.events[block.next];
            handle(block.track, event);
            if (++block.next < block.events.size())
                block.wait = block.events[block.next].time - event.time;
            else
                block.finished = true;
        }
    }
}

void LiteralPlayer::put(int track, std::uint8_t status, std::vector<std::uint8_t> data)
{
    const CTrk& trk = *m_editor.song().trk(track);
    if (status < 0xF0) status = static_cast<std::uint8_t>((status & 0xF0U) | trk.GetCh());
    data.insert(data.begin(), status);
    m_out.push_back({m_now - m_bias, trk.GetPort(), std::move(data)});
}

void LiteralPlayer::handle(int track, const _EDT_EVNT& event)
{
    const CTrk& trk = *m_editor.song().trk(track);
    const int key = event.post1 + (trk.GetTransEnable() ? trk.GetTrans() : 0);
    switch (event.status & 0xF0U) {
    case 0x10:
        put(track, 0xB0, {99, event.post1});
        put(track, 0xB0, {98, event.post2});
        put(track, 0xB0, {6, event.post3});
        break;
    case 0x20:
        put(track, 0xB0, {101, event.post1});
        put(track, 0xB0, {100, event.post2});
        put(track, 0xB0, {6, event.post3});
        break;
    case 0x30:
        put(track, 0xB0, {0, event.post1});
        put(track, 0xB0, {32, event.post2});
        put(track, 0xC0, {event.post3});
        break;
    case 0x90: {
        if (m_notes.size() == 512) break;
        put(track, 0x90, {static_cast<std::uint8_t>(key), event.post2});
        NoteOff off{std::max<std::int64_t>(event.gateTime, 1), m_out.back()};
        off.out.bytes[2] = 0;
        const auto place =
            std::find_if(m_notes.begin(), m_notes.end(), [&](const NoteOff& n) { return n.wait > off.wait; });
        m_notes.insert(place, off);
        break;
    }
    case 0xA0: put(track, 0xA0, {static_cast<std::uint8_t>(key), event.post2}); break;
    case 0xB0:
    case 0xE0: put(track, event.status, {event.post1, event.post2}); break;
    case 0xC0:
    case 0xD0: put(track, event.status, {event.post1}); break;
    default:
        if (event.status == 0xF0) put(track, 0xF0, {event.data, event.data + event.szData});
        break;
    }
}

} // namespace tessaro::test
