// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/literal_import.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>

namespace tessaro::test {

namespace {

using u8 = std::uint8_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;

struct PastEnd {};

/// Ticks since a start, by the carried remainder.
struct Ticks {
    u64 division;
    u32 time = 0;
    u64 rest = 0;
    bool wraps = false;
    void add(u32 delta)
    {
        const u64 units = u64{delta} * 480 + rest;
        const u64 sum = time + units / division;
        wraps = wraps || sum > 0xFFFFFFFF;
        time = static_cast<u32>(sum);
        rest = units % division;
    }
};

class LiteralImport {
public:
    explicit LiteralImport(Bytes file) : m_file(std::move(file)) {}

    PlainSong run()
    {
        m_song.kind = recognise();
        if (m_song.kind == 0) return m_song;
        makeTracks();
        m_song.loaded = m_song.kind == 2 ? loadSmf1() : m_song.kind == 1 ? loadSmf0() : loadZp();
        if (!m_song.loaded) return m_song;
        buildMeasures();
        if (m_song.kind == 2) blkSize();
        packSysex();
        return m_song;
    }

private:
    // Reading ---------------------------------------------------------------------------------------------

    u8 byte()
    {
        if (m_pos >= m_file.size()) throw PastEnd{};
        return m_file[m_pos++];
    }
    u32 word(int width)
    {
        u32 value = 0;
        while (width-- > 0) value = value << 8U | byte();
        return value;
    }
    u32 varLen()
    {
        u32 value = 0;
        u8 b = 0;
        do {
            b = byte();
            value = value << 7U | (b & 0x7FU);
        } while (b >= 0x80);
        return value;
    }
    void skip(u64 count)
    {
        if (count > m_file.size() - m_pos) throw PastEnd{};
        m_pos += count;
    }
    Bytes body()
    {
        const u32 length = varLen();
        const u64 from = m_pos;
        skip(length);
        return {m_file.begin() + static_cast<long>(from), m_file.begin() + static_cast<long>(m_pos)};
    }

    // Recognising -----------------------------------------------------------------------------------------

    bool hasId(u64 at, std::string_view id) const
    {
        return at + 4 <= m_file.size() && std::equal(id.begin(), id.end(), m_file.begin() + static_cast<long>(at));
    }
    /// The place behind a chunk of this name; none if it is not there or not whole.
    std::optional<u64> behindChunk(u64 at, std::string_view id)
    {
        if (!hasId(at, id) || at + 8 > m_file.size()) return std::nullopt;
        m_pos = at + 4;
        const u64 end = at + 8 + word(4);
        if (end > m_file.size()) return std::nullopt;
        return end;
    }
    unsigned recognise()
    {
        if (hasId(0, "TR9H")) return 0;
        for (u64 at = 0; at + 4 < m_file.size(); ++at) {
            if (!hasId(at, "MThd")) continue;
            if (at + 14 > m_file.size()) return 0;
            m_pos = at + 4;
            const u64 length = word(4);
            const u32 format = word(2);
            const u32 numTrk = word(2);
            m_division = word(2);
            m_first = at + 8 + length;
            m_numTrk = numTrk;
            return m_division == 0 ? 0 : kindOf(format, numTrk);
        }
        return 0;
    }
    unsigned kindOf(u32 format, u32 numTrk)
    {
        if (format == 0 && numTrk == 1) {
            const auto behind = behindChunk(m_first, "MTrk");
            if (!behind) return 0;
            const auto behindInfo = behindChunk(*behind, "ZPIH");
            if (!behindInfo || !behindChunk(*behindInfo, "ZPKM")) return 1;
            m_zpih = *behind;
            m_zpkm = *behindInfo;
            return 3;
        }
        if (format != 1 || numTrk == 0) return 0;
        std::optional<u64> at = m_first;
        for (u32 i = 0; i < numTrk; ++i)
            if (!(at = behindChunk(*at, "MTrk"))) return 0;
        return 2;
    }

    // Tracks and blocks -----------------------------------------------------------------------------------

    void makeTracks()
    {
        m_song.tracks.resize(101);
        for (unsigned n = 1; n <= 100; ++n) {
            m_song.tracks[n].type = n <= 16 ? 1 : 0;
            m_song.tracks[n].channel = (n - 1) % 16;
            m_song.tracks[n].transposes = (n - 1) % 16 != 9;
        }
        m_song.tracks[0].type = 1;
        m_song.tracks[0].blocks.emplace_back();
    }
    /// The track that the target has in this chunk; makes its block. -1 if there is none left.
    int trackOf(unsigned target)
    {
        if (target == 0) return 0;
        if (m_trackOf[target] >= 0) return m_trackOf[target];
        const bool format1 = m_song.kind == 2;
        if (format1 && m_nextTrk == 101) return -1;
        const int n = format1 ? m_nextTrk++ : static_cast<int>(target);
        PlainTrack& trk = track(n);
        trk.type = 1;
        trk.channel = target - 1;
        if (format1) trk.transposes = target != 10;
        trk.blocks.emplace_back();
        return m_trackOf[target] = n;
    }
    PlainTrack& track(int n) { return m_song.tracks[static_cast<std::size_t>(n)]; }
    PlainBlock& block(int n) { return track(n).blocks.front(); }
    static void raise(PlainBlock& b, u32 end) { b.end = std::max(b.end, end); }

    // Chunks ----------------------------------------------------------------------------------------------

    void enterChunk(u64 at)
    {
        m_pos = at + 4;
        m_chunkEnd = word(4);
        m_chunkEnd += m_pos;
        m_now = Ticks{m_division};
    }
    template <class Event>
    bool oneEvent(Event event)
    {
        try {
            m_now.add(varLen());
            m_song.wraps = m_song.wraps || m_now.wraps;
            m_status = byte();
            return event();
        } catch (const PastEnd&) {
            return false;
        }
    }
    template <class Event>
    bool loopSmf0(Event event)
    {
        while (m_pos < m_chunkEnd) {
            if (oneEvent(event)) continue;
            ++m_song.complaints;
            return false;
        }
        return true;
    }

    bool loadSmf0()
    {
        m_trackOf.fill(-1);
        enterChunk(m_first);
        return loopSmf0([&] {
            if (m_status == 0xF0 || m_status == 0xF7) return sysex(1);
            return m_status == 0xFF ? meta0() : channelEvent();
        });
    }

    bool loadZp()
    {
        if (!loadSmf0()) return false;
        trackOf(1);
        for (const u64 at : {m_zpih, m_zpkm}) {
            enterChunk(at);
            if (!loopSmf0([&] { return m_status == 0xFF && metaZp(); })) return false;
        }
        return true;
    }

    bool loadSmf1()
    {
        m_pos = m_first;
        for (u32 chunk = 0; chunk < m_numTrk; ++chunk) {
            try {
                enterChunk(m_pos);
            } catch (const PastEnd&) {
                return leftOut();
            }
            m_trackOf.fill(-1);
            m_port = -1;
            m_firstChunk = chunk == 0;
            m_firstCh = firstChannel();
            bool reading = true;
            while (reading && m_pos < m_chunkEnd) reading = oneEvent([&] { return event1(); });
            if (!reading && !leftOut()) return false;
            if (m_port >= 0)
                for (const int n : m_trackOf)
                    if (n >= 0) track(n).port = static_cast<unsigned>(m_port);
        }
        return true;
    }
    bool leftOut() { return m_song.partial = m_nextTrk == 101; }

    unsigned firstChannel()
    {
        const u64 back = m_pos;
        unsigned found = 1;
        try {
            while (m_pos < m_chunkEnd) {
                varLen();
                u8 status = byte();
                if (status == 0xFF) byte();
                if (status == 0xF0 || status == 0xF7 || status == 0xFF) {
                    skip(varLen());
                    continue;
                }
                if (status < 0x80) status = m_running;
                if (status < 0xF0) found = (status & 0x0FU) + 1;
                break;
            }
        } catch (const PastEnd&) {
        }
        m_pos = back;
        return found;
    }

    bool event1()
    {
        if (m_status == 0xF0 || m_status == 0xF7) return sysex(m_firstCh);
        return m_status == 0xFF ? meta1() : channelEvent();
    }

    // Events ----------------------------------------------------------------------------------------------

    PlainEvent& add(int n, u8 p1 = 0, u8 p2 = 0)
    {
        block(n).events.push_back({m_now.time, 0, m_status, p1, p2, 0, {}});
        return block(n).events.back();
    }
    bool sysex(unsigned target)
    {
        const int n = trackOf(target);
        if (n < 0) return false;
        block(n).end = m_now.time;
        Bytes data = body();
        add(n).data = std::move(data);
        return true;
    }
    void addMeta(int n, u8 type, Bytes data)
    {
        if (type >= 0x80) return;
        PlainEvent& e = add(n);
        e.metaType = type;
        e.data = std::move(data);
    }
    static bool isPort(const Bytes& d) { return d.size() == 4 && d[0] == 0x43 && d[1] == 0 && d[2] == 1; }

    bool meta0()
    {
        const u8 type = byte();
        Bytes data = body();
        if (type == 0x2F || isPort(data)) return true;
        const int n = trackOf(type == 0x05 ? 1 : 0);
        block(n).end = m_now.time;
        addMeta(n, type, std::move(data));
        return true;
    }
    bool metaZp()
    {
        const u8 type = byte();
        Bytes data = body();
        if (type == 0x2F) return true;
        PlainBlock& b = block(type == 0x05 ? 1 : 0);
        raise(b, m_now.time);
        if (type >= 0x80) return true;
        const auto place =
            std::find_if(b.events.begin(), b.events.end(), [&](const PlainEvent& e) { return e.time > m_now.time; });
        b.events.insert(place, {m_now.time, 0, 0xFF, 0, 0, type, std::move(data)});
        return true;
    }
    bool meta1()
    {
        const u8 type = byte();
        Bytes data = body();
        const bool port = type == 0x7F && isPort(data);
        if (m_firstChunk) {
            if (type == 0x2F) return true;
            if (port) {
                m_port = data[3];
                return true;
            }
            block(0).end = m_now.time;
            addMeta(0, type, std::move(data));
            return true;
        }
        const int n = trackOf(m_firstCh);
        if (n < 0) return false;
        block(n).end = m_now.time;
        if (port)
            m_port = data[3];
        else if ((type == 0x03 || type == 0x01) && m_now.time == 0)
            track(n).name.assign(data.begin(), data.end());
        else if (type != 0x2F)
            addMeta(n, type, std::move(data));
        return true;
    }

    bool channelEvent()
    {
        if (m_status < 0x80) {
            m_status = m_running;
            --m_pos;
        } else {
            m_running = m_status;
        }
        const unsigned target = (m_status & 0x0FU) + 1;
        switch (m_status >> 4U) {
        case 0x8: skip(2); return true;
        case 0x9: return noteOn(target);
        case 0xA:
        case 0xB:
        case 0xE: return shortEvent(target, 2);
        case 0xC:
        case 0xD: return shortEvent(target, 1);
        default: return false;
        }
    }
    bool shortEvent(unsigned target, int length)
    {
        const u8 post1 = byte();
        const u8 post2 = length == 2 ? byte() : u8{0};
        const int n = trackOf(target);
        if (n < 0) return false;
        raise(block(n), m_now.time);
        add(n, post1, post2);
        return true;
    }
    bool noteOn(unsigned target)
    {
        skip(2);
        const u8 pitch = m_file[m_pos - 2];
        const u8 velocity = m_file[m_pos - 1];
        if (velocity == 0) return true;
        const int n = trackOf(target);
        if (n < 0) return false;
        PlainEvent& e = add(n, pitch, velocity);
        e.gate = std::max(gateTime(pitch), 1U);
        m_song.wraps = m_song.wraps || e.time + e.gate < e.time;
        raise(block(n), e.time + e.gate);
        return true;
    }
    /// Looks ahead for the note-off and marks it as used by overwriting its pitch.
    u32 gateTime(u8 note)
    {
        const u64 back = m_pos;
        Ticks count{m_division};
        u8 running = m_status;
        const u8 channel = m_status & 0x0FU;
        try {
            while (m_pos < m_chunkEnd) {
                count.add(varLen());
                u8 status = byte();
                if (status == 0xFF) byte();
                if (status == 0xF0 || status == 0xF7 || status == 0xFF) {
                    skip(varLen());
                    continue;
                }
                if (status < 0x80) {
                    status = running;
                    --m_pos;
                } else {
                    running = status;
                }
                const unsigned kind = status >> 4U;
                if (kind == 0x8 || kind == 0x9) {
                    const u8 pitch = byte();
                    const bool isOff = kind == 0x8 || byte() == 0;
                    if (isOff && (status & 0x0FU) == channel && pitch == note) {
                        m_file[m_pos - (kind == 0x8 ? 1 : 2)] = 0;
                        break;
                    }
                    if (kind == 0x8) byte();
                } else if (kind == 0xC || kind == 0xD) {
                    byte();
                } else if (kind == 0xA || kind == 0xB || kind == 0xE) {
                    skip(2);
                } else {
                    if (m_badPlaces.insert(m_pos).second) ++m_song.complaints;
                    break;
                }
            }
        } catch (const PastEnd&) {
        }
        m_pos = back;
        return count.time;
    }

    // Afterwards ------------------------------------------------------------------------------------------

    struct Measure {
        u32 top;
        u32 clock;
    };
    /// One entry for each stretch of equal measures.
    void buildMeasures()
    {
        m_measures = {{0, 1920}};
        for (const PlainEvent& e : block(0).events) {
            if (e.status != 0xFF || e.metaType != 0x58 || e.data.size() != 4) continue;
            const Measure last = m_measures.back();
            const bool again = e.time == last.top;
            if (!again && (e.time - last.top) % last.clock != 0) continue;
            if (e.data[0] == 0 || e.data[1] > 5) return;
            if (again) m_measures.pop_back();
            m_measures.push_back({e.time, (e.data[0] * 1920U) >> e.data[1]});
        }
    }
    u32 barLine(u32 time, u32 measuresOn) const
    {
        Measure m = m_measures.front();
        for (const Measure& next : m_measures)
            if (next.top <= time) m = next;
        return m.top + ((time - m.top) / m.clock + measuresOn) * m.clock;
    }
    void blkSize()
    {
        for (std::size_t n = 1; n < m_song.tracks.size(); ++n) {
            if (m_song.tracks[n].blocks.empty()) continue;
            PlainBlock& b = m_song.tracks[n].blocks.front();
            if (b.events.empty()) continue;
            b.top = barLine(b.events.front().time, 0);
            const u32 end = barLine(b.end, 1);
            m_song.wraps = m_song.wraps || end < b.end;
            b.end = end;
            for (PlainEvent& e : b.events) e.time -= b.top;
        }
    }
    void packSysex()
    {
        for (std::size_t n = 1; n < m_song.tracks.size(); ++n) {
            if (m_song.tracks[n].type != 1) continue;
            for (PlainBlock& b : m_song.tracks[n].blocks) packBlock(b);
        }
    }
    static void packBlock(PlainBlock& b)
    {
        std::vector<PlainEvent> kept;
        std::optional<std::size_t> start;
        for (PlainEvent& e : b.events) {
            if (e.status != 0xF7) {
                if (e.status == 0xF0) start = kept.size();
                kept.push_back(std::move(e));
            } else if (start && !kept[*start].data.empty()) {
                Bytes& data = kept[*start].data;
                data.insert(data.end(), e.data.begin(), e.data.end());
            }
        }
        b.events = std::move(kept);
    }

    Bytes m_file;
    PlainSong m_song;
    u64 m_pos = 0;
    u32 m_division = 480;
    u64 m_first = 0;
    u32 m_numTrk = 0;
    u64 m_zpih = 0;
    u64 m_zpkm = 0;
    u64 m_chunkEnd = 0;
    Ticks m_now{480};
    u8 m_status = 0;
    u8 m_running = 0;
    std::array<int, 17> m_trackOf{};
    int m_nextTrk = 1;
    bool m_firstChunk = false;
    unsigned m_firstCh = 1;
    int m_port = -1;
    std::set<u64> m_badPlaces;
    std::vector<Measure> m_measures;
};

} // namespace

PlainSong literalImport(Bytes file) { return LiteralImport(std::move(file)).run(); }

} // namespace tessaro::test
