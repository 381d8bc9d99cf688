// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as what the clipboard holds: blocks pasted, copied and pasted again, events read and entered; and undone.
// The first two bytes tell where to.
#include "core/edit/undo_scope.h"
#include "core/model/tick.h"
#include "files/clip/blk_clip_reader.h"
#include "files/clip/clip_writer.h"
#include "files/clip/evnt_clip_reader.h"
#include "native_song.h"

#include <algorithm>
#include <memory>

namespace {

using namespace tessaro;
using tessaro::fuzz::demand;
using Image = ClipWriter::Image;

const Strings strings(Language::english);

struct Document final : DocumentPort {
    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }
};

struct PastedSong {
    Document document;
    QuietPorts quiet;
    SongFormats files{strings};
    CEditor editor{quiet.with(document, files)};

    bool paste(std::span<const std::uint8_t> image, int track, std::uint32_t time)
    {
        BlkClipReader reader(editor, strings, image);
        const bool done = reader.ClipPaste_blk(time, track);
        demand(done || (reader.placed().empty() && editor.GetUndoRedoCount() == 0));
        return done;
    }
    void enter(std::span<const std::uint8_t> image, int track, std::uint32_t time)
    {
        const UndoScope step(editor, "");
        const BlkRef into{editor.GetTrkPos(track), editor.GetHeadBlkPos(editor.GetTrkPos(track))};
        EvntClipReader reader(image);
        if (!reader.ChkTr9c(ClipKind::evnts)) return;
        for (_EDT_EVNT rec; reader.GetEvntTr9c(rec);) {
            demand(rec.szData == 0
                   || (rec.data >= image.data() && rec.data + rec.szData <= image.data() + image.size()));
            rec.time = tick::later(time, rec.time);
            editor.InsEvnt(into.trk, into.blk, rec);
        }
    }
    Image copy()
    {
        std::vector<BlkRef> blks;
        for (int n = 1; n < trackCount; ++n)
            for (CBlk* b = editor.song().trk(n)->blocks().head(); b; b = List<CBlk>::next(b))
                blks.push_back({editor.GetTrkPos(n), b});
        Image image;
        demand(ClipWriter(editor).SetClipTr9_blk(image, blks));
        return image;
    }
    [[nodiscard]] std::uint32_t firstTop() const
    {
        for (int n = 1; n < trackCount; ++n)
            if (const CBlk* b = editor.song().trk(n)->blocks().head()) return b->GetTimeTop();
        return 0;
    }
    void undoAll()
    {
        while (editor.GetUndoRedoIndex() >= 0) demand(editor.UndoNode());
        for (int n = 1; n < trackCount; ++n) demand(editor.song().trk(n)->GetCount() == 0);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) return 0;
    const int track = data[0] % 101;
    const std::uint32_t time = data[1] * 100U;
    // Exactly as long as the bytes, so that a read too far is seen.
    const auto copy = std::make_unique<std::uint8_t[]>(size - 2);
    std::copy(data + 2, data + size, copy.get());
    const std::span<const std::uint8_t> image(copy.get(), size - 2);

    PastedSong song;
    if (song.paste(image, track, time)) {
        const Image first = song.copy();
        PastedSong again;
        demand(again.paste(first, 0, song.firstTop()));
        demand(again.copy().size() == first.size());
        again.undoAll();
        song.undoAll();
    }
    PastedSong events;
    events.editor.NewBlk(1, time);
    events.editor.ClearUndoRedo();
    events.enter(image, track % 2, time * 2);
    if (events.editor.GetUndoRedoIndex() >= 0) demand(events.editor.UndoNode());
    demand(events.editor.GetHeadEvntPos(1, 0) == nullptr);
    return 0;
}
