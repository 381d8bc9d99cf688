// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/info.h"

#include "core/edit/editor.h"

namespace tessaro::cli {

namespace {

const char* kindName(std::uint8_t kind)
{
    switch (kind) {
    case 1: return "standard MIDI file, format 0";
    case 2: return "standard MIDI file, format 1";
    case 3: return "ZP file";
    case 4: return "Tessaro song";
    case 5: return "Tessaro song with waves";
    default: return "new song";
    }
}

struct Counts {
    unsigned tracks = 0;
    unsigned blocks = 0;
    unsigned long events = 0;
    unsigned long notes = 0;
};

Counts count(const Song& song)
{
    Counts counts;
    for (int number = 1; number < trackCount; ++number) {
        if (song.trk(number)->IsEmpty()) continue;
        ++counts.tracks;
        counts.blocks += song.trk(number)->GetCount();
    }
    for (const CRealBlk* real = song.realBlks().head(); real; real = List<CRealBlk>::next(real)) {
        counts.events += real->GetNum();
        counts.notes += real->GetCount(status::note);
    }
    return counts;
}

} // namespace

void printInfo(CEditor& editor, std::uint8_t kind, std::FILE* out)
{
    const Counts counts = count(editor.song());
    _EDT_TIMEINFO tempo;
    editor.GetTimeInfo(0, tempo);
    _EDT_MEASINFO signature;
    editor.GetMeasInfo(1, signature);
    const std::uint32_t end = editor.GetTimeEnd();
    _EDT_MEAS length;
    editor.TimeToMeas(end, length);
    const std::uint32_t seconds = editor.TimeToMsecond(end) / 1000;

    std::fprintf(out, "kind: %u (%s)\n", unsigned{kind}, kindName(kind));
    std::fprintf(out, "tracks: %u\n", counts.tracks);
    std::fprintf(out, "blocks: %u\n", counts.blocks);
    std::fprintf(out, "events: %lu\n", counts.events);
    std::fprintf(out, "notes: %lu\n", counts.notes);
    std::fprintf(out, "tempo: %.2f\n", 60e6 / tempo.tempo);
    std::fprintf(out, "signature: %u/%u\n", unsigned{signature.num}, 1U << signature.den);
    std::fprintf(out, "length: %u:%u:%u %u:%02u\n", length.meas, length.beat, length.tick, seconds / 60, seconds % 60);
}

} // namespace tessaro::cli
