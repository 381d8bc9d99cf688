// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/recording_sink.h"
#include "platform/synth/live_synth.h"
#include "platform/synth/offline_renderer.h"
#include "platform/synth/sound_font.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

using namespace std::chrono_literals;

namespace tessaro {

namespace {

constexpr unsigned rate = 48000;
const Bytes gmReset{0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7};
const Bytes gsReset{0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7};
const Bytes noteOn{0x90, 60, 127};

float peakOf(std::span<const float> samples)
{
    float peak = 0;
    for (const float sample : samples) peak = std::max(peak, std::abs(sample));
    return peak;
}

/// The first frame of interleaved samples that is not silent.
std::size_t onsetOf(const std::vector<float>& samples)
{
    const auto loud = std::find_if(samples.begin(), samples.end(), [](float s) { return std::abs(s) > 1e-5F; });
    return static_cast<std::size_t>(loud - samples.begin()) / 2;
}

struct Timed {
    Nanos due;
    Bytes bytes;
};

class Synths : public testing::Test {
protected:
    void SetUp() override
    {
        if (findSoundFont().empty()) GTEST_SKIP() << "no SoundFont is installed";
    }

    static std::vector<float> render(const std::vector<Timed>& song, Nanos end, SynthOptions options = {})
    {
        std::string why;
        const auto renderer = OfflineRenderer::create(options, why);
        EXPECT_TRUE(renderer) << why;
        const auto out = renderer->openOutput(0);
        std::vector<float> samples;
        const auto keep = [&](std::span<const float> chunk) {
            samples.insert(samples.end(), chunk.begin(), chunk.end());
            return true;
        };
        auto next = song.begin();
        for (Nanos now{}; now <= end; now += 4ms) {
            for (; next != song.end() && next->due <= now; ++next) EXPECT_TRUE(out->send(next->bytes, next->due));
            EXPECT_TRUE(renderer->renderUntil(now, keep));
        }
        return samples;
    }

    /// Loudness of a note that follows these messages.
    static float noteAfter(const std::vector<Bytes>& messages)
    {
        std::vector<Timed> song;
        for (const Bytes& message : messages) song.push_back({0ms, message});
        song.push_back({100ms, noteOn});
        return peakOf(render(song, 400ms));
    }
};

} // namespace

TEST_F(Synths, SoundANoteAtItsTimeAndSilenceBefore)
{
    for (const Nanos due : {Nanos(100ms), Nanos(333'333'333), Nanos(500'700us)}) {
        const std::vector<float> samples = render({{due, noteOn}}, 1s);
        ASSERT_NEAR(static_cast<double>(samples.size()) / 2, rate, 64 + 4 * 48);
        const double expected = std::chrono::duration<double>(due).count() * rate;
        EXPECT_NEAR(static_cast<double>(onsetOf(samples)), expected, 32 + 64); // grid, and the sample's own attack
        EXPECT_GT(peakOf(samples), 0.01F);
    }
}

TEST_F(Synths, RenderTheSameFramesEachTime)
{
    std::vector<Timed> song;
    for (int i = 0; i < 200; ++i) {
        const auto channel = static_cast<std::uint8_t>(i % 16);
        song.push_back({i * 9ms, {static_cast<std::uint8_t>(0xC0 | channel), static_cast<std::uint8_t>(i % 128)}});
        song.push_back(
            {i * 9ms, {static_cast<std::uint8_t>(0x90 | channel), static_cast<std::uint8_t>(40 + i % 40), 90}});
    }
    EXPECT_TRUE(render(song, 2s) == render(song, 2s));
}

TEST_F(Synths, FollowResetsAndMasterVolume)
{
    const float full = noteAfter({});
    const Bytes quiet{0xF0, 0x7F, 0x7F, 0x04, 0x01, 0x00, 0x20, 0xF7};
    const Bytes channelOff{0xB0, 7, 0};
    EXPECT_NEAR(noteAfter({quiet}) / full, 1.0 / 16, 0.01);
    EXPECT_LT(noteAfter({channelOff}), full / 20);
    for (const Bytes& reset : {gmReset, gsReset}) {
        EXPECT_NEAR(noteAfter({quiet, channelOff, reset}), full, full / 10);
        const auto half = reset.begin() + 4;
        EXPECT_NEAR(noteAfter({quiet, channelOff, {reset.begin(), half}, {half, reset.end()}}), full, full / 10)
            << "in slices";
    }
    Bytes huge = sysexOf(100'000);
    EXPECT_NEAR(noteAfter({huge, {0xF0, 1}, {0xF8}, {0x90}, {0xF7}, {5, 6}}), full, full / 10) << "odd ones";
}

// The metronome's own keys lie below those of most SoundFonts.
TEST_F(Synths, SoundDrumKeysBelowTheFontsByTheirLike)
{
    const auto drum = [](std::uint8_t key) {
        return render({{100ms, {0x99, key, 90}}, {150ms, {0x99, key, 0}}, {200ms, {0x99, key, 90}}}, 500ms);
    };
    for (const std::uint8_t key : Bytes{21, 22}) {
        EXPECT_GT(peakOf(drum(key)), 0.01F);
        EXPECT_TRUE(drum(key) == drum(static_cast<std::uint8_t>(key + 12))) << "note-offs included";
    }
    EXPECT_FALSE(drum(21) == drum(22)) << "bar and beat differ";
    EXPECT_LT(peakOf(drum(12)), 1e-5F) << "a key without a like";
}

TEST_F(Synths, EndTheTailInSilence)
{
    std::string why;
    const auto renderer = OfflineRenderer::create({}, why);
    const auto out = renderer->openOutput(0);
    float last = 0;
    const auto keep = [&](std::span<const float> chunk) {
        last = peakOf(chunk);
        return true;
    };
    out->send(noteOn, 0ms);
    renderer->renderUntil(500ms, keep);
    EXPECT_GT(last, 0.001F);
    out->send(Bytes{0x80, 60, 0}, 500ms);
    EXPECT_TRUE(renderer->renderTail(keep, 8s));
    EXPECT_LT(last, 1e-4F);
    EXPECT_GT(renderer->frames(), rate * 7 / 10U);
    EXPECT_LT(renderer->frames(), rate * 8U);
    EXPECT_FALSE(renderer->renderUntil(20s, [](auto) { return false; })) << "a sink that has enough ends it";
}

// Any period gives the same sound, at the due time and one latency.
TEST_F(Synths, PlayLiveInPeriodsOfAnySize)
{
    std::vector<float> reference;
    for (const std::size_t period : {64U, 256U, 100U, 1000U, 7U}) {
        std::string why;
        LiveSynth live(Synth::create({}, why));
        ASSERT_TRUE(live.prepare(rate, 256));
        const Nanos due = 50ms;
        live.send(noteOn, due);
        std::vector<float> left;
        std::vector<float> right(period);
        const Nanos start = 10ms;
        while (left.size() < rate / 5) {
            const Nanos when = start + Nanos(static_cast<std::int64_t>(left.size()) * 1'000'000'000 / rate);
            left.resize(left.size() + period);
            live.render(&left[left.size() - period], right.data(), period, when);
        }
        const auto loud = std::find_if(left.begin(), left.end(), [](float s) { return std::abs(s) > 1e-5F; });
        const double expected = std::chrono::duration<double>(due + live.latency() - start).count() * rate;
        EXPECT_NEAR(static_cast<double>(loud - left.begin()), expected, 32 + 64) << period;
        const std::vector<float> sound(loud, loud + 5000);
        if (reference.empty()) reference = sound;
        EXPECT_TRUE(sound == reference) << period;
    }
}

TEST_F(Synths, LeaveOutNotesThatComeMuchTooLate)
{
    std::string why;
    LiveSynth live(Synth::create({}, why));
    ASSERT_TRUE(live.prepare(44100, 256));
    std::vector<float> left(4096);
    std::vector<float> right(4096);
    live.send(noteOn, 0ms);
    live.render(left.data(), right.data(), left.size(), 2s);
    EXPECT_LT(peakOf(left), 1e-5F);
    live.send(noteOn, 2s);
    live.render(left.data(), right.data(), left.size(), 2100ms);
    EXPECT_GT(peakOf(left), 1e-3F);
    EXPECT_FALSE(live.prepare(192000, 256)) << "a rate that the synth cannot do";
}

TEST(SoundFonts, AreFoundInOrderAndTheirLackIsTold)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("tessaro-fonts-" + std::to_string(getpid()));
    fs::create_directories(folder / "no.sf2");
    const auto touch = [&](const char* name) { std::ofstream(folder / name) << "not a font"; };
    const auto found = [&] { return fs::path(findSoundFont({"/no/such/folder", folder.string()})).filename(); };
    EXPECT_EQ(found(), "");
    touch("b.sf3");
    touch("c.sf2");
    touch("a.txt");
    EXPECT_EQ(found(), "b.sf3");
    touch("default-GM.sf3");
    EXPECT_EQ(found(), "default-GM.sf3");
    touch("TimGM6mb.sf2");
    EXPECT_EQ(found(), "TimGM6mb.sf2");

    for (const char* bad : {"c.sf2", "missing.sf2", "no.sf2"}) {
        std::string why;
        EXPECT_FALSE(Synth::create({.soundFont = (folder / bad).string()}, why));
        EXPECT_NE(why.find(bad), std::string::npos) << why;
    }
    fs::remove_all(folder);
}

} // namespace tessaro
