// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes, opened as a standard MIDI file: recognised, loaded, given their maps, and put in order.
#include "base/strings.h"
#include "core/edit/editor.h"
#include "files/recognise.h"
#include "files/song_formats.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

using namespace tessaro;

struct Document final : DocumentPort {
    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }
};

void demand(bool holds)
{
    if (!holds) std::abort();
}

/// What every song keeps to, whatever file it came from.
void check(const CEditor& editor)
{
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk)) {
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            demand(blk->GetRealBlk());
            for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
                const bool isNote = status::kind(e->GetStatus()) == status::note;
                demand(e->GetStatus() >= status::note && isNote == (e->GetGateTime() > 0));
                demand(e->GetStatus() != status::sysexPart);
            }
        }
    }
    // The maps answer for any time; what they say of times that wrapped does not matter.
    _EDT_MEAS meas;
    editor.TimeToMeas(editor.GetTimeEnd(), meas);
    static_cast<void>(editor.MsecondToTime(editor.TimeToMsecond(editor.GetTimeEnd())));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Exactly as long as a document's buffer, so that a read too far is seen.
    const auto buffer = std::make_unique<std::uint8_t[]>(size + 16);
    std::copy(data, data + size, buffer.get());
    Document document;
    QuietPorts quiet;
    const Strings strings(Language::english);
    SongFormats reader(strings);
    const _EDT_FILE file = reader.recognise({buffer.get(), size + 16}, static_cast<std::uint32_t>(size));
    if (file.kind == filekind::unknown || file.kind == filekind::native) return 0;
    CEditor editor(quiet.with(document, reader));
    if (editor.Load(file) == LoadResult::failed) {
        demand(editor.InitEditor());
    } else {
        editor.InitTimeInfo();
        editor.BlkSize(file.kind);
        editor.PackSysex();
    }
    check(editor);
    return 0;
}
