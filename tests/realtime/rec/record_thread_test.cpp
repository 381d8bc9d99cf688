// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom_rig.h"
#include "realtime/play/play_owners.h"
#include "realtime/rec/record_thread.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <deque>

namespace tessaro::test {

namespace {

/// A window that takes only so many messages at a time, and frees entries as it handles them.
class SlowOwner final : public MessageTarget {
public:
    explicit SlowOwner(Loom& loom) : m_loom(loom) {}
    bool post(const Message& message) noexcept override
    {
        if (m_line.size() >= room) return false;
        m_line.push_back(message);
        return true;
    }
    void send(const Message& message) override { post(message); }

    /// Handles some, and checks that the entry is still the one that was posted.
    void handle(std::size_t count)
    {
        for (; count > 0 && !m_line.empty(); --count) {
            const Message message = m_line.front();
            m_line.pop_front();
            if (message.id == msg::recordError) {
                ++errors;
                continue;
            }
            const auto& entry = *reinterpret_cast<const LoomRingEntry*>(message.lParam);
            got.push_back(entry.data1 + entry.data2 * 128);
            m_loom.loomIncRrdpt();
        }
    }

    std::size_t room = 1000;
    std::vector<int> got;
    int errors = 0;

private:
    Loom& m_loom;
    std::deque<Message> m_line;
};

class RecordThreadTest : public testing::Test {
protected:
    RecordThreadTest() : owners(rig.loom, rig.clock), thread(rig.loom, rig.clock, owners), owner(rig.loom)
    {
        thread.start();
        thread.setOwner(&owner);
        rig.loom.setLoomRecFlag(1);
    }

    void notes(int count)
    {
        for (; count > 0; --count, ++sent) rig.input({0xE0, sent % 128, sent / 128 % 128});
    }
    [[nodiscard]] bool gotAll() const
    {
        for (std::size_t i = 0; i < owner.got.size(); ++i)
            if (owner.got[i] != static_cast<int>(i)) return false;
        return owner.got.size() == static_cast<std::size_t>(sent);
    }

    Rig rig;
    PlayOwners owners;
    RecordThread thread;
    SlowOwner owner;
    int sent = 0;
};

} // namespace

TEST_F(RecordThreadTest, ASlowOwnerLosesNothingItWasGiven)
{
    Dice dice(8);
    while (sent < 12'000) {
        owner.room = dice.below(dice.oneIn(3) ? 5 : 300);
        // Never more than the ring holds.
        notes(static_cast<int>(
            dice.below(static_cast<std::uint32_t>(600 - (sent - static_cast<int>(owner.got.size()))))));
        rig.run(10ms);
        owner.handle(dice.below(400));
    }
    owner.room = 1000;
    for (int i = 0; i < 5; ++i, owner.handle(1000)) rig.run(10ms);
    EXPECT_TRUE(gotAll());
    EXPECT_EQ(owner.errors, 0);
}

TEST_F(RecordThreadTest, AnOverflowIsToldOnce)
{
    owner.room = 100;
    notes(599);
    const int kept = sent;
    notes(50); // lost
    sent = kept;
    for (int i = 0; i < 20; ++i) rig.run(10ms);
    EXPECT_EQ(rig.loom.getLoomRecError(), 1) << "there was no room to tell it";
    for (int i = 0; i < 20; ++i, rig.run(10ms)) owner.handle(100);
    EXPECT_EQ(owner.errors, 1);
    EXPECT_TRUE(gotAll()) << "what was in the ring is kept";
    notes(599);
    for (int i = 0; i < 20; ++i, rig.run(10ms)) owner.handle(100);
    EXPECT_EQ(owner.errors, 1);
    EXPECT_TRUE(gotAll()) << "and the ring goes on";
    rig.midi.sink->inputError();
    rig.run(10ms);
    owner.handle(1);
    EXPECT_EQ(owner.errors, 2);
}

TEST_F(RecordThreadTest, WhatNobodyTakesIsFreedBehindWhatSomebodyHas)
{
    notes(10);
    rig.run(10ms);
    thread.setOwner(nullptr);
    const int given = sent;
    rig.input({0xE0, 100, 100});
    for (int i = 0; i < 5; ++i) rig.run(10ms);
    EXPECT_EQ(rig.loom.getLoomRrdpt(), 0) << "entries that somebody has were freed in its place";
    owner.handle(10);
    EXPECT_TRUE(gotAll());
    rig.run(10ms);
    EXPECT_EQ(rig.loom.getLoomRrdpt(), rig.loom.getLoomWrdpt());
    rig.midi.sink->inputError();
    rig.run(10ms);
    EXPECT_EQ(rig.loom.getLoomRecError(), 0) << "nobody to tell";
    thread.setOwner(&owner);
    notes(3);
    rig.run(10ms);
    owner.handle(10);
    EXPECT_TRUE(gotAll());
    EXPECT_EQ(sent, given + 3);
}

} // namespace tessaro::test
