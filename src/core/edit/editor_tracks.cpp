// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's operations on tracks: settings, order, solo and mute.
#include "core/edit/editor.h"

namespace tessaro {

namespace {
CTrk* trkAt(POSITION pos) noexcept { return List<CTrk>::get(pos); }
} // namespace

bool CEditor::SetTrkType(POSITION trk, std::uint8_t type)
{
    if (!trk || !trkAt(trk)->SetType(type)) return false;
    SetModify();
    return true;
}

bool CEditor::SetTrkTypePrivate(int number, std::uint8_t type)
{
    CTrk* trk = m_song.trk(number);
    return trk && trk->SetType(type);
}

bool CEditor::SetTrkPort(POSITION trk, std::uint8_t port)
{
    if (!trk) return false;
    trkAt(trk)->SetPort(port);
    HintTrkPort(trk, port);
    SetModify();
    return true;
}

bool CEditor::SetTrkCh(POSITION trk, std::uint8_t ch)
{
    if (!trk || !trkAt(trk)->SetCh(ch)) return false;
    if (trkAt(trk)->GetType() == trktype::wave)
        m_ports.waveOutput.setPortAndChannel(Song::numberOf(trk), trkAt(trk)->GetPort(), ch);
    HintTrkCh(trk, ch);
    SetModify();
    return true;
}

bool CEditor::SetTrkTranspose(POSITION trk, int semitones)
{
    if (!trk || !trkAt(trk)->SetTranspose(semitones)) return false;
    m_ports.transport.setTrkTrans(Song::numberOf(trk), semitones);
    SetModify();
    return true;
}

bool CEditor::SetTrkTransEnable(POSITION trk, bool on)
{
    if (!trk) return false;
    trkAt(trk)->SetTransEnable(on);
    m_ports.transport.setTrkTransEnable(Song::numberOf(trk), on);
    SetModify();
    return true;
}

bool CEditor::SetTrkRec(POSITION trk, bool on)
{
    if (trk) trkAt(trk)->SetRec(on);
    return trk;
}

bool CEditor::SetTrkName(POSITION trk, const std::string& name)
{
    if (!trk) return false;
    trkAt(trk)->SetName(name);
    SetModify();
    return true;
}

bool CEditor::SetTrkInstType(POSITION trk, std::uint32_t type)
{
    if (!trk) return false;
    trkAt(trk)->SetInstType(type);
    HintTrkInstType(trk);
    SetModify();
    return true;
}

bool CEditor::SetTrkStaffType(POSITION trk, std::uint8_t type)
{
    if (!trk) return false;
    trkAt(trk)->SetStaffType(type);
    HintTrkStaffType(trk);
    SetModify();
    return true;
}

bool CEditor::SetTrkWavVol(POSITION trk, std::uint8_t volume)
{
    if (!trk) return false;
    trkAt(trk)->SetWavVol(volume);
    HintTrkWavVol(trk);
    SetModify();
    return true;
}

bool CEditor::SetTrkArrange(POSITION trk, POSITION after)
{
    StopSeq();
    const int number = trk ? Song::numberOf(trk) : 0;
    if (number == 0 || !after || trk == after) return false;
    m_song.moveTrk(trk, after);
    HintTrkArrange(trk, trk);
    return m_history.SetUndoTrkMove(number, trk);
}

bool CEditor::SetTrkMute(POSITION trk, bool on)
{
    if (!trk) return false;
    trkAt(trk)->SetMute(on);
    HintTrkMute(trk, on);
    return true;
}

bool CEditor::SetSoloOn(POSITION trk)
{
    if (!trk) return false;
    const int soloed = Song::numberOf(trk);
    trkAt(trk)->SetSolo(true);
    m_soloMute.set(soloed, true);
    SetStyleSolo(false);
    HintTrkSolo(trk);
    for (int n = 1; n < trackCount; ++n) {
        if (n == soloed) continue;
        m_soloMute.set(n, false);
        CTrk* other = m_song.trk(n);
        if (!other->GetSolo()) continue;
        other->SetSolo(false);
        HintTrkSolo(n);
    }
    return true;
}

bool CEditor::SetSoloOff(POSITION trk)
{
    if (!trk) return false;
    trkAt(trk)->SetSolo(false);
    HintTrkSolo(trk);
    return true;
}

void CEditor::SetTrkSoloMute()
{
    SetTrkOnOff();
    HintSoloMute();
}

void CEditor::SetChSoloOn(std::uint8_t port, std::uint8_t ch) { changeChSolo(port, ch, true); }

void CEditor::SetChSoloOff(std::uint8_t port, std::uint8_t ch) { changeChSolo(port, ch, false); }

void CEditor::SetChMuteOn(std::uint8_t port, std::uint8_t ch) { changeChMute(port, ch, true); }

void CEditor::SetChMuteOff(std::uint8_t port, std::uint8_t ch) { changeChMute(port, ch, false); }

void CEditor::changeChSolo(std::uint8_t port, std::uint8_t ch, bool on)
{
    bool changed = false;
    for (int n = 1; n < trackCount; ++n) {
        CTrk* trk = m_song.trk(n);
        if (trk->GetType() != trktype::midi) continue;
        const bool here = trk->GetPort() == port && trk->GetCh() == ch;
        if (!here && !on) continue;
        const bool solo = here && on;
        if (trk->GetSolo() == solo) continue;
        trk->SetSolo(solo);
        HintTrkSolo(n);
        changed = true;
    }
    const auto before = m_styles.info().solo;
    on ? SetStyleChSoloOn(port, ch) : SetStyleChSoloOff(port, ch);
    if (!changed && before == m_styles.info().solo) return;
    SetTrkOnOff();
    HintChSolo(port, ch);
}

void CEditor::changeChMute(std::uint8_t port, std::uint8_t ch, bool on)
{
    bool changed = false;
    for (int n = 1; n < trackCount; ++n) {
        CTrk* trk = m_song.trk(n);
        if (trk->GetType() != trktype::midi || trk->GetPort() != port || trk->GetCh() != ch) continue;
        if (trk->GetMute() == on) continue;
        trk->SetMute(on);
        HintTrkMute(trk, on);
        changed = true;
    }
    const auto before = m_styles.info().mute;
    on ? SetStyleChMuteOn(port, ch) : SetStyleChMuteOff(port, ch);
    if (!changed && before == m_styles.info().mute) return;
    SetTrkOnOff();
    HintChMute(port, ch);
}

} // namespace tessaro
