// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/note_audition.h"

#include "core/edit/editor.h"
#include "realtime/play/smc.h"

#include <algorithm>

namespace tessaro {

namespace {
constexpr std::uint8_t noteOn = 0x90;
constexpr int highestKey = 127;
} // namespace

void NoteAudition::start(int track, std::uint8_t key, std::uint8_t velocity)
{
    stop();
    add(track, key, velocity);
}

void NoteAudition::add(int track, std::uint8_t key, std::uint8_t velocity)
{
    const CTrk* trk = m_editor.song().trk(track);
    if (!trk || track == 0 || trk->GetType() == trktype::wave || velocity == 0 || velocity > highestKey) return;
    const int sent = key + (trk->GetTransEnable() ? trk->GetTrans() : 0);
    if (sent < 0 || sent > highestKey) return;

    const Note note{trk->GetPort(), static_cast<std::uint8_t>(noteOn | trk->GetCh()), static_cast<std::uint8_t>(sent)};
    auto at = std::ranges::find(m_sounding, note, &Sounding::note);
    const bool isNew = at == m_sounding.end();
    if (!isNew && !at->isEnding) return;
    if (isNew) at = m_sounding.insert(at, {note}); // before it begins, so that it can be ended whatever happens
    if (m_smc.smcSendShortMsg(note.port, note.status, note.key, velocity) == 0)
        at->isEnding = false;
    else if (isNew)
        m_sounding.erase(at);
}

void NoteAudition::stop()
{
    for (Sounding& sounding : m_sounding) sounding.isEnding = true;
    retry();
}

void NoteAudition::retry()
{
    const auto isOver = [this](const Sounding& s) {
        return s.isEnding && m_smc.smcSendShortMsg(s.note.port, s.note.status, s.note.key, 0) == 0;
    };
    std::erase_if(m_sounding, isOver);
    if (onRefused && std::ranges::any_of(m_sounding, &Sounding::isEnding)) onRefused();
}

} // namespace tessaro
