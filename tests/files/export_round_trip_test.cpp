// SPDX-License-Identifier: GPL-3.0-or-later
// What a file gave is written, read back and compared; what may differ stands in docs/FILES.md.
#include "files/importer.h"
#include "files/random_smf.h"
#include "files/smf/port_meta.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace tessaro::test {
namespace {

bool isChannelEvent(const PlainEvent& e) { return e.status < 0xF0; }

/// Lets the note that began first end first, of the notes of one pitch and channel: in a file ends belong to nobody.
void pairInOrder(std::vector<PlainEvent>& events)
{
    std::map<std::pair<int, int>, std::vector<PlainEvent*>> voices;
    for (PlainEvent& e : events)
        if ((e.status & 0xF0) == 0x90) voices[{e.status, e.post1}].push_back(&e);
    for (auto& [voice, notes] : voices) {
        std::vector<std::uint32_t> ends;
        for (const PlainEvent* note : notes) ends.push_back(note->time + note->gate);
        std::sort(ends.begin(), ends.end());
        for (std::size_t i = 0; i < notes.size(); ++i) notes[i]->gate = ends[i] - notes[i]->time;
        // Any used note-off ends a note of pitch 0.
        if (voice.second == 0)
            for (PlainEvent* note : notes) note->gate = 0;
    }
}

/// A track in terms that a file can keep: absolute times and no blocks.
PlainTrack flat(const PlainTrack& trk)
{
    PlainTrack result = trk;
    result.blocks.assign(1, {});
    auto& events = result.blocks[0].events;
    for (const PlainBlock& blk : trk.blocks)
        for (const PlainEvent& e : blk.events) {
            events.push_back(e);
            events.back().time += blk.top;
        }
    pairInOrder(events);
    // Without a channel message nothing tells the channel.
    if (std::none_of(events.begin(), events.end(), isChannelEvent)) {
        result.channel = 0;
        result.transposes = true;
    }
    return result;
}

PlainSong flatTracks(const PlainSong& song)
{
    PlainSong result;
    result.loaded = song.loaded;
    for (const PlainTrack& trk : song.tracks) {
        PlainTrack plain = flat(trk);
        if (!plain.blocks[0].events.empty()) result.tracks.push_back(std::move(plain));
    }
    return result;
}

/// Loads, saves as `kind` and loads again: the songs before and after.
class RoundTrip {
public:
    bool run(const Bytes& file, std::uint8_t kind)
    {
        before = m_importer.load(file);
        if (!before.loaded) return false;
        const Bytes saved = m_importer.save(kind);
        EXPECT_FALSE(saved.empty());
        after = m_importer.load(saved);
        return true;
    }
    PlainSong before;
    PlainSong after;

private:
    Importer m_importer;
};

/// Format 0 has no ports: a meta with the body of the port's is dropped, but not from the chunks of a ZP file.
void dropPorts(PlainSong& song)
{
    for (PlainTrack& trk : song.tracks)
        for (PlainBlock& blk : trk.blocks)
            std::erase_if(blk.events, [](const PlainEvent& e) { return e.status == 0xFF && isPort(e.data); });
}

/// Gaps keep 28 bits only.
bool isLong(const PlainSong& song)
{
    for (const PlainTrack& trk : song.tracks)
        for (const PlainBlock& blk : trk.blocks)
            for (const PlainEvent& e : blk.events)
                if ((std::uint64_t{blk.top} + e.time + e.gate) >> 28U != 0) return true;
    return false;
}

bool hasMasterEvents(const PlainSong& song) { return !song.tracks[0].blocks[0].events.empty(); }

TEST(ExportRoundTrip, Format1KeepsAllEventsNamesAndPorts)
{
    RoundTrip trip;
    int compared = 0;
    for (std::uint32_t seed = 0; seed < 800; ++seed) {
        Dice dice(seed);
        if (!trip.run(randomSmf(dice), 2) || trip.before.kind != 2) continue;
        if (!hasMasterEvents(trip.before) || isLong(trip.before)) continue;
        ASSERT_EQ(difference(flatTracks(trip.before), flatTracks(trip.after)), "") << "seed " << seed;
        ++compared;
    }
    EXPECT_GT(compared, 80);
}

TEST(ExportRoundTrip, Format0AndZpKeepAllEvents)
{
    const auto sorted = [](PlainSong song) {
        song = flatTracks(song);
        for (PlainTrack& trk : song.tracks)
            std::stable_sort(trk.blocks[0].events.begin(), trk.blocks[0].events.end(),
                             [](const auto& a, const auto& b) {
                                 return std::tie(a.time, a.metaType, a.data) < std::tie(b.time, b.metaType, b.data);
                             });
        return song;
    };
    RoundTrip trip;
    int compared = 0;
    for (std::uint32_t seed = 0; seed < 800; ++seed) {
        Dice dice(seed);
        const Bytes file = randomSmf(dice);
        if (!trip.run(file, 1) || trip.before.kind == 2 || isLong(trip.before)) continue;
        dropPorts(trip.before);
        ASSERT_EQ(difference(flatTracks(trip.before), flatTracks(trip.after)), "") << "seed " << seed;
        ASSERT_TRUE(trip.run(file, 3));
        dropPorts(trip.before);
        dropPorts(trip.after);
        EXPECT_EQ(trip.after.kind, 3U);
        ASSERT_EQ(difference(sorted(trip.before), sorted(trip.after)), "") << "ZP, seed " << seed;
        ++compared;
    }
    EXPECT_GT(compared, 50);
}

} // namespace
} // namespace tessaro::test
