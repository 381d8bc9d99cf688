// SPDX-License-Identifier: GPL-3.0-or-later
// Format 1: each channel of a chunk gets a track of its own, in the order of first use.
#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "files/smf/port_meta.h"
#include "files/smf/smf.h"

#include <algorithm>
#include <string>

namespace tessaro {

bool CSmf::LoadSmf1()
{
    m_editor.SetPrgDlgText(m_strings(TextId::progressLoadSmf1));
    m_editor.SetPrgDlgRange(0, m_file.numTrk);
    m_in.seek(m_file.mtrkOffset);
    // Once an event has found no track, no later chunk can find one: what follows would leave no trace.
    for (std::uint32_t chunk = 0; chunk < m_file.numTrk && !m_partial; ++chunk) {
        m_editor.SetPrgDlgPos(chunk);
        m_in.skip(4);
        const std::uint32_t length = m_in.u32be();
        if (!m_in.ok()) {
            m_partial = true;
            return !tracksLeft();
        }
        startChunk(length);
        std::fill(m_targets.begin() + 1, m_targets.end(), SmfTarget{});
        m_port = -1;
        m_firstCh = Get1stCh();
        if (!LoadSmf1Trk()) return false;
        setPorts();
        m_firstChunk = false;
    }
    return true;
}

/// The channel of the chunk's first channel event, plus 1; 1 without one.
CSmf::Target CSmf::Get1stCh() const
{
    ByteReader in = m_in;
    while (in.ok() && in.position() < m_chunkEnd) {
        in.vlq();
        const std::uint8_t byte = in.u8();
        if (byte == status::sysex || byte == status::sysexPart || byte == status::metaEvent) {
            if (byte == status::metaEvent) in.skip(1);
            in.skip(in.vlq());
        } else {
            const std::uint8_t first = byte & 0x80U ? byte : m_running;
            return first < status::sysex ? static_cast<Target>(status::channel(first) + 1) : Target{1};
        }
    }
    return 1;
}

/// Reads the chunk. When no track is left, an event that fails ends the chunk, and the load succeeds.
bool CSmf::LoadSmf1Trk()
{
    while (m_in.position() < m_chunkEnd) {
        const ByteReader in = m_in;
        const SmfClock clock = m_clock;
        if (readEvntStart() && LoadSmf1Evnt()) continue;
        if (tracksLeft()) {
            if (m_badStatus && !m_open.empty()) tellUnreadable();
            return false;
        }
        m_partial = true;
        m_in = in;
        m_clock = clock;
        pairRest();
    }
    m_open.closeAll(m_clock);
    return true;
}

/// Looks for the ends of the open notes in the rest of a chunk whose reading has ended.
void CSmf::pairRest()
{
    while (m_in.position() < m_chunkEnd && !m_open.empty() && readEvntStart() && skipEvnt()) {}
    m_chunkEnd = m_in.position();
}

/// Steps over an event, but for what it means to open notes.
bool CSmf::skipEvnt()
{
    Meta meta;
    if (m_status == status::metaEvent) return readMeta(meta);
    if (m_status == status::sysex || m_status == status::sysexPart) {
        m_in.skip(m_in.vlq());
        return m_in.ok();
    }
    takeChannelStatus();
    const std::uint8_t kind = status::kind(m_status);
    if (kind < status::noteOff || kind > status::pitchBend) {
        tellUnreadable();
        return false;
    }
    const std::uint8_t post1 = m_in.u8();
    if (kind == status::noteOff && m_in.ok()) closeNote(post1);
    if (kind == status::program || kind == status::pressure) return m_in.ok();
    const std::uint8_t post2 = m_in.u8();
    if (kind == status::note && post2 == 0 && m_in.ok()) closeNote(post1);
    return m_in.ok();
}

void CSmf::setPorts()
{
    if (m_port < 0) return;
    for (std::size_t ch = 1; ch < m_targets.size(); ++ch)
        if (m_targets[ch].trk) m_targets[ch].trk->SetPort(static_cast<std::uint8_t>(m_port));
}

bool CSmf::LoadSmf1Evnt()
{
    m_target = m_firstCh;
    switch (m_status) {
    case status::sysex:
    case status::sysexPart: return LoadSys();
    case status::metaEvent: return LoadSmf1Meta();
    default: return LoadChannelEvnt();
    }
}

/// Metas of the first chunk are the master track's, those of later chunks may name their track.
bool CSmf::LoadSmf1Meta()
{
    Meta meta;
    if (!readMeta(meta)) return false;
    if (m_firstChunk) {
        m_target = 0;
    } else {
        if (!needBlk()) return false;
        target().setEnd(m_clock.time());
    }
    if (meta.type == meta::endOfTrack) return true;
    if (meta.type == meta::sequencer && isPort(meta.body)) {
        m_port = meta.body[3];
        return true;
    }
    const bool isName = (meta.type == meta::trackName || meta.type == meta::text) && m_clock.time() == 0;
    if (isName && !m_firstChunk) {
        target().trk->SetName(std::string(meta.body.begin(), meta.body.end()));
        return true;
    }
    if (m_firstChunk) target().setEnd(m_clock.time());
    return addMeta(meta);
}

bool CSmf::LoadSmf1NewBlk()
{
    if (!tracksLeft() || !newBlk(m_nextTrk)) return false;
    target().trk->SetTransEnable(m_target != 10);
    ++m_nextTrk;
    return true;
}

} // namespace tessaro
