// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"

namespace tessaro {

/// A document that only remembers whether it was modified.
struct PlainDocument final : DocumentPort {
    void SetModifiedFlag(bool modified) override { m_modified = modified; }
    bool IsModified() const override { return m_modified; }
    bool m_modified = false;
};

struct NoFiles final : SongFiles {
    _EDT_FILE recognise(std::span<std::uint8_t>, std::uint32_t) override { return {}; }
    LoadResult load(const _EDT_FILE&, CEditor&) override { return LoadResult::failed; }
    bool save(std::uint8_t, CEditor&, ByteSink&) override { return false; }
};

/// A song in memory, without engine or files.
struct SongFixture {
    PlainDocument document;
    NoFiles files;
    QuietPorts quiet;
    CEditor editor{quiet.with(document, files)};

    /// A block over the span on this track; makes a track of those that are unused.
    CBlk& addBlock(int track, std::uint32_t top, std::uint32_t end)
    {
        if (editor.song().trk(track)->GetType() == trktype::unused) editor.SetTrkTypePrivate(track, trktype::midi);
        editor.NewBlk(track, top);
        CBlk* blk = nullptr;
        editor.GetBlk(editor.GetTrkPos(track), editor.GetTailBlkPos(track), &blk);
        blk->SetTimeEnd(end);
        return *blk;
    }

    /// `time` is absolute.
    static void addNote(CBlk& blk, std::uint32_t time, int key, int velocity, std::uint32_t gate)
    {
        _EDT_EVNT note;
        note.status = status::note;
        note.time = time;
        note.post1 = static_cast<std::uint8_t>(key);
        note.post2 = static_cast<std::uint8_t>(velocity);
        note.gateTime = gate;
        blk.InsEvnt(note);
    }
};

} // namespace tessaro
