// SPDX-License-Identifier: GPL-3.0-or-later
#include "streams/take_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace tessaro::test {

namespace {

constexpr Nanos millisecond = std::chrono::milliseconds(1);

double inMs(Nanos time) { return std::chrono::duration<double, std::milli>(time).count(); }

/// How a note ends in the stream, whatever status it came with.
Bytes plainOff(const Bytes& bytes) { return {static_cast<std::uint8_t>(0x90U | (bytes[0] & 0x0FU)), bytes[1], 0}; }

Bytes plain(const Played& message) { return message.isNoteOff() ? plainOff(message.bytes) : message.bytes; }

unsigned listOf(const Played& message) { return message.bytes[0] >= 0xF0 ? 0 : message.channel(); }

class Judge {
public:
    Judge(const TickTimes& ticks, Nanos slack) : m_ticks(ticks), m_slack(slack) {}

    void judge(std::uint32_t tick, Nanos sent, const char* what)
    {
        const Nanos time = m_ticks.at(tick);
        const Nanos error = std::chrono::abs(time - sent);
        const Nanos length = sent < time ? time - m_ticks.at(tick - 1) : m_ticks.at(tick + 1) - time;
        const bool fine = length <= 2 * millisecond;
        const Nanos allowed = std::max(millisecond, length / 2);
        EXPECT_LE(inMs(error), inMs(allowed + m_slack)) << what << " at tick " << tick;
        double& worst = fine ? deviation.inFine : deviation.inCoarse;
        worst = std::max(worst, inMs(fine ? error : error - length / 2));
    }

    Deviation deviation;

private:
    const TickTimes& m_ticks;
    const Nanos m_slack;
};

} // namespace

TakenByChannel takenOf(const CEditor& editor)
{
    TakenByChannel all;
    for (int number = 1; number <= 16; ++number) {
        const CTrk& trk = *editor.song().trk(number);
        std::vector<Taken>& list = all[trk.GetCh()];
        for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            _EDT_EVNT rec;
            for (POSITION at = blk->GetHeadPos(); at && blk->GetNextEvnt(at, rec);) {
                if (rec.status == status::metaEvent) continue;
                Taken event{blk->GetTimeTop() + rec.time, 0, {rec.status}};
                event.end = event.tick + rec.gateTime;
                if (rec.status == status::sysex) {
                    event.bytes.insert(event.bytes.end(), rec.data, rec.data + rec.szData);
                } else {
                    event.bytes[0] = static_cast<std::uint8_t>(status::kind(rec.status) | trk.GetCh());
                    event.bytes.push_back(rec.post1);
                    const std::uint8_t kind = status::kind(rec.status);
                    if (kind != status::program && kind != status::pressure) event.bytes.push_back(rec.post2);
                }
                list.push_back(std::move(event));
            }
        }
    }
    return all;
}

Deviation expectRecorded(std::span<const Played> performance, std::span<const Nanos> sentAt,
                         const TakenByChannel& taken, const TickTimes& ticks, Nanos slack)
{
    Judge judge(ticks, slack);
    std::array<std::size_t, 16> next{};
    std::map<std::pair<unsigned, std::uint8_t>, std::uint32_t> ends; // of the notes that sound
    for (std::size_t i = 0; i < performance.size() && !testing::Test::HasFailure(); ++i) {
        const Played& message = performance[i];
        const unsigned channel = listOf(message);
        if (message.isNoteOff()) {
            judge.judge(ends[{channel, message.bytes[1]}], sentAt[i], "end");
            continue;
        }
        const std::size_t place = next[channel]++;
        if (place >= taken[channel].size()) {
            ADD_FAILURE() << "message " << i << " of channel " << channel << " is missing";
            break;
        }
        const Taken& event = taken[channel][place];
        EXPECT_EQ(event.bytes, message.bytes) << "message " << i << " of channel " << channel;
        judge.judge(event.tick, sentAt[i], "message");
        if (event.isNote()) ends[{channel, message.bytes[1]}] = event.end;
    }
    for (unsigned channel = 0; channel < 16 && !testing::Test::HasFailure(); ++channel)
        EXPECT_EQ(taken[channel].size(), next[channel]) << "nothing else on channel " << channel;
    return judge.deviation;
}

void expectPlayedBack(const TakenByChannel& taken, std::span<const Played> heard)
{
    std::array<std::vector<Bytes>, 16> arrived;
    for (const Played& message : heard) arrived[listOf(message)].push_back(plain(message));
    for (unsigned channel = 0; channel < 16; ++channel) {
        std::map<std::uint32_t, std::vector<Bytes>> wanted; // by tick
        for (const Taken& event : taken[channel]) {
            wanted[event.tick].push_back(event.bytes);
            // The shortest note sounds for a tick.
            if (event.isNote()) wanted[std::max(event.end, event.tick + 1)].push_back(plainOff(event.bytes));
        }
        auto at = arrived[channel].begin();
        for (auto& [tick, messages] : wanted) {
            const auto left = static_cast<std::size_t>(arrived[channel].end() - at);
            ASSERT_GE(left, messages.size()) << "channel " << channel << " ends before tick " << tick;
            std::vector<Bytes> group(at, at + static_cast<std::ptrdiff_t>(messages.size()));
            at += static_cast<std::ptrdiff_t>(messages.size());
            std::sort(group.begin(), group.end());
            std::sort(messages.begin(), messages.end());
            ASSERT_EQ(group, messages) << "channel " << channel << " at tick " << tick;
        }
    }
}

std::size_t messagesOf(const TakenByChannel& taken)
{
    std::size_t count = 0;
    for (const std::vector<Taken>& events : taken)
        for (const Taken& event : events) count += event.isNote() ? 2 : 1;
    return count;
}

} // namespace tessaro::test
