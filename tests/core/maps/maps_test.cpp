// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/maps/meas_map.h"
#include "core/maps/tempo_map.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tessaro {
namespace {

/// The measure list as a plain list of nodes, walked from the start for every question.
class PlainMeasures {
public:
    explicit PlainMeasures(const CRealBlk& master)
    {
        m_nodes.push_back({});
        for (const CEvnt* e = master.events().head(); e; e = List<CEvnt>::next(e)) {
            const std::uint8_t* data = e->payload().data();
            const _EDT_MEASINFO cur = m_nodes.back();
            if (e->GetTime() == cur.top) {
                m_nodes.back() = made(cur.top, data);
            } else if ((e->GetTime() - cur.top) % cur.measClock == 0) {
                for (std::uint32_t top = cur.top + cur.measClock; top < e->GetTime(); top += cur.measClock) {
                    m_nodes.push_back(cur);
                    m_nodes.back().top = top;
                }
                m_nodes.push_back(made(e->GetTime(), data));
            }
        }
    }

    _EDT_MEAS at(std::uint32_t time) const
    {
        std::uint32_t measure = 0;
        _EDT_MEASINFO node;
        for (const _EDT_MEASINFO& n : m_nodes) {
            node = n;
            ++measure;
            if (n.top <= time && time < n.top + n.measClock)
                return {measure, (time - n.top) / n.beatClock + 1, (time - n.top) % n.beatClock};
        }
        const std::uint32_t rest = (time - node.top) % node.measClock;
        return {measure + (time - node.top) / node.measClock, rest / node.beatClock + 1,
                (time - node.top) % node.beatClock};
    }

    const std::vector<_EDT_MEASINFO>& nodes() const { return m_nodes; }

private:
    static _EDT_MEASINFO made(std::uint32_t top, const std::uint8_t* data)
    {
        return {top, data[0] * 1920U >> data[1], 1920U >> data[1], data[0], data[1], 24, 8};
    }
    std::vector<_EDT_MEASINFO> m_nodes;
};

void addTs(CRealBlk& master, std::uint32_t time, std::uint8_t num, std::uint8_t den)
{
    const std::uint8_t data[] = {num, den, 24, 8};
    master.AddTs(time, data);
}

bool operator==(const _EDT_MEAS& a, const _EDT_MEAS& b)
{
    return a.meas == b.meas && a.beat == b.beat && a.tick == b.tick;
}

TEST(MeasMap, AnswersAreThoseOfAWalkOverTheList)
{
    test::Dice dice(3);
    for (int round = 0; round < 60; ++round) {
        EvntPool pool;
        CRealBlk master(pool);
        std::uint32_t time = 0;
        for (int i = 0; i < 12; ++i) {
            addTs(master, time, static_cast<std::uint8_t>(1 + dice.below(9)), dice.byteBelow(6));
            time += (dice.below(12)) * (dice.below(3) ? 480U : 120U);
        }
        MeasMap map;
        ASSERT_EQ(map.build(master), SignatureFault::none);
        const PlainMeasures plain(master);
        ASSERT_EQ(map.count(), plain.nodes().size());
        for (std::uint32_t i = 0; i < map.count(); ++i) {
            const _EDT_MEASINFO node = map.node(i);
            EXPECT_EQ(node.top, plain.nodes()[i].top);
            EXPECT_EQ(node.measClock, plain.nodes()[i].measClock);
            EXPECT_EQ(map.MeasToTime({i, 0, 0}), node.top);
        }
        std::uint32_t last = 0;
        MapPos pos = 1;
        _EDT_MEAS scanned;
        for (std::uint32_t t = 0; t < time + 9000; t += 1 + dice.below(700)) {
            const _EDT_MEAS want = plain.at(t);
            ASSERT_TRUE(map.TimeToMeas(t) == want) << t;
            map.TimeToMeas(t, &last, pos, scanned);
            ASSERT_TRUE(scanned == want) << "scan at " << t;
            ASSERT_EQ(map.MeasToTime({want.meas - 1, want.beat - 1, want.tick}), t);
        }
    }
}

TEST(MeasMap, ToldCases)
{
    EvntPool pool;
    CRealBlk master(pool);
    MeasMap map;
    EXPECT_TRUE(map.TimeToMeas(1920) == (_EDT_MEAS{1, 1, 0})) << "an empty map counts no node";
    map.build(master);
    EXPECT_TRUE(map.TimeToMeas(1919) == (_EDT_MEAS{1, 4, 479}));
    EXPECT_TRUE(map.TimeToMeas(1920) == (_EDT_MEAS{2, 1, 0}));
    EXPECT_EQ(map.MeasToTime(map.TimeToMeas(0)), 2400U);
    EXPECT_EQ(map.GetMeasTime(960), 1920U);
    EXPECT_EQ(map.GetMeasTime(959), 0U);
    addTs(master, 1000, 2, 2);
    addTs(master, 1920, 3, 2);
    addTs(master, 1920 * 3, 4, 6);
    addTs(master, 1920 + 1440 * 4, 2, 5);
    EXPECT_EQ(map.build(master), SignatureFault::none) << "6 as denominator stands on no bar line and is not tried";
    EXPECT_EQ(map.TimeToMeas(3360).meas, 3U);
    std::uint32_t beat = 0;
    EXPECT_EQ(map.GetBeatTime(1920 + 1440 + 1000, &beat), 1920U + 1440 + 960);
    EXPECT_EQ(beat, 480U);
    EXPECT_EQ(map.GetBeatTime(100, &beat), 0U);
    EXPECT_EQ(beat, 60U) << "the first measure takes its beat from the last node";
}

TEST(MeasMap, RefusedSignatureKeepsWhatStands)
{
    EvntPool pool;
    CRealBlk master(pool);
    addTs(master, 0, 3, 2);
    addTs(master, 1440 * 4, 4, 6);
    addTs(master, 1440 * 5, 5, 2);
    MeasMap map;
    EXPECT_EQ(map.build(master), SignatureFault::denominator);
    EXPECT_EQ(map.count(), 4U);
    EXPECT_EQ(map.TimeToMeas(1440 * 9).meas, 10U);
    EvntPool otherPool;
    CRealBlk other(otherPool);
    addTs(other, 0, 0, 2);
    EXPECT_EQ(map.build(other), SignatureFault::numerator);
    EXPECT_EQ(map.node(0).num, 4) << "the first node keeps 4/4";
}

TEST(TempoMap, RoundingIsCarriedAndNeverAddsUp)
{
    test::Dice dice(5);
    TempoMap map;
    map.begin();
    std::uint64_t units = 0;
    std::uint32_t time = 0;
    std::uint32_t tempo = 500000;
    for (int i = 0; i < 5000; ++i) {
        const std::uint32_t step = 1 + dice.below(999);
        units += std::uint64_t{step} * tempo;
        time += step;
        tempo = 1 + dice.below(2000000);
        ASSERT_TRUE(map.add(time, tempo));
        ASSERT_EQ(map.TimeToMsecond(time), units / 480000) << i;
    }
    EXPECT_EQ(map.count(), 5001U);
}

TEST(TempoMap, ToldCases)
{
    TempoMap map;
    EXPECT_EQ(map.TimeToMsecond(480), 0U) << "no node fits";
    EXPECT_EQ(map.MsecondToTime(480), 0U);
    map.begin();
    EXPECT_EQ(map.TimeToMsecond(480), 500U);
    EXPECT_EQ(map.MsecondToTime(500), 480U);
    ASSERT_TRUE(map.add(0, 1000000));
    EXPECT_EQ(map.count(), 1U);
    ASSERT_TRUE(map.add(480, 250000));
    EXPECT_FALSE(map.add(960, 0));
    EXPECT_EQ(map.count(), 2U);
    EXPECT_EQ(map.GetTimeInfo(479).tempo, 1000000U);
    EXPECT_EQ(map.GetTimeInfo(480).tempo, 250000U);
    EXPECT_EQ(map.TimeToMsecond(960), 1250U);
    // Two nodes in one millisecond: the later one answers.
    ASSERT_TRUE(map.add(481, 480000));
    EXPECT_EQ(map.MsecondToTime(1000), 481U);
}

} // namespace
} // namespace tessaro
