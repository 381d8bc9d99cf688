// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "platform/audio/audio_chain.h"
#include "platform/audio/null_audio.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

using namespace std::chrono_literals;

namespace tessaro {

namespace {

class FakeSource : public AudioSource {
public:
    bool prepare(unsigned newRate, std::size_t) override
    {
        if (newRate > 96000) return false;
        rate = newRate;
        return true;
    }
    void render(float* left, float*, std::size_t frames, Nanos when) noexcept override
    {
        left[0] = 1;
        rendered += frames;
        times.push_back(when);
    }

    unsigned rate = 0;
    std::size_t rendered = 0;
    std::vector<Nanos> times;
};

/// A device that calls back when the test says so.
class FakeOut : public AudioOut {
public:
    FakeOut(const Clock& clock, unsigned rate, FakeOut*& self)
        : AudioOut(std::make_shared<AudioTap>(clock), rate, 64)
        , m_self(self)
    {
        m_self = this;
    }
    ~FakeOut() override { m_self = nullptr; }

    float callBack()
    {
        std::array<float, 64> left{};
        std::array<float, 64> right{};
        tap().pull(left.data(), right.data(), left.size());
        return left[0];
    }

private:
    FakeOut*& m_self; ///< the test's
};

class Chain : public testing::Test {
protected:
    struct Fake {
        bool opens = true;
        bool flows = true;
        int opened = 0;
        FakeOut* out = nullptr;
    };

    AudioWay wayTo(Fake& fake, const char* name, unsigned rate)
    {
        return {name, [this, &fake, rate]() -> std::unique_ptr<AudioOut> {
                    ++fake.opened;
                    if (!fake.opens) return nullptr;
                    return std::make_unique<FakeOut>(clock, rate, fake.out);
                }};
    }

    /// Lets time pass: polls and callbacks of the devices that may be open.
    void pass(Nanos span, std::initializer_list<Fake*> open)
    {
        for (const Nanos end = now + span; now < end; now += 100ms) {
            clock.advanceTo(now);
            for (Fake* fake : open)
                if (fake->out && fake->flows) fake->out->callBack();
            chain.poll(now);
        }
    }

    ManualClock clock;
    Nanos now = 1s;
    FakeSource source;
    Fake jack;
    Fake card;
    Fake huge;
    AudioChain chain{{wayTo(jack, "JACK", 44100),
                      wayTo(huge, "Huge", 192000),
                      wayTo(card, "Card", 48000),
                      {"", [this] { return std::make_unique<NullAudio>(clock); }}},
                     source};
};

} // namespace

TEST_F(Chain, TakesTheFirstDeviceWhoseFramesFlow)
{
    jack.flows = false;
    huge.opens = false;
    pass(300ms, {&card});
    EXPECT_FALSE(chain.flowing());
    EXPECT_EQ(chain.status().state, SoundState::starting);
    pass(3s, {&card});
    EXPECT_TRUE(chain.flowing());
    EXPECT_EQ(sentenceOf(chain.status()), "Sound: Card, 48000 Hz");
    EXPECT_EQ(source.rate, 48000U);
    EXPECT_GT(source.rendered, 0U);
}

TEST_F(Chain, PlaysSilentlyWithoutADeviceAndLeavesWhenOneIsThere)
{
    jack.opens = card.opens = huge.opens = false;
    pass(1s, {});
    EXPECT_EQ(chain.status().state, SoundState::silent);
    EXPECT_NEAR(static_cast<double>(source.rendered), 0.8 * 48000, 0.2 * 48000) << "time is kept";
    pass(10s, {});
    EXPECT_LE(card.opened, 7) << "not asked more often than every two seconds";

    jack.opens = true;
    pass(3s, {&jack});
    EXPECT_EQ(sentenceOf(chain.status()), "Sound: JACK, 44100 Hz");
    EXPECT_EQ(source.rate, 44100U);
    EXPECT_EQ(jack.out->callBack(), 1);
}

TEST_F(Chain, FallsToTheNextWayAndComesBack)
{
    huge.flows = true; // opens and flows, but at a rate that the source refuses
    pass(500ms, {&jack});
    EXPECT_EQ(chain.status().device, "JACK");
    jack.out->tap().fail();
    jack.opens = false;
    pass(1s, {&huge, &card});
    EXPECT_EQ(chain.status().device, "Card");
    EXPECT_EQ(card.out->callBack(), 1);

    huge.opens = false;
    jack.opens = true;
    pass(3s, {&jack, &card});
    EXPECT_EQ(chain.status().device, "JACK");
    jack.flows = false; // hangs
    card.opens = false;
    pass(3s, {&jack});
    EXPECT_EQ(chain.status().state, SoundState::silent);
}

TEST_F(Chain, LeavesADeviceThatRunsAway)
{
    pass(500ms, {&jack});
    ASSERT_EQ(chain.status().device, "JACK");
    jack.opens = huge.opens = false;
    for (int i = 0; jack.out && i < 30; ++i) {
        for (int blocks = 0; blocks < 1000; ++blocks) jack.out->callBack();
        pass(100ms, {&card});
    }
    EXPECT_FALSE(jack.out);
    pass(1s, {&card});
    EXPECT_EQ(chain.status().device, "Card");
}

TEST(BlockTime, EvensOutJitterAndStartsOverAfterAGap)
{
    BlockTime time;
    std::minstd_rand random(7);
    constexpr std::size_t frames = 256;
    const auto ideal = [](int block) { return 1s + Nanos(static_cast<std::int64_t>(block * frames * 1e9 / 48000)); };
    Nanos before{};
    double worst = 0;
    for (int i = 0; i < 4000; ++i) {
        const Nanos block = time.next(ideal(i) + Nanos(random() % 2'000'000), frames, 48000);
        if (i > 2000) {
            EXPECT_GT(block, before);
            worst = std::max(worst, std::abs(static_cast<double>((block - ideal(i)).count()) - 1e6));
        }
        before = block;
    }
    EXPECT_LT(worst, 0.25e6) << "2 ms of jitter, in ns";
    EXPECT_EQ(time.next(100s, frames, 48000), 100s);
}

} // namespace tessaro
