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
    m_in = ByteReader({file.buffer, file.fileLength});
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
    m_chunkEnd = m_in.position() + length;
    m_clock.restart();
}

/// Runs over the chunk. The progress moves at each event whose running number has no bit of the mask.
bool CSmf::loadChunk(LoadEvnt load, std::uint32_t progressMask)
{
    for (std::uint32_t count = 0; m_in.position() < m_chunkEnd; ++count) {
        if ((count & progressMask) == 0) m_editor.SetPrgDlgPos(static_cast<std::uint32_t>(m_in.position()));
        if (readEvntStart() && (this->*load)()) continue;
        if (m_badStatus && !m_open.empty()) tellUnreadable(); // once for the open notes, which meet it too
        tellUnreadable();
        return false;
    }
    m_open.closeAll(m_clock);
    return true;
}

/// Reads delta and status.
bool CSmf::readEvntStart()
{
    m_clock.advance(m_in.vlq());
    m_status = m_in.u8();
    return m_in.ok();
}

/// A data byte in the place of the status stands for the running status.
void CSmf::takeChannelStatus()
{
    if (m_status & 0x80U) {
        m_running = m_status;
    } else {
        m_status = m_running;
        m_in.seek(m_in.position() - 1);
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
    const std::uint8_t pitch = m_in.u8();
    m_in.skip(1);
    if (m_in.ok()) closeNote(pitch);
    return m_in.ok();
}

bool CSmf::LoadNoteOn()
{
    const std::uint8_t pitch = m_in.u8();
    const std::uint8_t velocity = m_in.u8();
    if (!m_in.ok()) return false;
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
    const std::uint8_t post1 = m_in.u8();
    const std::uint8_t post2 = m_in.u8();
    CEvnt* event = addShort();
    if (!event) return false;
    event->SetPost1(post1);
    event->SetPost2(post2);
    return true;
}

bool CSmf::Load2()
{
    const std::uint8_t post1 = m_in.u8();
    CEvnt* event = addShort();
    if (!event) return false;
    event->SetPost1(post1);
    return true;
}

bool CSmf::LoadSys()
{
    if (!needBlk()) return false;
    target().setEnd(m_clock.time());
    const ByteReader::Bytes body = m_in.bytes(m_in.vlq());
    CEvnt* event = m_in.ok() ? addEvnt() : nullptr;
    return event && event->SetSys(m_clock.time(), static_cast<std::uint32_t>(body.size()), body.data(), 0, m_status);
}

/// Reads type, length and body.
bool CSmf::readMeta(Meta& meta)
{
    meta.type = m_in.u8();
    meta.body = m_in.bytes(m_in.vlq());
    return m_in.ok();
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

/// A new event that lengthens the block up to its time; null as well when its bytes could not be read.
CEvnt* CSmf::addShort()
{
    if (!m_in.ok() || !needBlk()) return nullptr;
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
