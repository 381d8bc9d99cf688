// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"

#include <gtest/gtest.h>

#include <string>

namespace tessaro::test {

inline std::string picture(const CRealBlk& real)
{
    std::string out;
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e)) {
        out += ' ' + std::to_string(e->GetTime()) + ':' + std::to_string(e->GetStatus()) + ','
             + std::to_string(e->GetPost1()) + ',' + std::to_string(e->GetGateTime());
        for (const std::uint8_t byte : e->payload()) out += '/' + std::to_string(byte);
    }
    return out;
}

inline std::string picture(const CTrk& trk)
{
    std::string out;
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        EXPECT_GE(blk->GetTimeEnd(), blk->GetTimeTop());
        out += '[' + blk->GetName() + ' ' + std::to_string(blk->GetType()) + ' ' + std::to_string(blk->GetTimeTop())
             + '-' + std::to_string(blk->GetTimeEnd()) + picture(*blk->GetRealBlk()) + ']';
    }
    return out;
}

/// All that the tracks and the style track of a song hold, as text to compare; real blocks that nothing shows are
/// left out.
inline std::string picture(const CEditor& editor)
{
    std::string out;
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        if (!trk->IsEmpty()) out += std::to_string(trk->GetType()) + picture(*trk) + '\n';
    for (const CStyleBlk* style = editor.styles().blks().head(); style; style = List<CStyleBlk>::next(style))
        out += '{' + style->GetSectionName() + ' ' + std::to_string(style->GetTimeTop()) + '-'
             + std::to_string(style->GetTimeEnd()) + '}';
    return out;
}

/// Makes a step of `edit`, and sees that undo and redo each bring back what was there.
template <class Edit>
void expectUndoable(CEditor& editor, Edit&& edit)
{
    const std::string before = picture(editor);
    ASSERT_TRUE(editor.OpenUndoNode("step"));
    edit();
    editor.CloseUndoNode();
    const std::string after = picture(editor);
    EXPECT_NE(after, before);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(editor.UndoNode());
        EXPECT_EQ(picture(editor), before);
        ASSERT_TRUE(editor.RedoNode());
        EXPECT_EQ(picture(editor), after);
    }
}

/// Sees that a step of `edit` is refused and leaves neither song nor history changed.
template <class Edit>
void expectRefused(CEditor& editor, Edit&& edit)
{
    const std::string before = picture(editor);
    const int steps = editor.GetUndoRedoCount();
    ASSERT_TRUE(editor.OpenUndoNode("step"));
    EXPECT_FALSE(edit());
    editor.CloseUndoNode();
    EXPECT_EQ(picture(editor), before);
    EXPECT_EQ(editor.GetUndoRedoCount(), steps);
}

} // namespace tessaro::test
