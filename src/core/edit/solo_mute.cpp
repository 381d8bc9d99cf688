// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/solo_mute.h"

#include "core/edit/song.h"

namespace tessaro {

bool SoloMute::isSoloExist() const
{
    for (int n = 1; n < trackCount; ++n)
        if (const CTrk* trk = m_song.trk(n); trk && trk->GetSolo()) return true;
    return false;
}

void SoloMute::setOnOff()
{
    const bool soloed = isSoloExist() || m_styles.isSoloExist();
    for (int n = 1; n < trackCount; ++n)
        if (const CTrk* trk = m_song.trk(n)) set(n, soloed ? trk->GetSolo() : !trk->GetMute());
    m_styles.setOnOff();
}

void SoloMute::set(int number, bool on)
{
    if (m_transport.getTrkSw(number) == on) return;
    m_transport.setTrkSw(number, on);
    if (m_song.trk(number)->GetType() == trktype::wave) m_waves.setMute(number, !on);
}

} // namespace tessaro
