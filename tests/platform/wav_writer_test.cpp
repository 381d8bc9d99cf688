// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sound/wav_writer.h"

#include <gtest/gtest.h>
#include <sndfile.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <vector>

namespace tessaro {

namespace {

std::string scratchFile()
{
    return (std::filesystem::temp_directory_path() / ("tessaro-" + std::to_string(getpid()) + ".wav")).string();
}

} // namespace

TEST(WavWriter, RoundsAndClips)
{
    const std::string path = scratchFile();
    const float step = 1.0F / 32768;
    const std::vector<float> samples{0,     step,     0.4F * step, 0.6F * step, -0.6F * step,
                                     -step, 0.99999F, 1,           2,           -1,
                                     -1.5F, 1e30F,    -1e30F,      0.5F,        std::numeric_limits<float>::infinity(),
                                     -0.5F};
    const std::vector<std::int16_t> expected{0,     1,      0,      1,     -1,     -1,    32767, 32767,
                                             32767, -32768, -32768, 32767, -32768, 16384, 32767, -16384};
    WavWriter writer;
    ASSERT_TRUE(writer.open(path, 44100));
    for (int i = 0; i < 3000; ++i) ASSERT_TRUE(writer.write(samples));
    EXPECT_EQ(writer.frames(), 24000U);
    EXPECT_EQ(writer.clipped(), 3000U * 7);
    ASSERT_TRUE(writer.close()) << writer.error();

    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    ASSERT_TRUE(file);
    EXPECT_EQ(info.samplerate, 44100);
    EXPECT_EQ(info.channels, 2);
    EXPECT_EQ(info.frames, 24000);
    std::vector<std::int16_t> read(48000);
    EXPECT_EQ(sf_readf_short(file, read.data(), 24000), 24000);
    EXPECT_EQ(std::vector(read.begin(), read.begin() + 16), expected);
    EXPECT_EQ(std::vector(read.end() - 16, read.end()), expected);
    sf_close(file);
    std::filesystem::remove(path);
}

TEST(WavWriter, TellsWhyItFails)
{
    WavWriter writer;
    EXPECT_FALSE(writer.open("/no/such/folder/x.wav", 48000));
    EXPECT_NE(writer.error().find("/no/such/folder/x.wav"), std::string::npos);
    EXPECT_FALSE(writer.write(std::vector<float>(64)));
    EXPECT_FALSE(writer.close());

    const std::vector<float> second(96000, 0.25F);
    bool good = writer.open("/dev/full", 48000); // a disk without room
    for (int i = 0; good && i < 10; ++i) good = writer.write(second);
    EXPECT_FALSE(writer.close() && good);
    EXPECT_FALSE(writer.error().empty());
}

} // namespace tessaro
