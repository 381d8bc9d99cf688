// SPDX-License-Identifier: GPL-3.0-or-later
// Songs of all kinds through the native file: the song stays the same, and so do the bytes from the second save on.
#include "files/native_bench.h"
#include "files/random_smf.h"
#include "files/smf/port_meta.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

/// Whether the file can hold all of the song: no time that goes back or far ahead, no port as an event, and a master
/// block that ends with its last event, which it does not where an import dropped one.
bool fits(const CEditor& editor)
{
    if (editor.song().masterBlk()->GetTimeEnd() != editor.GetTimeEndMstr()) return false;
    for (const CRealBlk* real = editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real)) {
        std::uint32_t last = 0;
        for (const CEvnt* e = real->events().head(); e; e = List<CEvnt>::next(e)) {
            if (e->GetTime() < last || e->GetTime() - last >= 1U << 28) return false;
            if (e->GetStatus() == status::metaEvent && isPort(e->payload())) return false;
            last = e->GetTime();
        }
    }
    return true;
}

} // namespace

TEST(NativeRoundTrip, MidiFilesBecomeTheSameSong)
{
    NativeBench bench;
    int same = 0;
    for (std::uint32_t seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        if (!bench.load(randomSmf(dice))) continue;
        const bool whole = fits(bench.editor);
        const auto song = bench.dump();
        const Bytes first = bench.save();
        ASSERT_TRUE(bench.load(first));
        ASSERT_EQ(4, bench.kind);
        if (whole) {
            ASSERT_EQ(song, bench.dump());
            ++same;
        }
        const Bytes second = bench.save();
        ASSERT_TRUE(bench.load(second));
        ASSERT_EQ(second, bench.save());
        if (whole) {
            ASSERT_EQ(first, second);
        }
    }
    EXPECT_GT(same, 100);
}

TEST(NativeRoundTrip, DamagedFilesFailOrBecomeSongs)
{
    NativeBench bench;
    int loaded = 0;
    int failed = 0;
    for (std::uint32_t seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        if (!bench.load(randomSmf(dice))) continue;
        Bytes file = bench.save();
        for (std::uint32_t i = 0; i <= seed % 4; ++i)
            file[dice.below(static_cast<std::uint32_t>(file.size()))] = dice.byteBelow(256);
        if (dice.oneIn(3)) file.resize(dice.below(static_cast<std::uint32_t>(file.size())));
        if (!bench.load(file)) {
            ++failed;
            continue;
        }
        ++loaded;
        ASSERT_TRUE(bench.load(bench.save()));
        const Bytes second = bench.save();
        ASSERT_TRUE(bench.load(second));
        ASSERT_EQ(second, bench.save());
    }
    EXPECT_GT(loaded, 100);
    EXPECT_GT(failed, 50);
}

TEST(NativeRoundTrip, ASinkThatTakesNoMoreEndsTheSave)
{
    struct Full final : ByteSink {
        int left = 0;
        bool write(std::span<const std::uint8_t>) override { return left-- > 0; }
    };
    NativeBench bench;
    const auto song = bench.dump();
    Full sink;
    int writes = 0;
    for (; sink.left = writes, !bench.files.save(4, bench.editor, sink); ++writes) ASSERT_LT(writes, 200);
    EXPECT_EQ(1 + 1 + 101 + 1, writes) << "header, real block, tracks, style track";
    EXPECT_EQ(song, bench.dump());
}

} // namespace tessaro::test
