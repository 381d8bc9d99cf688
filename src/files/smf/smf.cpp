// SPDX-License-Identifier: GPL-3.0-or-later
// What all formats share: the loop over a chunk, channel events, system exclusives and the making of blocks.
#include "files/smf/smf.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "files/recognise.h"

#include <new>

namespace tessaro {

CSmf::CSmf(CEditor& editor, const Strings& strings)
    : m_editor(editor)
    , m_strings(strings)
    , m_open(std::span<SmfTarget, 16>(m_targets.begin() + 1, m_targets.end()))
{
}

bool CSmf::Load(const _EDT_FILE& file)
{
    if (file.division == 0) return false;
    m_file = file;
    m_in = FileCursor(file.buffer, file.fileLength);
    m_clock = SmfClock(file.division);
    SmfTarget& master = m_targets[0];
    m_editor.GetTrk(0, &master.trk);
    m_editor.GetBlk(0, 0, &master.blk);
    if (!master.blk) return false;
    master.real = master.blk->GetRealBlk();
    try {
        switch (file.kind) {
        case filekind::smf0: return LoadSmf0();
        case filekind::smf1: return LoadSmf1();
        case filekind::zp: return LoadZp();
        default: return false;
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void CSmf::tellUnreadable() { m_editor.user().message(TextId::badEvent, MessageKind::error); }

void CSmf::startChunk(std::uint32_t length)
{
    m_chunkEnd = std::uint64_t{m_in.pos()} + length;
    m_clock.restart();
}

/// Runs over the chunk. The progress moves at each event whose running number has no bit of the mask.
bool CSmf::loadChunk(LoadEvnt load, std::uint32_t progressMask)
{
    for (std::uint32_t count = 0; m_in.pos() < m_chunkEnd; ++count) {
        if ((count & progressMask) == 0) m_editor.SetPrgDlgPos(m_in.pos());
        if (readEvntStart() && (this->*load)()) continue;
        if (m_badStatus && !m_open.empty()) tellUnreadable(); // for the notes that look ahead for their end
        tellUnreadable();
        return false;
    }
    m_open.closeAll(m_clock);
    return true;
}

/// Reads delta and status.
bool CSmf::readEvntStart()
{
    std::uint32_t delta = 0;
    if (!m_in.ReadVarLenQnt(delta)) return false;
    m_clock.advance(delta);
    return m_in.readByte(m_status);
}

/// A data byte in the place of the status stands for the running status.
void CSmf::takeChannelStatus()
{
    if (m_status & 0x80U) {
        m_running = m_status;
    } else {
        m_status = m_running;
        m_in.stepBack();
    }
    m_target = static_cast<Target>(status::channel(m_status) + 1);
}

bool CSmf::LoadChannelEvnt()
{
    takeChannelStatus();
    switch (status::kind(m_status)) {
    case status::noteOff: return LoadNoteOff();
    case status::note: return LoadNoteOn();
    case status::polyPressure:
    case status::control:
    case status::pitchBend: return Load3();
    case status::program:
    case status::pressure: return Load2();
    default: m_badStatus = true; return false;
    }
}

bool CSmf::LoadNoteOff()
{
    std::uint8_t pitch = 0;
    if (!m_in.readByte(pitch) || !m_in.skip(1)) return false;
    closeNote(pitch);
    return true;
}

bool CSmf::LoadNoteOn()
{
    std::uint8_t pitch = 0;
    std::uint8_t velocity = 0;
    if (!m_in.readByte(pitch) || !m_in.readByte(velocity)) return false;
    if (velocity == 0) {
        closeNote(pitch);
        return true;
    }
    CEvnt* note = needBlk() ? addEvnt() : nullptr;
    if (!note) return false;
    note->SetPost1(pitch);
    note->SetPost2(velocity);
    m_open.open(*note, m_clock);
    return true;
}

bool CSmf::Load3()
{
    std::uint8_t post1 = 0;
    std::uint8_t post2 = 0;
    CEvnt* event = m_in.readByte(post1) && m_in.readByte(post2) ? addShort() : nullptr;
    if (!event) return false;
    event->SetPost1(post1);
    event->SetPost2(post2);
    return true;
}

bool CSmf::Load2()
{
    std::uint8_t post1 = 0;
    CEvnt* event = m_in.readByte(post1) ? addShort() : nullptr;
    if (!event) return false;
    event->SetPost1(post1);
    return true;
}

bool CSmf::LoadSys()
{
    if (!needBlk()) return false;
    target().setEnd(m_clock.time());
    std::span<const std::uint8_t> body;
    CEvnt* event = readBody(body) ? addEvnt() : nullptr;
    return event && event->SetSys(m_clock.time(), static_cast<std::uint32_t>(body.size()), body.data(), 0, m_status);
}

/// Reads type, length and body.
bool CSmf::readMeta(Meta& meta) { return m_in.readByte(meta.type) && readBody(meta.body); }

bool CSmf::readBody(std::span<const std::uint8_t>& body)
{
    std::uint32_t length = 0;
    if (!m_in.ReadVarLenQnt(length)) return false;
    body = {m_in.bytes() + m_in.pos(), std::size_t{0}};
    if (!m_in.skip(length)) return false;
    body = {body.data(), length};
    return true;
}

bool CSmf::needBlk()
{
    if (target().blk) return true;
    return m_file.kind == filekind::smf1 ? LoadSmf1NewBlk() : LoadSmf0NewBlk();
}

/// Gives the target a block at tick 0 on a track, which becomes a MIDI track on the target's channel.
bool CSmf::newBlk(int trk)
{
    SmfTarget made;
    if (!m_editor.GetTrk(trk, &made.trk)) return false;
    made.trk->SetType(trktype::midi);
    made.trk->SetCh(static_cast<std::uint8_t>(m_target - 1));
    made.trk->NewAddTail(&made.blk);
    made.real = m_editor.NewAddTailRealBlk();
    if (!made.blk || !made.real) return false;
    made.blk->Set(0, made.real, blktype::real);
    target() = made;
    return true;
}

/// A new event at the end of the target's block; null when memory is out.
CEvnt* CSmf::addEvnt()
{
    CEvnt* event = nullptr;
    target().real->NewAddTail(&event);
    if (!event) return nullptr;
    event->SetTime(m_clock.time());
    event->SetStatus(m_status);
    return event;
}

/// A new event that lengthens the block up to its time.
CEvnt* CSmf::addShort()
{
    if (!needBlk()) return nullptr;
    target().raiseEnd(m_clock.time());
    return addEvnt();
}

/// Appends a meta event; one whose type no event can have is left out.
bool CSmf::addMeta(const Meta& meta)
{
    if (meta.type >= 0x80) return true;
    CEvnt* event = addEvnt();
    return event
        && event->SetMeta(m_clock.time(), meta.type, static_cast<std::uint32_t>(meta.body.size()), meta.body.data(), 0);
}

} // namespace tessaro
