// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/solo_mute.h"

#include "core/edit/song.h"
#include "core/edit/style_track.h"

#include <algorithm>

namespace tessaro {

bool SoloMute::isSoloExist() const
{
    for (int n = 1; n < trackCount; ++n)
        if (const CTrk* trk = m_song.trk(n); trk && trk->GetSolo()) return true;
    return false;
}

void SoloMute::setOnOff()
{
    const bool soloed = isSoloExist() || isSoloExistStyle();
    for (int n = 1; n < trackCount; ++n)
        if (const CTrk* trk = m_song.trk(n)) set(n, soloed ? trk->GetSolo() : !trk->GetMute());
    setStyleOnOff();
}

bool SoloMute::isSoloExistStyle() const noexcept
{
    const auto& solo = m_styles.info().solo;
    return std::any_of(solo.begin() + firstSoundingPart, solo.end(), [](bool on) { return on; });
}

void SoloMute::setStyleOnOff()
{
    const bool soloed = isSoloExist() || isSoloExistStyle();
    for (int part = firstSoundingPart; part < stylePartCount; ++part) {
        const auto at = static_cast<std::size_t>(part);
        const bool on = soloed ? m_styles.info().solo[at] : !m_styles.info().mute[at];
        if (m_transport.getTrkSw(trackCount + part) != on) m_transport.setTrkSw(trackCount + part, on);
    }
}

void SoloMute::set(int number, bool on)
{
    if (m_transport.getTrkSw(number) == on) return;
    m_transport.setTrkSw(number, on);
    if (m_song.trk(number)->GetType() == trktype::wave) m_waves.setMute(number, !on);
}

} // namespace tessaro
