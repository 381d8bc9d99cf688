// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native_bench.h"

#include "base/bytes.h"
#include "core/model/style_ctab.h"

#include <map>
#include <memory>
#include <sstream>

namespace tessaro::test {

namespace {

/// Texts and bytes in a form that shows them all.
template <class Range>
std::string hex(const Range& range)
{
    std::ostringstream out;
    for (const auto c : range) out << std::hex << (static_cast<unsigned>(c) & 0xFF) << '.';
    return out.str();
}

template <class... Values>
std::string line(const Values&... values)
{
    std::ostringstream out;
    ((out << values << ' '), ...);
    return out.str();
}

std::string eventLine(const CEvnt& e)
{
    const bool hasPost = status::kind(e.GetStatus()) != status::sysex;
    return line("event", e.GetTime(), e.GetGateTime(), +e.GetStatus(), hasPost ? e.GetPost1() : 0, +e.GetPost2(),
                +e.GetPost3(), +e.GetPost4(), +e.GetMetaType(), hex(e.payload()), hex(e.GetFileName()),
                hex(e.GetMciCommand()));
}

} // namespace

NativeBench::NativeBench(std::string appDirectory, ScoreLinks* links)
    : files(strings, std::move(appDirectory))
    , editor({document, files, user, progress, quiet.transport, quiet.waveLengths, quiet.waveOutput,
              links ? *links : score})
{
}

bool NativeBench::load(const Bytes& file, bool wavesFollow)
{
    // Exactly as long as the file and its tail, so that the sanitizers see a read too far.
    const auto buffer = std::make_unique<std::uint8_t[]>(file.size() + 16);
    std::copy(file.begin(), file.end(), buffer.get());
    _EDT_FILE found = files.recognise({buffer.get(), file.size() + 16}, static_cast<std::uint32_t>(file.size()));
    found.wavesFollow = wavesFollow;
    kind = found.kind;
    editor.InitEditor();
    const LoadResult result = kind == 0 ? LoadResult::failed : editor.Load(found);
    partial = result == LoadResult::partial;
    if (result == LoadResult::failed) return false;
    editor.InitTimeInfo();
    editor.BlkSize(kind);
    editor.PackSysex();
    return true;
}

Bytes NativeBench::save(std::uint8_t as)
{
    Bytes bytes;
    VectorSink sink(bytes);
    if (!files.save(as, editor, sink)) bytes.clear();
    return bytes;
}

std::vector<std::string> NativeBench::dump() const
{
    std::vector<std::string> lines;
    std::map<const CRealBlk*, std::size_t> number;
    for (const CRealBlk* real = editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real)) {
        lines.push_back(line("real", number.emplace(real, number.size()).first->second));
        for (const CEvnt* e = real->events().head(); e; e = List<CEvnt>::next(e)) lines.push_back(eventLine(*e));
    }
    for (const CTrk* t = editor.song().trks().head(); t; t = List<CTrk>::next(t)) {
        lines.push_back(line("trk", +t->GetType(), +t->GetPort(), +t->GetCh(), +t->GetTrans(), t->GetSolo(),
                             t->GetMute(), t->GetTransEnable(), t->GetInstType(), +t->GetStaffType(), +t->GetWavVol(),
                             hex(t->GetName())));
        for (const CBlk* b = t->blocks().head(); b; b = List<CBlk>::next(b))
            lines.push_back(line("blk", +b->GetType(), b->GetTimeTop(), b->GetTimeEnd(), number.at(b->GetRealBlk()),
                                 hex(b->GetName())));
    }
    const _STYLE_TRK_INFO& info = editor.styles().info();
    lines.push_back(line("styles", hex(info.port), hex(info.ch), +info.transOfst, hex(info.trans),
                         hex(info.transEnable), hex(info.solo), hex(info.mute), info.styleBSetup, info.styleBTempo,
                         hex(info.styleName)));
    for (const CStyleBlk* s = editor.styles().blks().head(); s; s = List<CStyleBlk>::next(s)) {
        lines.push_back(line("style", +s->GetNumerator(), +s->GetDenominator(), s->GetMeasClock(), s->GetSectionClock(),
                             s->GetTempoEnable(), hex(s->GetTempo()), s->GetTimeTop(), s->GetTimeEnd(),
                             hex(s->GetFileName()), hex(s->GetStyleName()), hex(s->GetSectionName())));
        for (int part = 0; part < stylePartCount; ++part) {
            if (s->GetSetup(part)) lines.push_back(line("setup", part, number.at(s->GetSetup(part))));
            const auto* phrase = List<CPhraseBlk>::get(s->GetHeadPos(part));
            if (!phrase) continue;
            Bytes table;
            ByteWriter out(table);
            writeStyleCtab(out, phrase->GetCtab());
            lines.push_back(line("phrase", part, number.at(phrase->GetRealBlk()), phrase->GetTimeEnd(), hex(table)));
        }
    }
    return lines;
}

TrkBytes& TrkBytes::blk(std::uint32_t top, std::uint32_t end, std::uint32_t real, std::uint8_t type, const Bytes& name)
{
    SmfBytes record;
    record.raw({type, 0}).number(top, 4).number(end, 4).number(real, 4).raw(Bytes(18)).raw(name);
    m_bytes.insert(m_bytes.end(), record.bytes().begin(), record.bytes().end());
    return *this;
}

SmfBytes nativeFile(const std::vector<Bytes>& reals, const std::vector<Bytes>& trks, std::uint32_t version)
{
    SmfBytes file;
    file.id("TR9H").number(64, 4).number(version, 1).number(0, 1);
    file.number(static_cast<std::uint32_t>(trks.size()), 2).number(static_cast<std::uint32_t>(reals.size()), 4);
    file.number(96, 2).raw(Bytes(54)); // the division says nothing
    for (const Bytes& real : reals) file.chunk(real, "TR9B");
    for (const Bytes& trk : trks) file.chunk(trk, "TR9T");
    return file;
}

SmfBytes fullFile(const std::vector<Bytes>& reals, const Bytes& trk)
{
    std::vector<Bytes> trks(trackCount, TrkBytes().bytes());
    trks[0] = TrkBytes().blk(0, 0, 0).bytes();
    trks[1] = trk;
    return nativeFile(reals, trks);
}

Bytes styleTrk(std::uint32_t count, std::uint8_t version)
{
    return SmfBytes().raw({version, 0}).number(count, 4).raw(Bytes(99 + 32)).raw({0}).bytes();
}

} // namespace tessaro::test
