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

    const Sounding note{trk->GetPort(), static_cast<std::uint8_t>(noteOn | trk->GetCh()),
                        static_cast<std::uint8_t>(sent)};
    if (std::find(m_sounding.begin(), m_sounding.end(), note) != m_sounding.end()) return;
    m_sounding.push_back(note); // before the note begins, so that it can be ended whatever happens
    if (m_smc.smcSendShortMsg(note.port, note.status, note.key, velocity) != 0) m_sounding.pop_back();
}

void NoteAudition::stop()
{
    std::erase_if(m_sounding, [this](const Sounding& note) {
        return m_smc.smcSendShortMsg(note.port, note.status, note.key, 0) == 0;
    });
}

} // namespace tessaro
