// SPDX-License-Identifier: GPL-3.0-or-later
// Sound files inside a native song file.
#include "core/doc/scratch_folder.h"
#include "files/native_bench.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessaro::test {

namespace {

/// A song whose tracks 1 and 2 are wave tracks with one block each.
void makeTracks(NativeBench& bench)
{
    for (const int number : {1, 2}) {
        bench.trk(number).SetType(trktype::wave);
        bench.editor.NewBlk(number, 0);
    }
}

void addWave(NativeBench& bench, int trk, const std::string& name)
{
    ASSERT_TRUE(bench.editor.NewAddTailEvnt(trk, 0, waveRec(0, name)));
}

std::vector<std::string> names(NativeBench& bench, int trk)
{
    std::vector<std::string> all;
    const CRealBlk& real = *bench.trk(trk).blocks().head()->GetRealBlk();
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e)) all.push_back(e->GetFileName());
    return all;
}

/// Opens a file on disk as the document does.
bool open(NativeBench& bench, const std::string& path)
{
    const std::uint64_t length = bench.files.songLength(path);
    const std::string all = contents(path);
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(length, all.size()));
    const bool waves = length < all.size();
    return bench.load(Bytes(all.begin(), end), waves) && (!waves || bench.files.loadWaves(path, length, bench.editor));
}

std::string written(const ScratchFolder& folder, const Bytes& file)
{
    return folder.write("song.TQM", std::string(file.begin(), file.end()));
}

} // namespace

TEST(NativeWaves, GoIntoTheFileOnceAndComeBack)
{
    const ScratchFolder folder;
    const std::string long1(20000, 'l');
    std::filesystem::create_directory(folder / "a");
    std::filesystem::create_directory(folder / "b");
    const std::string one = folder.write("a/take.wav", long1);
    const std::string two = folder.write("b/take.wav", "two");
    const std::string gone = folder / "gone.wav";

    Bytes file;
    {
        NativeBench bench;
        makeTracks(bench);
        addWave(bench, 1, one);
        addWave(bench, 1, gone);
        addWave(bench, 2, one);
        addWave(bench, 2, two);
        bench.editor.NewAddTailEvnt(2, 0, noteRec(0, 1));
        addWave(bench, 2, folder / "behind.wav");
        file = bench.save(5);
        const Bytes song = bench.save(4);
        ASSERT_LT(song.size(), file.size());

        SmfBytes chunk;
        chunk.raw({1, 0}).number(3, 4);
        const auto entry = [&](const std::string& name, const std::string& data) {
            chunk.number(static_cast<std::uint32_t>(name.size()), 4).id(name);
            chunk.number(static_cast<std::uint32_t>(data.size()), 4).id(data);
        };
        entry(one, long1);
        entry(gone, "");
        entry(two, "two");
        EXPECT_EQ(SmfBytes().raw(song).chunk(chunk.bytes(), "TR9V").bytes(), file);
    }

    const std::string path = written(folder, file);
    std::string copy;
    {
        NativeBench bench(folder.path());
        ASSERT_TRUE(open(bench, path));
        copy = folder / "Temp/take.wav";
        EXPECT_EQ((std::vector<std::string>{copy, gone}), names(bench, 1));
        EXPECT_EQ((std::vector<std::string>{copy, folder / "Temp/take_1.wav", "", folder / "behind.wav"}),
                  names(bench, 2));
        EXPECT_EQ(long1, contents(copy));
        EXPECT_EQ("two", contents(folder / "Temp/take_1.wav"));
    }
    EXPECT_FALSE(std::filesystem::exists(copy)) << "the copies go with the song";

    NativeBench without;
    ASSERT_TRUE(open(without, path));
    EXPECT_EQ(one, names(without, 1).front()) << "nowhere to unpack to";
}

TEST(NativeWaves, ASongWithoutAnyHasNoChunk)
{
    NativeBench bench;
    makeTracks(bench);
    EXPECT_EQ(bench.save(4), bench.save(5));
}

TEST(NativeWaves, NamesStayInsideTheFolder)
{
    const ScratchFolder folder;
    std::filesystem::create_directory(folder / "temp");
    NativeBench bench;
    makeTracks(bench);
    const Bytes song = bench.save(4);
    SmfBytes chunk;
    chunk.raw({1, 0}).number(3, 4);
    for (const std::string name : {"../../evil.exe", "C:\\x\\..\\", "/etc/.."})
        chunk.number(static_cast<std::uint32_t>(name.size()), 4).id(name).number(1, 4).id("!");
    const std::string path = written(folder, SmfBytes().raw(song).chunk(chunk.bytes(), "TR9V").bytes());
    NativeBench reader(folder.path());
    ASSERT_TRUE(open(reader, path));
    EXPECT_EQ("!", contents(folder / "temp/evil.wav")) << "a folder of the name in other letters serves";
    EXPECT_EQ("!", contents(folder / "temp/wave.wav"));
    EXPECT_EQ("!", contents(folder / "temp/..wav"));
    EXPECT_EQ(2, std::distance(std::filesystem::directory_iterator(folder.path()), {}));
}

TEST(NativeWaves, BrokenChunksFail)
{
    const ScratchFolder folder;
    NativeBench bench(folder.path());
    makeTracks(bench);
    const Bytes song = bench.save(4);
    const auto opens = [&](const SmfBytes& chunk) {
        return open(bench, written(folder, SmfBytes().raw(song).chunk(chunk.bytes(), "TR9V").bytes()));
    };
    EXPECT_TRUE(opens(SmfBytes().raw({1, 0}).number(9, 4))) << "the file's end ends the entries";
    EXPECT_FALSE(opens(SmfBytes().raw({2, 0}).number(0, 4))) << "another version";
    EXPECT_FALSE(opens(SmfBytes().raw({1, 0}).number(1, 4).number(5, 4).id("ab"))) << "inside a name";
    EXPECT_FALSE(opens(SmfBytes().raw({1, 0}).number(1, 4).number(0xFFFFFFFF, 4).id("ab"))) << "a boundless name";
    EXPECT_FALSE(opens(SmfBytes().raw({1, 0}).number(1, 4).number(1, 4).id("a").number(5, 4).id("x"))) << "data";
    EXPECT_FALSE(opens(SmfBytes().raw({1, 0}))) << "inside the head";
    EXPECT_EQ(song.size(), bench.files.songLength(folder / "song.TQM"));

    const std::string few = written(
        folder,
        nativeFile({{}}, {TrkBytes().bytes()}).chunk(styleTrk(), "T9ST").chunk({1, 0, 0, 0, 0, 0}, "TR9V").bytes());
    EXPECT_LT(std::filesystem::file_size(few), bench.files.songLength(few)) << "fewer tracks hide the waves";
}

} // namespace tessaro::test
