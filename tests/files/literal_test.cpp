// SPDX-License-Identifier: GPL-3.0-or-later
// The reader against the rules carried out to the letter.
#include "files/importer.h"
#include "files/literal_import.h"
#include "files/random_smf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tessaro::test {

namespace {

/// How often each outcome came up, so that a test can see that it met what it is about.
struct Outcomes {
    int loaded = 0;
    int failed = 0;
    int partial = 0;
    int notes = 0;
};

void compare(Importer& importer, const Bytes& file, Outcomes& outcomes)
{
    const PlainSong expected = literalImport(file);
    const PlainSong actual = importer.load(file);
    ASSERT_EQ("", difference(expected, actual));
    (actual.loaded ? outcomes.loaded : outcomes.failed) += 1;
    outcomes.partial += actual.partial ? 1 : 0;
    for (const PlainTrack& trk : actual.tracks)
        for (const PlainBlock& blk : trk.blocks)
            outcomes.notes += static_cast<int>(
                std::count_if(blk.events.begin(), blk.events.end(), [](const PlainEvent& e) { return e.gate > 0; }));
}

Outcomes compareRandom(std::uint32_t seed, int files, bool damaged)
{
    Importer importer;
    Outcomes outcomes;
    for (int i = 0; i < files; ++i) {
        Dice dice(seed + static_cast<std::uint32_t>(i));
        Bytes file = randomSmf(dice);
        if (damaged) damage(file, dice);
        SCOPED_TRACE(seed + static_cast<std::uint32_t>(i));
        compare(importer, file, outcomes);
        if (::testing::Test::HasFatalFailure()) return outcomes;
    }
    return outcomes;
}

/// TESSARO_RANDOM_FILES asks for more of them.
int filesToTry()
{
    const char* asked = std::getenv("TESSARO_RANDOM_FILES");
    return asked ? std::atoi(asked) : 2500;
}

Bytes contents(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

TEST(LiteralRules, RandomFiles)
{
    const int files = filesToTry();
    const Outcomes met = compareRandom(1, files, false);
    EXPECT_GT(met.loaded, files / 2);
    EXPECT_GT(met.failed, files / 20);
    EXPECT_GT(met.partial, files / 20);
    EXPECT_GT(met.notes, 10 * files);
}

TEST(LiteralRules, DamagedFiles)
{
    const int files = filesToTry();
    const Outcomes met = compareRandom(1000000000, files, true);
    EXPECT_GT(met.loaded, files / 5);
    EXPECT_GT(met.failed, files / 5);
    EXPECT_GT(met.partial, files / 100);
}

/// All MIDI files below the folder that TESSARO_MIDI_FILES names.
TEST(LiteralRules, FilesOfAFolder)
{
    const char* folder = std::getenv("TESSARO_MIDI_FILES");
    if (!folder) GTEST_SKIP() << "TESSARO_MIDI_FILES names no folder";
    Importer importer;
    Outcomes outcomes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::string ending = entry.path().extension().string();
        std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) { return std::tolower(c); });
        if (!entry.is_regular_file() || (ending != ".mid" && ending != ".midi" && ending != ".kar")) continue;
        SCOPED_TRACE(entry.path());
        compare(importer, contents(entry.path()), outcomes);
    }
    std::cout << outcomes.loaded << " files loaded, " << outcomes.failed << " refused, " << outcomes.partial
              << " with parts left out, " << outcomes.notes << " notes\n";
    EXPECT_GT(outcomes.loaded, 0);
}

} // namespace tessaro::test
