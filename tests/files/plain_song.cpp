// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/plain_song.h"

#include "core/edit/editor.h"

#include <sstream>

namespace tessaro::test {

namespace {

std::ostream& operator<<(std::ostream& out, const PlainEvent& e)
{
    out << "time " << e.time << " gate " << e.gate << std::hex << " status " << +e.status << " bytes " << +e.post1
        << ' ' << +e.post2 << " meta " << +e.metaType << " data";
    for (const std::uint8_t byte : e.data) out << ' ' << +byte;
    return out << std::dec;
}

std::ostream& operator<<(std::ostream& out, const PlainBlock& b)
{
    return out << "top " << b.top << " end " << b.end << " events " << b.events.size();
}

std::ostream& operator<<(std::ostream& out, const PlainTrack& t)
{
    return out << "type " << t.type << " port " << t.port << " channel " << t.channel << " transposes " << t.transposes
               << " name '" << t.name << "' blocks " << t.blocks.size();
}

template <class T>
void tell(std::ostream& out, const T& expected, const T& actual)
{
    out << "\n  expected: " << expected << "\n  actual:   " << actual;
}

bool tellEvents(std::ostream& out, const PlainBlock& expected, const PlainBlock& actual)
{
    for (std::size_t i = 0; i < std::min(expected.events.size(), actual.events.size()); ++i) {
        if (expected.events[i] == actual.events[i]) continue;
        out << "event " << i;
        tell(out, expected.events[i], actual.events[i]);
        return true;
    }
    return false;
}

std::vector<PlainEvent> plainEvents(const CRealBlk& real)
{
    std::vector<PlainEvent> events;
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e)) {
        const auto body = e->payload();
        events.push_back({e->GetTime(), e->GetGateTime(), e->GetStatus(), e->GetPost1(), e->GetPost2(),
                          e->GetMetaType(), Bytes(body.begin(), body.end())});
    }
    return events;
}

} // namespace

std::vector<PlainTrack> plainTracks(const CEditor& editor)
{
    std::vector<PlainTrack> tracks;
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk)) {
        PlainTrack& plain = tracks.emplace_back();
        plain = {trk->GetType(), trk->GetPort(), trk->GetCh(), trk->GetTransEnable(), trk->GetName(), {}};
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            plain.blocks.push_back({blk->GetTimeTop(), blk->GetTimeEnd(), plainEvents(*blk->GetRealBlk())});
    }
    return tracks;
}

std::string difference(const PlainSong& expected, const PlainSong& actual)
{
    std::ostringstream out;
    if (expected.kind != actual.kind) out << "kind " << expected.kind << " became " << actual.kind;
    if (expected.loaded != actual.loaded) out << " loaded " << expected.loaded << " became " << actual.loaded;
    if (expected.partial != actual.partial) out << " partial " << expected.partial << " became " << actual.partial;
    if (expected.complaints != actual.complaints)
        out << " complaints " << expected.complaints << " became " << actual.complaints;
    if (!out.str().empty() || !expected.loaded || expected.wraps || expected.tracks == actual.tracks) return out.str();
    for (std::size_t t = 0; t < std::min(expected.tracks.size(), actual.tracks.size()); ++t) {
        const PlainTrack& want = expected.tracks[t];
        const PlainTrack& got = actual.tracks[t];
        if (want == got) continue;
        out << "track " << t << ' ';
        for (std::size_t b = 0; b < std::min(want.blocks.size(), got.blocks.size()); ++b) {
            if (want.blocks[b] == got.blocks[b]) continue;
            out << "block " << b << ' ';
            if (!tellEvents(out, want.blocks[b], got.blocks[b])) tell(out, want.blocks[b], got.blocks[b]);
            return out.str();
        }
        tell(out, want, got);
        return out.str();
    }
    return "number of tracks";
}

} // namespace tessaro::test
