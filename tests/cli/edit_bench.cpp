// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/edit_bench.h"

#include "cli/dump.h"
#include "files/recognise.h"

#include <cstdio>
#include <cstdlib>
#include <set>
#include <sstream>

namespace tessaro::test {

namespace {

std::set<const CRealBlk*> shown(CEditor& editor)
{
    std::set<const CRealBlk*> reals;
    for (int n = 0; n < trackCount; ++n)
        for (const CBlk* blk = editor.song().trk(n)->blocks().head(); blk; blk = List<CBlk>::next(blk))
            reals.insert(blk->GetRealBlk());
    return reals;
}

std::string wholeDump(CEditor& editor)
{
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* out = open_memstream(&text, &size);
    cli::dumpSong(editor, 0, out);
    std::fclose(out);
    std::string dump(text, size);
    std::free(text);
    return dump;
}

/// The number behind a key, or -1.
long numberOf(const std::string& line, const std::string& key)
{
    const auto at = line.find('"' + key + "\":");
    return at == std::string::npos ? -1 : std::atol(line.c_str() + at + key.size() + 3);
}

void cutNumber(std::string& line, const std::string& key)
{
    const auto at = line.find('"' + key + "\":");
    if (at == std::string::npos) return;
    const auto digits = at + key.size() + 3;
    line.erase(at, line.find_first_not_of("0123456789", digits) - at);
}

std::string styleLines(CEditor& editor)
{
    std::ostringstream out;
    for (const CStyleBlk* style = editor.styles().blks().head(); style; style = List<CStyleBlk>::next(style)) {
        out << "style " << style->GetTimeTop() << ' ' << style->GetTimeEnd() << ' ' << style->GetSectionName();
        for (int slot = 0; slot < stylePartCount; ++slot) out << ' ' << style->GetSetup(slot) << style->GetCount(slot);
        out << '\n';
    }
    return out.str();
}

template <class T>
bool soundLinks(const List<T>& list)
{
    std::size_t count = 0;
    const T* last = nullptr;
    for (const T* e = list.head(); e; last = e, e = List<T>::next(e), ++count)
        if (List<T>::prev(e) != last) return false;
    return count == list.count() && last == list.tail();
}

} // namespace

std::string EditBench::dump()
{
    std::vector<bool> used;
    const auto reals = shown(editor);
    for (const CRealBlk* real = editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real))
        used.push_back(reals.contains(real));
    std::istringstream in(wholeDump(editor));
    std::string kept;
    for (std::string line; std::getline(in, line);)
        if (line.compare(0, 8, "{\"real\":") != 0 || used[static_cast<std::size_t>(numberOf(line, "real"))])
            kept += line + '\n';
    return kept + styleLines(editor);
}

std::string EditBench::looseDump()
{
    std::istringstream in(dump());
    std::string kept;
    for (std::string line; std::getline(in, line);) {
        const bool isRest = numberOf(line, "st") >= 0 && numberOf(line, "st") < 16;
        if (isRest || line.compare(0, 7, "{\"trk\":") == 0) continue;
        cutNumber(line, "end");
        kept += line + '\n';
    }
    return kept;
}

std::string EditBench::savedDump()
{
    std::istringstream in(dump());
    std::string kept;
    for (std::string line; std::getline(in, line);) {
        const bool isRest = numberOf(line, "st") >= 0 && numberOf(line, "st") < 16;
        if (isRest || line.compare(0, 6, "style ") == 0) continue;
        if (line.compare(0, 17, "{\"blk\":0,\"trk\":0,") == 0 || line.compare(0, 8, "{\"song\":") == 0)
            cutNumber(line, "end");
        kept += line + '\n';
    }
    for (const CStyleBlk* style = editor.styles().blks().head(); style; style = List<CStyleBlk>::next(style))
        kept += std::to_string(style->GetTimeTop()) + ' ' + std::to_string(style->GetTimeEnd()) + ' '
              + style->GetSectionName() + '\n';
    return kept;
}

std::vector<std::uint8_t> EditBench::save()
{
    editor.InitUndoNode();
    editor.RemoveScratch();
    editor.RemoveScratchScr();
    std::vector<std::uint8_t> file;
    VectorSink out(file);
    if (!files.save(filekind::native, editor, out)) file.clear();
    return file;
}

bool EditBench::load(std::vector<std::uint8_t> file)
{
    const auto length = static_cast<std::uint32_t>(file.size());
    file.resize(file.size() + 16);
    const _EDT_FILE found = files.recognise(file, length);
    if (found.kind != filekind::native || !editor.InitEditor()) return false;
    if (editor.Load(found) != LoadResult::complete) return false;
    editor.InitTimeInfo();
    editor.BlkSize(found.kind);
    editor.PackSysex();
    return true;
}

std::string EditBench::faults()
{
    std::ostringstream out;
    const Song& song = editor.song();
    for (const CRealBlk* real = song.realBlks().head(); real; real = List<CRealBlk>::next(real)) {
        if (!soundLinks(real->events())) out << "links of a real block\n";
        for (const CEvnt* e = real->events().head(); e && List<CEvnt>::next(e); e = List<CEvnt>::next(e))
            if (e->GetTime() > List<CEvnt>::next(e)->GetTime()) out << "order of events at " << e->GetTime() << '\n';
    }
    if (!soundLinks(song.realBlks()) || !soundLinks(song.trks())) out << "links of the song\n";
    int number = 0;
    for (const CTrk* trk = song.trks().head(); trk; trk = List<CTrk>::next(trk), ++number) {
        if (song.trk(number) != trk) out << "number of track " << number << '\n';
        if (!soundLinks(trk->blocks())) out << "links of track " << number << '\n';
        if (!trk->IsEmpty() && trk->GetType() == trktype::unused) out << "blocks on unused track " << number << '\n';
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            const CBlk* next = List<CBlk>::next(blk);
            if (next && next->GetTimeTop() < blk->GetTimeTop()) out << "order of blocks on track " << number << '\n';
            if (blk->GetTimeEnd() < blk->GetTimeTop()) out << "end of a block on track " << number << '\n';
            if (!song.realBlks().find(blk->GetRealBlk())) out << "a lost real block on track " << number << '\n';
        }
    }
    if (song.trk(0)->GetCount() != 1) out << "blocks of the master track\n";
    const List<CStyleBlk>& styles = editor.styles().blks();
    if (!soundLinks(styles)) out << "links of the styles\n";
    for (const CStyleBlk* style = styles.head(); style; style = List<CStyleBlk>::next(style)) {
        const CStyleBlk* next = List<CStyleBlk>::next(style);
        if (next && next->GetTimeTop() < style->GetTimeTop()) out << "order of styles\n";
        if (style->GetTimeEnd() <= style->GetTimeTop()) out << "end of a style\n";
    }
    return out.str();
}

} // namespace tessaro::test
