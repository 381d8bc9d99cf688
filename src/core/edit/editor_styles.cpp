// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's style track: list access, block operations, settings, solo and mute of the parts.
#include "core/edit/editor.h"
#include "core/edit/style_edit.h"

#include <algorithm>

namespace tessaro {

namespace {

CStyleBlk* styleAt(POSITION pos) noexcept { return List<CStyleBlk>::get(pos); }

constexpr bool isPart(int part) noexcept { return part >= 0 && part < stylePartCount; }
constexpr bool sounds(int part) noexcept { return part >= firstSoundingPart && part < stylePartCount; }
constexpr std::size_t at(int part) noexcept { return static_cast<std::size_t>(part); }
/// The engine's track of a part.
constexpr int engineTrk(int part) noexcept { return trackCount + part; }

} // namespace

void CEditor::RemoveStyle() noexcept
{
    while (GetHeadStylePos()) RemoveAtStyle(GetHeadStylePos());
}

bool CEditor::RemoveAtStyle(POSITION style) noexcept
{
    if (!style) return false;
    m_styles.unlink(styleAt(style));
    delete styleAt(style);
    return true;
}

POSITION CEditor::AddStyle(std::uint32_t time, CStyleBlk* style) noexcept
{
    m_styles.add(time, style);
    return style;
}

POSITION CEditor::AddHeadStyle(CStyleBlk* style) noexcept { return InsertAfterStyle(nullptr, style); }

POSITION CEditor::InsertAfterStyle(POSITION pos, CStyleBlk* style) noexcept
{
    m_styles.insertAfter(styleAt(pos), style);
    return style;
}

bool CEditor::GetNextStyle(POSITION& pos, CStyleBlk** style) const noexcept
{
    if (!GetAtStyle(pos, style)) return false;
    pos = pos->next;
    return true;
}

bool CEditor::GetPrevStyle(POSITION& pos, CStyleBlk** style) const noexcept
{
    if (!GetAtStyle(pos, style)) return false;
    pos = pos->prev;
    return true;
}

bool CEditor::GetAtStyle(POSITION pos, CStyleBlk** style) const noexcept
{
    if (pos) *style = styleAt(pos);
    return pos;
}

bool CEditor::StyleNew(std::uint32_t time, CStyleBlk* style)
{
    StopSeq();
    return StyleRec(time, style);
}

POSITION CEditor::StyleRec(std::uint32_t time, CStyleBlk* style) { return style_edit::add(*this, time, style); }

bool CEditor::StyleDel(POSITION style)
{
    StopSeq();
    return style_edit::remove(*this, style);
}

bool CEditor::StyleCopy(POSITION style, std::uint32_t time)
{
    StopSeq();
    return style_edit::copy(*this, style, time);
}

bool CEditor::StyleMove(POSITION style, std::uint32_t time)
{
    StopSeq();
    return style_edit::move(*this, style, time);
}

bool CEditor::StyleSize(POSITION style, std::uint32_t end)
{
    StopSeq();
    return style_edit::resize(*this, style, end);
}

bool CEditor::StyleDiv(POSITION style, std::uint32_t time)
{
    StopSeq();
    return style_edit::divide(*this, style, time);
}

bool CEditor::StyleApp(POSITION style, POSITION other)
{
    StopSeq();
    return style_edit::join(*this, style, other);
}

std::uint8_t CEditor::GetStylePort(int part) const noexcept
{
    return isPart(part) ? m_styles.info().port[at(part)] : std::uint8_t{0};
}

bool CEditor::SetStylePort(int part, std::uint8_t port)
{
    if (!isPart(part)) return false;
    for (const int changed : {part, 0}) {
        m_styles.info().port[at(changed)] = port;
        m_ports.transport.setTrkPort(engineTrk(changed), port);
    }
    SetModify();
    return true;
}

std::uint8_t CEditor::GetStyleCh(int part) const noexcept
{
    return isPart(part) ? m_styles.info().ch[at(part)] : std::uint8_t{0};
}

bool CEditor::SetStyleCh(int part, std::uint8_t ch)
{
    if (!isPart(part) || ch >= 16) return false;
    m_styles.info().ch[at(part)] = ch;
    m_ports.transport.setTrkCh(engineTrk(part), ch);
    SetModify();
    return true;
}

int CEditor::GetStyleTrans(int part) const noexcept { return isPart(part) ? m_styles.info().trans[at(part)] : 0; }

bool CEditor::SetStyleTrans(int part, int semitones)
{
    if (!isPart(part) || semitones < -36 || semitones > 36) return false;
    m_styles.info().trans[at(part)] = static_cast<std::int8_t>(semitones);
    sendStyleTrans(part);
    SetModify();
    return true;
}

bool CEditor::GetStyleTransEnable(int part) const noexcept
{
    return isPart(part) && m_styles.info().transEnable[at(part)];
}

bool CEditor::SetStyleTransEnable(int part, bool on)
{
    if (!isPart(part)) return false;
    m_styles.info().transEnable[at(part)] = on;
    m_ports.transport.setTrkTransEnable(engineTrk(part), on);
    sendStyleTrans(part);
    SetModify();
    return true;
}

void CEditor::SetStyleTransOfst(int semitones)
{
    m_styles.info().transOfst = static_cast<std::int8_t>(std::clamp(semitones, -128, 127));
    for (int part = firstSoundingPart; part < stylePartCount; ++part) sendStyleTrans(part);
    SetModify();
}

void CEditor::sendStyleTrans(int part)
{
    const _STYLE_TRK_INFO& info = m_styles.info();
    if (!info.transEnable[at(part)]) return;
    m_ports.transport.setTrkTrans(engineTrk(part), std::clamp(info.trans[at(part)] + info.transOfst, -36, 36));
}

void CEditor::SetStyleBSetup(bool on)
{
    m_styles.info().styleBSetup = on;
    SetModify();
}

void CEditor::SetStyleBTempo(bool on)
{
    m_styles.info().styleBTempo = on;
    SetModify();
}

void CEditor::SetStyleName(const std::string& name)
{
    m_styles.info().styleName = name;
    SetModify();
}

bool CEditor::GetStyleSolo(int part) const noexcept { return isPart(part) && m_styles.info().solo[at(part)]; }

bool CEditor::GetStyleMute(int part) const noexcept { return isPart(part) && m_styles.info().mute[at(part)]; }

bool CEditor::SetStyleMute(int part, bool on)
{
    if (!sounds(part)) return false;
    m_styles.info().mute[at(part)] = on;
    return true;
}

void CEditor::SetStyleSolo(bool on)
{
    for (int part = firstSoundingPart; part < stylePartCount; ++part) m_styles.info().solo[at(part)] = on;
    if (on) clearTrkSolo();
}

bool CEditor::SetStyleSoloExe(int part, bool on)
{
    if (!sounds(part)) return false;
    if (on) {
        SetStyleSolo(false);
        clearTrkSolo();
    }
    m_styles.info().solo[at(part)] = on;
    return true;
}

void CEditor::SetStyleSolo()
{
    if (IsSoloExistStyle()) clearTrkSolo();
}

void CEditor::clearTrkSolo()
{
    for (int n = 1; n < trackCount; ++n) {
        CTrk* trk = m_song.trk(n);
        if (!trk->GetSolo()) continue;
        trk->SetSolo(false);
        HintTrkSolo(n);
    }
}

template <class Change>
bool CEditor::forStyleParts(std::uint8_t port, std::uint8_t ch, Change&& change)
{
    bool matched = false;
    _STYLE_TRK_INFO& info = m_styles.info();
    for (std::size_t part = firstSoundingPart; part < stylePartCount; ++part) {
        const bool here = info.port[part] == port && info.ch[part] == ch;
        matched = matched || here;
        change(info, part, here);
    }
    return matched;
}

bool CEditor::SetStyleChSoloOn(std::uint8_t port, std::uint8_t ch)
{
    return forStyleParts(port, ch, [](_STYLE_TRK_INFO& info, std::size_t part, bool here) { info.solo[part] = here; });
}

bool CEditor::SetStyleChSoloOff(std::uint8_t port, std::uint8_t ch)
{
    return forStyleParts(port, ch, [](_STYLE_TRK_INFO& info, std::size_t part, bool here) {
        if (here) info.solo[part] = false;
    });
}

bool CEditor::SetStyleChMuteOn(std::uint8_t port, std::uint8_t ch)
{
    return forStyleParts(port, ch, [](_STYLE_TRK_INFO& info, std::size_t part, bool here) {
        if (here) info.mute[part] = true;
    });
}

bool CEditor::SetStyleChMuteOff(std::uint8_t port, std::uint8_t ch)
{
    return forStyleParts(port, ch, [](_STYLE_TRK_INFO& info, std::size_t part, bool here) {
        if (here) info.mute[part] = false;
    });
}

} // namespace tessaro
