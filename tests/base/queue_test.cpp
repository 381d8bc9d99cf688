// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/message_queue.h"
#include "base/ring.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <memory>
#include <thread>
#include <vector>

namespace tessaro {
namespace {

TEST(SpscRing, HoldsOneLessThanItsEntriesAndWraps)
{
    SpscRing<int, 3> ring;
    for (int round = 0; round < 5; ++round) {
        EXPECT_TRUE(ring.push(round));
        EXPECT_TRUE(ring.push(round + 100));
        EXPECT_FALSE(ring.push(-1));
        EXPECT_EQ(ring.size(), 2U);
        EXPECT_EQ(ring.front(), ring.entries() + ring.readIndex());
        int value = 0;
        EXPECT_TRUE(ring.pop(value));
        EXPECT_EQ(value, round);
        ring.drop();
        ring.drop(); // nothing there any more: must not run past the writer
        EXPECT_TRUE(ring.empty());
        EXPECT_EQ(ring.front(), nullptr);
    }
}

TEST(SpscRing, CarriesWholeEntriesInOrderBetweenTwoThreads)
{
    struct Entry {
        std::uint64_t number, twice, thrice;
    };
    constexpr std::uint64_t total = 200'000;
    SpscRing<Entry, 600> ring;
    std::thread writer([&] {
        for (std::uint64_t i = 0; i < total; ++i)
            while (!ring.push({i, 2 * i, 3 * i})) std::this_thread::yield();
    });
    for (std::uint64_t i = 0; i < total;) {
        Entry e{};
        if (!ring.pop(e)) {
            std::this_thread::yield();
            continue;
        }
        ASSERT_TRUE(e.number == i && e.twice == 2 * i && e.thrice == 3 * i) << i;
        ++i;
    }
    writer.join();
    EXPECT_TRUE(ring.empty());
}

TEST(MpscQueue, LosesNothingOfManyWritersAndKeepsTheOrderOfEach)
{
    struct Entry {
        std::uint32_t writer, number;
    };
    constexpr std::uint32_t writers = 3;
    constexpr std::uint32_t each = 50'000;
    MpscQueue<Entry, 100> queue;
    std::vector<std::thread> threads;
    for (std::uint32_t w = 0; w < writers; ++w)
        threads.emplace_back([&queue, w] {
            for (std::uint32_t i = 0; i < each; ++i)
                while (!queue.push({w, i})) std::this_thread::yield();
        });
    std::array<std::uint32_t, writers> next{};
    for (std::uint32_t got = 0; got < writers * each;) {
        Entry e{};
        if (!queue.pop(e)) {
            std::this_thread::yield();
            continue;
        }
        ASSERT_EQ(e.number, next.at(e.writer)++);
        ++got;
    }
    for (auto& t : threads) t.join();
    EXPECT_FALSE(queue.ready());
}

bool readable(const MessageQueue& queue, int timeout = 0)
{
    pollfd p{.fd = queue.fd(), .events = POLLIN, .revents = 0};
    return ::poll(&p, 1, timeout) == 1;
}

TEST(MessageQueue, WakesOnceAndRefusesWhatDoesNotFit)
{
    std::vector<std::uint64_t> seen;
    MessageQueue queue([&](const Message& m) { seen.push_back(m.wParam); });
    EXPECT_FALSE(readable(queue));
    EXPECT_EQ(queue.drain(), 0);

    std::uint64_t posted = 0;
    while (queue.post({.id = msg::realtime, .wParam = posted})) ++posted;
    EXPECT_EQ(posted, MessageQueue::capacity);
    queue.send({.id = msg::allSoundOff, .wParam = 9999});
    EXPECT_TRUE(readable(queue));
    EXPECT_EQ(queue.drain(), static_cast<int>(MessageQueue::capacity));
    EXPECT_FALSE(readable(queue));
    ASSERT_EQ(seen.size(), MessageQueue::capacity + 1);
    EXPECT_EQ(seen.front(), 9999U); // sent, so ahead of everything posted
    EXPECT_EQ(seen.at(1), 0U);
    EXPECT_EQ(seen.back(), posted - 1);
    EXPECT_TRUE(queue.post({}));
    EXPECT_TRUE(readable(queue));
}

TEST(MessageQueue, AHandlerThatPostsDoesNotHoldTheLoop)
{
    int handled = 0;
    std::unique_ptr<MessageQueue> queue;
    queue = std::make_unique<MessageQueue>([&](const Message& m) {
        ++handled;
        queue->post(m);
    });
    queue->post({});
    EXPECT_EQ(queue->drain(), static_cast<int>(MessageQueue::capacity));
    EXPECT_TRUE(readable(*queue)); // the rest asks for its turn
}

TEST(MessageQueue, NoPostIsLeftLyingWhileTheLoopSleeps)
{
    constexpr int total = 20'000;
    int handled = 0;
    MessageQueue queue([&](const Message&) { ++handled; });
    std::thread poster([&] {
        for (int i = 0; i < total; ++i)
            while (!queue.post({.lParam = i})) std::this_thread::yield();
    });
    while (handled < total) {
        ASSERT_TRUE(readable(queue, 10'000)) << "asleep with " << total - handled << " messages to come";
        queue.drain();
    }
    poster.join();
}

} // namespace
} // namespace tessaro
