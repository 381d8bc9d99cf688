// SPDX-License-Identifier: GPL-3.0-or-later
// Format 0 and its ZP extension: channel n goes to track n.
#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "files/smf/port_meta.h"
#include "files/smf/smf.h"

namespace tessaro {

bool CSmf::LoadSmf0()
{
    m_in.seek(m_file.mtrkOffset + 8);
    startChunk(m_file.mtrkLength);
    m_editor.SetPrgDlgText(m_strings(TextId::progressLoadSmf0));
    m_editor.SetPrgDlgRange(0, static_cast<std::uint32_t>(m_chunkEnd));
    return loadChunk(&CSmf::LoadSmf0Evnt, 0xFF);
}

bool CSmf::LoadSmf0Evnt()
{
    switch (m_status) {
    case status::sysex:
    case status::sysexPart: m_target = 1; return LoadSys();
    case status::metaEvent: m_target = 0; return LoadSmf0Meta();
    default: return LoadChannelEvnt();
    }
}

bool CSmf::LoadSmf0Meta()
{
    Meta meta;
    if (!readMeta(meta)) return false;
    if (meta.type == meta::endOfTrack || isPort(meta.body)) return true;
    if (meta.type == meta::lyric) m_target = 1;
    if (!needBlk()) return false;
    target().setEnd(m_clock.time());
    return addMeta(meta);
}

bool CSmf::LoadSmf0NewBlk() { return newBlk(m_target); }

bool CSmf::LoadZp()
{
    if (!LoadSmf0()) return false;
    m_target = 1;
    return needBlk() && LoadZpih() && LoadZpkm();
}

bool CSmf::LoadZpih() { return loadZpChunk(m_file.zpihOffset, m_file.zpihLength, TextId::progressLoadZpInfo); }

bool CSmf::LoadZpkm() { return loadZpChunk(m_file.zpkmOffset, m_file.zpkmLength, TextId::progressLoadZpKaraoke); }

bool CSmf::loadZpChunk(std::uint32_t offset, std::uint32_t length, TextId text)
{
    m_in.seek(offset + 8);
    startChunk(length);
    m_sorted = {m_targets[0].real->GetHeadPos(), m_targets[1].real->GetHeadPos()};
    m_editor.SetPrgDlgText(m_strings(text));
    m_editor.SetPrgDlgRange(static_cast<std::uint32_t>(m_in.position()), static_cast<std::uint32_t>(m_chunkEnd));
    return loadChunk(&CSmf::LoadZpEvnt, 0);
}

/// Takes metas alone, and puts them in their places among the events that stand there.
bool CSmf::LoadZpEvnt()
{
    Meta meta;
    if (m_status != status::metaEvent || !readMeta(meta)) return false;
    if (meta.type == meta::endOfTrack) return true;
    m_target = meta.type == meta::lyric ? 1 : 0;
    const std::uint32_t time = m_clock.time();
    target().raiseEnd(time);
    if (meta.type >= 0x80) return true;
    CRealBlk& real = *target().real;
    CEvnt* event = nullptr;
    real.New(&event);
    if (!event) return false;
    const auto size = static_cast<std::uint32_t>(meta.body.size());
    if (!event->SetMeta(time, meta.type, size, meta.body.data(), 0)) {
        real.Delete(event);
        return false;
    }
    real.Sort(m_sorted[m_target], time, event);
    return true;
}

} // namespace tessaro
