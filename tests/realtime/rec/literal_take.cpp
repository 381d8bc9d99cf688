// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/literal_take.h"

#include <algorithm>
#include <map>

namespace tessaro::test {

// The song

LiteralSong::LiteralSong(const CEditor& editor)
{
    std::map<const CRealBlk*, std::shared_ptr<Real>> reals;
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk)) {
        Trk& made = trks.emplace_back();
        made.type = trk->GetType();
        made.channel = trk->GetCh();
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            std::shared_ptr<Real>& real = reals[blk->GetRealBlk()];
            if (!real) {
                real = std::make_shared<Real>();
                for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
                    const bool isShort = e->GetStatus() >= 0x80 && e->GetStatus() < 0xF0;
                    const std::string rest =
                        isShort ? ""
                                : std::to_string(e->GetPost1()) + "/" + std::to_string(e->GetPost2()) + "/"
                                      + std::to_string(e->GetPost3()) + "/" + std::to_string(e->GetPost4()) + "/"
                                      + std::to_string(e->GetMetaType());
                    const bool hasTwo = (e->GetStatus() & 0xE0U) != 0xC0;
                    real->push_back(std::make_shared<Evnt>(Evnt{e->GetTime(),
                                                                e->GetStatus(),
                                                                isShort ? e->GetPost1() : std::uint8_t{0},
                                                                isShort && hasTwo ? e->GetPost2() : std::uint8_t{0},
                                                                e->GetGateTime(),
                                                                rest,
                                                                {e->payload().begin(), e->payload().end()}}));
                }
            }
            made.blks.push_back(
                std::make_shared<Blk>(Blk{blk->GetType(), blk->GetTimeTop(), blk->GetTimeEnd(), blk->GetName(), real}));
        }
    }
}

std::string LiteralSong::picture() const
{
    std::string out;
    for (std::size_t n = 0; n < trks.size(); ++n) {
        for (const BlkPtr& blk : trks[n].blks) {
            out += "track " + std::to_string(n) + " type " + std::to_string(trks[n].type) + " block "
                 + std::to_string(blk->type) + ' ' + std::to_string(blk->top) + '-' + std::to_string(blk->end) + '\n';
            for (const auto& e : *blk->real) {
                out += "  " + std::to_string(e->time) + ' ' + std::to_string(e->status) + ' ' + std::to_string(e->data1)
                     + ' ' + std::to_string(e->data2) + ' ' + std::to_string(e->gate) + ' ' + e->rest;
                for (const std::uint8_t byte : e->bytes) out += ',' + std::to_string(byte);
                out += '\n';
            }
        }
    }
    return out;
}

void LiteralSong::add(Trk& trk, const BlkPtr& blk)
{
    auto at = trk.blks.end();
    while (at != trk.blks.begin() && (*std::prev(at))->top > blk->top) --at;
    trk.blks.insert(at, blk);
}

void LiteralSong::insert(Real& real, const std::shared_ptr<Evnt>& evnt)
{
    auto at = real.end();
    while (at != real.begin() && (*std::prev(at))->time > evnt->time) --at;
    real.insert(at, evnt);
}

void LiteralSong::fitGhosts(const Blk& source)
{
    for (Trk& trk : trks)
        for (const BlkPtr& blk : trk.blks)
            if (blk->type == 2 && blk->real == source.real) blk->end = blk->top + (source.end - source.top);
}

void LiteralSong::size(Blk& blk, std::uint32_t end)
{
    if (end <= blk.end)
        for (const auto& e : *blk.real) end = std::max(end, blk.top + e->time + e->gate);
    if (end >= blk.top) blk.end = end;
    fitGhosts(blk);
}

void LiteralSong::grow(Blk& blk, std::uint32_t end)
{
    if (end <= blk.end) return;
    blk.end = end;
    fitGhosts(blk);
}

void LiteralSong::remove(Trk& trk, const Blk* blk)
{
    std::erase_if(trk.blks, [blk](const BlkPtr& b) { return b.get() == blk; });
}

void LiteralSong::clear(Trk& trk, const Blk* kept, std::int64_t in, std::int64_t out)
{
    for (const BlkPtr& blk : trk.blks) {
        if (blk->type != 1 || blk.get() == kept) continue;
        std::erase_if(*blk->real, [&](const auto& e) {
            const std::int64_t time = std::int64_t{blk->top} + e->time;
            return time >= in && time < out;
        });
    }
}

LiteralSong::BlkPtr LiteralSong::mergeInto(Trk& trk, const BlkPtr& blk, BlkPtr into, bool mayDeleteGhosts)
{
    if (into->top > blk->top) {
        const std::uint32_t delta = into->top - blk->top;
        const auto moved = std::make_shared<Blk>(*into);
        moved->top = blk->top;
        moved->end = into->end - delta;
        add(trk, moved);
        remove(trk, into.get());
        into = moved;
        const Real events = *into->real; // from the tail to the head, each behind those of its new time
        for (auto e = events.rbegin(); e != events.rend(); ++e) {
            into->real->erase(std::find(into->real->begin(), into->real->end(), *e));
            (*e)->time += delta;
            insert(*into->real, *e);
            grow(*into, into->top + (*e)->time + (*e)->gate);
        }
    }
    const auto isGhost = [&blk](const BlkPtr& b) { return b->type == 2 && b->real == blk->real; };
    for (Trk& other : trks) {
        if (std::none_of(other.blks.begin(), other.blks.end(), isGhost)) continue;
        if (!mayDeleteGhosts) return blk;
    }
    for (const auto& e : *blk->real) {
        const auto copy = std::make_shared<Evnt>(*e);
        copy->time += blk->top - into->top;
        insert(*into->real, copy);
    }
    grow(*into, blk->end);
    for (Trk& other : trks) std::erase_if(other.blks, isGhost);
    remove(trk, blk.get());
    return into;
}

// The take

namespace {

struct Recording {
    LiteralSong& song;
    const Performance& p;

    struct Channel {
        int track = 0; ///< 0 for none
        LiteralSong::BlkPtr blk;
        std::vector<LiteralSong::BlkPtr> before; ///< the track's other blocks
    };
    struct Held {
        int status = 0;
        int key = 0;
        std::shared_ptr<LiteralSong::Evnt> evnt;
        std::int64_t tick = 0;
    };
    struct Early {
        int status = 0;
        int key = 0;
        int velocity = 0;
    };

    Channel channels[16] = {};
    bool oneTrack = false;
    int firstChannel = -1;
    Held notes[128] = {};
    Early early[128] = {};
    std::uint8_t bend[16][2] = {};
    bool earlyNotes = false;
    bool earlyBends = false;
    bool wrapPending = true;
    bool punch = false;
    std::uint32_t last = 0;

    void start();
    void entry(const Performance::Item& item);
    void firstEntry();
    void passed(std::uint32_t tick);
    void end();
    bool merge(Channel& channel);

    std::shared_ptr<LiteralSong::Evnt> put(Channel& channel, std::int64_t tick, int status, int data1, int data2,
                                           std::uint32_t gate = 0)
    {
        const bool two = (status & 0xE0) != 0xC0;
        const auto e = std::make_shared<LiteralSong::Evnt>();
        e->time = static_cast<std::uint32_t>(std::max(tick, std::int64_t{p.top}) - p.top);
        e->status = static_cast<std::uint8_t>(status);
        e->data1 = static_cast<std::uint8_t>(data1);
        e->data2 = static_cast<std::uint8_t>(two ? data2 : 0);
        e->gate = gate;
        LiteralSong::insert(*channel.blk->real, e);
        return e;
    }
    void sysex(const Performance::Item& item, std::int64_t tick)
    {
        if (p.inFilter & 0x80U) return;
        const auto e = put(channels[firstChannel], tick, 0xF0, 0, 0);
        e->data1 = e->data2 = 0;
        e->rest = "0/0/0/0/0";
        e->bytes.assign(item.bytes.begin() + 1, item.bytes.end());
    }
    /// What a channel message of this status is filtered by.
    [[nodiscard]] bool filtered(int status, int data1) const
    {
        switch (status & 0xF0) {
        case 0x80:
        case 0x90: return p.inFilter & 0x01U;
        case 0xA0: return p.inFilter & 0x04U;
        case 0xB0: return (p.inFilter & 0x08U) || p.dropController[static_cast<std::size_t>(data1)];
        case 0xC0: return p.inFilter & 0x10U;
        case 0xD0: return p.inFilter & 0x20U;
        case 0xE0: return p.inFilter & 0x40U;
        default: return false;
        }
    }
    [[nodiscard]] std::int64_t earlyTick() const { return punch ? p.settings.punchIn : std::int64_t{p.top}; }
    void endNote(Held& note, std::int64_t time)
    {
        if (punch) time = std::min(time, p.settings.punchOut);
        note.evnt->gate = static_cast<std::uint32_t>(std::max<std::int64_t>(time - note.tick, 0));
        note = {};
    }
    template <class Do>
    void eachTrack(Do&& act)
    {
        for (Channel& channel : channels) {
            if (channel.track) act(channel);
            if (oneTrack) break;
        }
    }
};

void Recording::start()
{
    for (auto& b : bend) b[0] = 0, b[1] = 0x40;
    last = p.top;
    for (const int track : p.tracks) {
        LiteralSong::Trk& trk = song.trks[static_cast<std::size_t>(track)];
        if (trk.type == 2 || channels[trk.channel].track) continue;
        trk.type = 1;
        Channel& channel = channels[trk.channel];
        channel.track = track;
        channel.before = trk.blks;
        channel.blk = std::make_shared<LiteralSong::Blk>();
        channel.blk->top = channel.blk->end = p.top;
        for (int n = 0; n < 2; ++n) {
            const auto e = put(channel, p.top, 0xFF, 0, 0);
            e->rest = "0/0/0/0/1";
        }
        song.add(trk, channel.blk);
    }
    int used = 0;
    for (int ch = 15; ch >= 0; --ch)
        if (channels[ch].track) firstChannel = ch, ++used;
    oneTrack = used == 1;
    if (oneTrack) std::fill(std::begin(channels), std::end(channels), Channel{channels[firstChannel]});

    const std::int64_t in = p.settings.punchIn;
    const std::int64_t out = p.settings.punchOut;
    punch = p.settings.realMode == RealRecMode::punch && out > in;
    if (punch && in >= 0)
        eachTrack([&](Channel& c) { song.clear(song.trks[static_cast<std::size_t>(c.track)], c.blk.get(), in, out); });
}

void Recording::entry(const Performance::Item& item)
{
    const std::int64_t time = item.tick;
    const std::int64_t in = p.settings.punchIn;
    const bool isBefore = item.tick <= p.top;
    if (!isBefore) firstEntry();
    const bool inWindow = !punch || (time + 120 >= in && time < in);
    if (item.status >= 0xF0) {
        if (!isBefore || inWindow) sysex(item, isBefore ? earlyTick() : time);
        return;
    }
    Channel& channel = channels[item.status & 0x0FU];
    if (!channel.track || filtered(item.status, item.data1)) return;
    int status = item.status;
    int velocity = item.data2;
    if ((status & 0xF0) == 0x80) status |= 0x10, velocity = 0;
    const auto matches = [&](const auto& n) { return n.status == status && n.key == item.data1; };
    const auto isFree = [](const auto& n) { return n.status == 0; };
    Held* held = std::find_if(std::begin(notes), std::end(notes), matches);
    Early* known = std::find_if(std::begin(early), std::end(early), matches);
    const bool isNote = (status & 0xF0) == 0x90;

    if (isBefore) {
        // The song has wrapped when a release before the take finds a held note: it lasted to the loop's end.
        if (isNote && velocity == 0 && known == std::end(early) && held != std::end(notes)) endNote(*held, p.loop.end);
        if (!inWindow) return;
        if (isNote && velocity == 0) {
            if (known != std::end(early)) *known = {};
        } else if (isNote) {
            Early* slot = std::find_if(std::begin(early), std::end(early), isFree);
            if (slot != std::end(early)) *slot = {status, item.data1, velocity};
            earlyNotes = true;
        } else if ((status & 0xF0) == 0xE0) {
            bend[status & 0x0F][0] = item.data1;
            bend[status & 0x0F][1] = item.data2;
            earlyBends = true;
        } else if ((status & 0xF0) == 0xB0 || (status & 0xF0) == 0xC0) {
            put(channel, earlyTick(), status, item.data1, item.data2);
        }
        return;
    }
    if (isNote && velocity == 0) {
        if (held != std::end(notes)) endNote(*held, time < held->tick ? std::int64_t{p.loop.end} : time);
    } else if (isNote) {
        if (punch && (time < in || time >= p.settings.punchOut)) return;
        Held* slot = std::find_if(std::begin(notes), std::end(notes), isFree);
        if (slot == std::end(notes)) return;
        *slot = {status, item.data1, put(channel, time, status, item.data1, velocity, 10), time};
    } else {
        put(channel, time, status, item.data1, item.data2);
    }
}

void Recording::firstEntry()
{
    if (earlyNotes) {
        for (Early& n : early) {
            if (!n.status) continue;
            Held* slot = std::find_if(std::begin(notes), std::end(notes), [](const Held& h) { return h.status == 0; });
            if (slot == std::end(notes)) break;
            *slot = {n.status, n.key, put(channels[n.status & 0x0F], earlyTick(), n.status, n.key, n.velocity, 10),
                     earlyTick()};
        }
        std::fill(std::begin(early), std::end(early), Early{});
        earlyNotes = false;
    }
    if (!earlyBends) return;
    for (int ch = 0; ch < 16; ++ch) {
        if (bend[ch][0] != 0 || bend[ch][1] != 0x40)
            put(channels[ch], earlyTick(), 0xE0 | ch, bend[ch][0], bend[ch][1]);
        bend[ch][0] = 0;
        bend[ch][1] = 0x40;
    }
    earlyBends = false;
}

void Recording::passed(std::uint32_t tick)
{
    if (tick > last) {
        last = tick;
    } else if (wrapPending && p.loop.on) {
        wrapPending = false;
        eachTrack([&](Channel& c) { song.size(*c.blk, p.loop.end); });
    }
}

void Recording::end()
{
    last = p.stop > last ? p.stop : p.loop.end;
    for (Held& note : notes) {
        if (!note.status) continue;
        note.evnt->gate = static_cast<std::uint32_t>(std::max<std::int64_t>(p.stop - note.tick, 1));
        LiteralSong::Blk& blk = *channels[note.status & 0x0F].blk;
        song.grow(blk, blk.top + note.evnt->time + note.evnt->gate);
    }
    std::uint32_t top = p.top;
    eachTrack([&](Channel& c) {
        song.size(*c.blk, last);
        top = std::max(top, c.blk->end);
    });
    eachTrack([&](Channel& c) {
        LiteralSong::Trk& trk = song.trks[static_cast<std::size_t>(c.track)];
        if (p.settings.realMode == RealRecMode::replace) song.clear(trk, c.blk.get(), p.top, top);
        if (p.settings.newBlock || merge(c)) return;
        const auto at = std::find(trk.blks.begin(), trk.blks.end(), c.blk);
        const auto isReal = [](const LiteralSong::BlkPtr& b) { return b->type == 1; };
        const auto back = std::find_if(std::make_reverse_iterator(at), trk.blks.rend(), isReal);
        const auto on = std::find_if(std::next(at), trk.blks.end(), isReal);
        if (back != trk.blks.rend())
            c.blk = song.mergeInto(trk, c.blk, *back, p.mayDeleteGhosts);
        else if (on != trk.blks.end())
            c.blk = song.mergeInto(trk, c.blk, *on, p.mayDeleteGhosts);
    });
}

/// Into the blocks that were selected.
bool Recording::merge(Channel& c)
{
    LiteralSong::Trk& trk = song.trks[static_cast<std::size_t>(c.track)];
    bool any = false;
    const auto chosen = p.selected.find(c.track);
    if (chosen == p.selected.end()) return false;
    for (const std::size_t index : chosen->second) {
        const LiteralSong::BlkPtr blk = c.before[index];
        const bool stands = std::find(trk.blks.begin(), trk.blks.end(), blk) != trk.blks.end();
        if (!stands || blk->type != 1) continue;
        c.blk = song.mergeInto(trk, c.blk, blk, p.mayDeleteGhosts);
        any = true;
    }
    return any;
}

} // namespace

void recordLiterally(LiteralSong& song, const Performance& performance)
{
    const auto take = std::make_unique<Recording>(Recording{song, performance});
    take->start();
    for (const Performance::Item& item : performance.items) item.passed ? take->passed(item.tick) : take->entry(item);
    take->end();
}

} // namespace tessaro::test
