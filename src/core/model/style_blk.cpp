// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/style_blk.h"

namespace tessaro {

void CStyleBlk::SetMute(int slot, bool on) noexcept
{
    if (valid(slot)) m_mute[at(slot)] = on;
}

void CStyleBlk::SetSetup(int slot, CRealBlk* real) noexcept
{
    if (valid(slot)) m_setup[at(slot)] = real;
}

std::uint32_t CStyleBlk::GetCount(int slot) const noexcept
{
    return valid(slot) ? static_cast<std::uint32_t>(m_phrases[at(slot)].count()) : 0;
}

POSITION CStyleBlk::GetHeadPos(int slot) const noexcept { return valid(slot) ? m_phrases[at(slot)].head() : nullptr; }

POSITION CStyleBlk::GetTailPos(int slot) const noexcept { return valid(slot) ? m_phrases[at(slot)].tail() : nullptr; }

bool CStyleBlk::GetNext(POSITION& pos, CPhraseBlk** phrase) const noexcept
{
    if (!GetAt(pos, phrase)) return false;
    pos = pos->next;
    return true;
}

bool CStyleBlk::GetPrev(POSITION& pos, CPhraseBlk** phrase) const noexcept
{
    if (!GetAt(pos, phrase)) return false;
    pos = pos->prev;
    return true;
}

bool CStyleBlk::GetAt(POSITION pos, CPhraseBlk** phrase) const noexcept
{
    if (pos) *phrase = List<CPhraseBlk>::get(pos);
    return pos;
}

POSITION CStyleBlk::AddPhrase(int slot, std::uint32_t time, CPhraseBlk* phrase) noexcept
{
    if (!valid(slot)) return nullptr;
    CPhraseBlk* before = m_phrases[at(slot)].tail();
    while (before && before->GetTimeTop() > time) before = List<CPhraseBlk>::prev(before);
    return InsertAfterPhrase(slot, before, phrase);
}

POSITION CStyleBlk::AddHeadPhrase(int slot, CPhraseBlk* phrase) noexcept
{
    return InsertAfterPhrase(slot, nullptr, phrase);
}

POSITION CStyleBlk::InsertAfterPhrase(int slot, POSITION pos, CPhraseBlk* phrase) noexcept
{
    if (!valid(slot)) return nullptr;
    if (pos)
        m_phrases[at(slot)].insertAfter(List<CPhraseBlk>::get(pos), phrase);
    else
        m_phrases[at(slot)].addHead(phrase);
    return phrase;
}

void CStyleBlk::RemovePhrase(int slot) noexcept
{
    if (!valid(slot)) return;
    while (CPhraseBlk* phrase = m_phrases[at(slot)].takeHead()) delete phrase;
}

void CStyleBlk::InitPhrase() noexcept
{
    for (int slot = 0; slot < stylePartCount; ++slot) RemovePhrase(slot);
}

} // namespace tessaro
