// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/style_edit.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"

#include <algorithm>
#include <memory>
#include <new>

namespace tessaro::style_edit {

namespace {

CStyleBlk& styleAt(POSITION pos) noexcept { return *List<CStyleBlk>::get(pos); }

std::uint32_t lengthOf(const CStyleBlk& style) noexcept
{
    return style.GetTimeEnd() > style.GetTimeTop() ? style.GetTimeEnd() - style.GetTimeTop() : 0;
}

void copySettings(const CStyleBlk& from, CStyleBlk& to)
{
    to.SetFileName(from.GetFileName());
    to.SetStyleName(from.GetStyleName());
    to.SetSectionName(from.GetSectionName());
    to.SetTempoEnable(from.GetTempoEnable());
    to.SetTempo(from.GetTempo());
    to.SetNumerator(from.GetNumerator());
    to.SetDenominator(from.GetDenominator());
    to.SetMeasClock(from.GetMeasClock());
    to.SetSectionClock(from.GetSectionClock());
}

/// Puts a copy on the style track; null when memory is out.
POSITION place(CEditor& editor, const CStyleBlk& from, std::uint32_t time, std::uint32_t length)
{
    try {
        auto made = std::make_unique<CStyleBlk>();
        copySettings(from, *made);
        made->SetTime(time, tick::later(time, length));
        for (int slot = 0; slot < stylePartCount; ++slot) {
            made->SetMute(slot, from.GetMute(slot));
            made->SetSetup(slot, from.GetSetup(slot));
            CPhraseBlk* head = nullptr;
            if (from.GetAt(from.GetHeadPos(slot), &head)) made->AddPhrase(slot, 0, new CPhraseBlk(*head));
        }
        return editor.AddStyle(time, made.release());
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool copyPart(CEditor& editor, POSITION style, std::uint32_t time, std::uint32_t length)
{
    const POSITION made = place(editor, styleAt(style), time, length);
    if (!made) return false;
    editor.HintStyleNew(made);
    editor.history().SetUndoStyleNew(made);
    return true;
}

} // namespace

POSITION add(CEditor& editor, std::uint32_t time, CStyleBlk* style)
{
    if (!style) return nullptr;
    style->SetTime(time, tick::later(time, lengthOf(*style)));
    const POSITION made = editor.AddStyle(time, style);
    editor.HintStyleNew(made);
    editor.history().SetUndoStyleNew(made);
    return made;
}

bool remove(CEditor& editor, POSITION style)
{
    if (!style) return false;
    editor.history().SetUndoStyleDel(style);
    editor.styles().unlink(&styleAt(style));
    editor.HintStyleDel(style);
    editor.history().retire(&styleAt(style));
    return true;
}

bool copy(CEditor& editor, POSITION style, std::uint32_t time)
{
    return style && copyPart(editor, style, time, lengthOf(styleAt(style)));
}

bool move(CEditor& editor, POSITION style, std::uint32_t time)
{
    const POSITION made = style ? place(editor, styleAt(style), time, lengthOf(styleAt(style))) : nullptr;
    if (!made) return false;
    editor.history().SetUndoStyleMove(style, made);
    editor.styles().unlink(&styleAt(style));
    editor.HintStyleMove(style, made);
    editor.history().retire(&styleAt(style));
    return true;
}

bool resize(CEditor& editor, POSITION pos, std::uint32_t end)
{
    if (!pos) return false;
    CStyleBlk& style = styleAt(pos);
    editor.history().SetUndoStyleSize(pos);
    style.SetTime(style.GetTimeTop(), std::max(end, tick::later(style.GetTimeTop(), 1)));
    editor.HintStyleSize(pos);
    return true;
}

bool divide(CEditor& editor, POSITION pos, std::uint32_t time)
{
    if (!pos || time <= styleAt(pos).GetTimeTop() || time >= styleAt(pos).GetTimeEnd()) return false;
    return copyPart(editor, pos, time, styleAt(pos).GetTimeEnd() - time) && resize(editor, pos, time);
}

bool join(CEditor& editor, POSITION pos, POSITION other)
{
    if (!pos || !other || pos == other || styleAt(other).GetTimeTop() > styleAt(pos).GetTimeTop()) return false;
    if (styleAt(other).GetTimeEnd() < styleAt(pos).GetTimeEnd()) resize(editor, other, styleAt(pos).GetTimeEnd());
    return remove(editor, pos);
}

} // namespace tessaro::style_edit
