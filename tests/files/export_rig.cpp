// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/export_rig.h"

#include "files/smf_out/smf_writer.h"

#include <stdexcept>

namespace tessaro::test {

ExportRig::ExportRig(ScoreLinks* links) : NativeBench({}, links)
{
    strings.setLanguage(Language::english);
    master().Remove();
}

CRealBlk& ExportRig::blk(int number, std::uint32_t top)
{
    CRealBlk& real = *editor.NewAddTailRealBlk();
    trk(number).NewAdd(top, &real, blktype::real);
    return real;
}

Bytes ExportRig::save(std::uint8_t as, ScorePlayout& playout)
{
    Bytes file;
    VectorSink sink(file);
    return saveSmf(as, editor, strings, playout, sink) ? file : Bytes{};
}

void addBody(CRealBlk& real, std::uint32_t time, std::uint8_t status, const std::vector<std::uint8_t>& posts,
             std::uint32_t gate, const Bytes& body)
{
    const auto post = [&posts](std::size_t i) { return i < posts.size() ? posts[i] : std::uint8_t{0}; };
    _EDT_EVNT rec;
    rec.status = status;
    rec.post1 = post(0);
    rec.post2 = post(1);
    rec.post3 = post(2);
    rec.post4 = post(3);
    rec.time = time;
    rec.gateTime = gate;
    rec.szData = static_cast<std::uint32_t>(body.size());
    rec.data = body.data();
    CEvnt* e = nullptr;
    real.NewAddTail(&e);
    if (!e->Set(rec)) throw std::logic_error("the song has no such event");
}

void addShort(CRealBlk& real, std::uint32_t time, std::uint8_t status, const std::vector<std::uint8_t>& posts,
              std::uint32_t gate)
{
    addBody(real, time, status, posts, gate, {});
}

void addMeta(CRealBlk& real, std::uint32_t time, std::uint8_t type, const Bytes& body)
{
    CEvnt* e = nullptr;
    real.NewAddTail(&e);
    e->SetMeta(time, type, static_cast<std::uint32_t>(body.size()), body.data(), 0);
}

void addMeta(CRealBlk& real, std::uint32_t time, std::uint8_t type, std::string_view body)
{
    addMeta(real, time, type, Bytes(body.begin(), body.end()));
}

} // namespace tessaro::test
