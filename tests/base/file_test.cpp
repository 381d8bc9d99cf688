// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file.h"
#include "base/profile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace tessaro {
namespace {

namespace fs = std::filesystem;

class FileTest : public testing::Test {
protected:
    FileTest()
    {
        std::string name = (fs::temp_directory_path() / "tessaro-XXXXXX").string();
        m_folder = mkdtemp(name.data());
    }
    ~FileTest() override { fs::remove_all(m_folder); }

    [[nodiscard]] std::string at(const char* name) const { return m_folder + '/' + name; }
    [[nodiscard]] auto fileCount() const
    {
        return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
    }
    static FileError write(const std::string& path, std::string_view text)
    {
        return writeFileAtomic(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    static std::string read(const std::string& path)
    {
        const FileContents c = readFile(path, 1000);
        EXPECT_EQ(c.error, FileError::none);
        return {c.bytes.begin(), c.bytes.end()};
    }

    std::string m_folder;
};

TEST_F(FileTest, RefusesWhatIsNoFileOfTheSizeBeforeReading)
{
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    ASSERT_EQ(write(at("huge"), "x"), FileError::none);
    fs::resize_file(at("huge"), 3ULL << 30);
    ASSERT_EQ(write(at("exact"), "12345"), FileError::none);

    EXPECT_EQ(readFile(at("none"), 10).error, FileError::notFound);
    EXPECT_EQ(readFile(at("exact/none"), 10).error, FileError::notFound);
    EXPECT_EQ(readFile(m_folder, 10).error, FileError::isDirectory);
    EXPECT_EQ(readFile(at("pipe"), 10).error, FileError::notRegular);
    EXPECT_EQ(readFile(at("huge"), 1U << 30).error, FileError::tooLarge);
    EXPECT_EQ(readFile(at("exact"), 4).error, FileError::tooLarge);
    EXPECT_EQ(readFile(at("exact"), 5).bytes.size(), 5U);
    EXPECT_EQ(textOf(FileError::isDirectory), TextId::fileIsDirectory);
    if (geteuid() != 0) {
        fs::permissions(at("exact"), fs::perms::none);
        EXPECT_EQ(readFile(at("exact"), 5).error, FileError::noPermission);
    }
}

TEST_F(FileTest, ReplacesAFileAsAWholeOrNotAtAll)
{
    const std::string big(200'000, 'b'); // more than one buffer of the comparison
    EXPECT_EQ(write(at("song"), big), FileError::none);
    EXPECT_EQ(fs::file_size(at("song")), big.size());
    fs::permissions(at("song"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("song", at("link"));
    EXPECT_EQ(write(at("link"), "new"), FileError::none);
    EXPECT_TRUE(fs::is_symlink(at("link")));
    EXPECT_EQ(read(at("song")), "new");
    EXPECT_EQ(fs::status(at("song")).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    EXPECT_EQ(write(m_folder, "x"), FileError::isDirectory);
    EXPECT_EQ(write(at("no/song"), "x"), FileError::badPath);
    EXPECT_EQ(fileCount(), 2); // nothing temporary is left

    EXPECT_EQ(write("/dev/full", "x"), FileError::notRegular);
    EXPECT_TRUE(makeFolders(at("a/b/c")));
    EXPECT_TRUE(makeFolders(at("a/b/c")));
    EXPECT_TRUE(isWritableFolder(at("a/b/c")));
    EXPECT_FALSE(makeFolders(at("song/b")));
}

TEST_F(FileTest, FoldersFollowTheEnvironment)
{
    setenv("HOME", "/home/someone/", 1);
    setenv("XDG_CONFIG_HOME", "relative/does/not/count", 1);
    setenv("XDG_DATA_HOME", "/data/", 1);
    EXPECT_EQ(homeFolder(), "/home/someone");
    EXPECT_EQ(configFolder(), "/home/someone/.config");
    EXPECT_EQ(dataFolder(), "/data");
    EXPECT_TRUE(fs::exists(programFolder() + "/test_base"));
}

TEST(Profile, ReadsWhatOthersWrite)
{
    Profile p;
    p.parse("\xEF\xBB\xBF; remark\r\n[System]\r\nMidi Out Dev1 = 3 \r\nmetro port=12abc\r\nnone=\r\nword=abc\r\n"
            "minus= -5\r\nabsent=4294964296\r\nplus=+7\r\nquoted=\"  x \"\r\nlost line\r\n=nameless\r\n"
            "Sync=1\r\nSYNC=2\r\nname=a=b;c\r\n[Last]\nend=\x93\xFA");
    EXPECT_EQ(p.integer("SYSTEM", "midi out dev1"), 3);
    EXPECT_EQ(p.integer("System", "Metro Port"), 12);
    EXPECT_EQ(p.integer("System", "none", 9), 0);
    EXPECT_EQ(p.integer("System", "word", 9), 0);
    EXPECT_EQ(p.integer("System", "minus"), -5);
    EXPECT_EQ(p.integer("System", "absent"), -3000);
    EXPECT_EQ(p.integer("System", "plus"), 7);
    EXPECT_EQ(p.integer("System", "missing", 9), 9);
    EXPECT_EQ(p.integer("Nowhere", "missing", -1), -1);
    EXPECT_EQ(p.integer("System", "sync"), 1); // the first of two counts
    EXPECT_EQ(p.string("System", "quoted"), "  x ");
    EXPECT_EQ(p.string("System", "name"), "a=b;c");
    EXPECT_EQ(p.string("last", "END", "?"), "\x93\xFA");
    EXPECT_EQ(p.string("last", "begin", "?"), "?");
    EXPECT_EQ(p.sections(), (std::vector<std::string>{"System", "Last"}));
    p.parse("");
    EXPECT_TRUE(p.sections().empty());
}

TEST_F(FileTest, ProfilesKeepTheirValuesOverSaving)
{
    Profile p;
    EXPECT_EQ(p.load(at("none.ini")), FileError::none);
    p.parse("; on top\n\n[List]\n; widths\nb=1\na=2\na=3\n");
    p.set("List", "A", 5);
    p.set("Window Placement", "Main Rect Left", -3000);
    const std::vector<std::string> values{"",     " lead",    "trail\t", "\"half", "'all'",      "a \"b\" c",
                                          "日本", "\x83\x5C", "<<<END",  "[x]",    "; no remark"};
    for (const std::string& value : values) p.set("Texts", "key " + std::to_string(&value - &values[0]), value);
    p.set("List", "Wave Dir", "two\nlines");
    const std::vector<std::uint8_t> font{0, 0x7F, 0xFF};
    p.setBytes("List", "Font", font);
    p.set("List", "gone", 1);
    p.remove("list", "GONE");
    p.set("Other", "x", 1);
    p.removeSection("other");
    ASSERT_EQ(p.save(at("tessaro.ini")), FileError::none);

    Profile q;
    ASSERT_EQ(q.load(at("tessaro.ini")), FileError::none);
    EXPECT_EQ(q.keys("List"), (std::vector<std::string>{"b", "A", "Wave Dir", "Font"}));
    EXPECT_EQ(q.integer("list", "a"), 5);
    EXPECT_EQ(q.integer("Window Placement", "Main Rect Left"), -3000);
    std::vector<std::string> texts;
    for (const std::string& key : q.keys("Texts")) texts.push_back(q.string("Texts", key));
    EXPECT_EQ(texts, values);
    EXPECT_EQ(q.string("List", "Wave Dir"), "two lines");
    EXPECT_EQ(q.bytes("List", "Font"), font);
    EXPECT_TRUE(q.bytes("List", "Wave Dir").empty());
    EXPECT_EQ(q.sections(), (std::vector<std::string>{"List", "Window Placement", "Texts"}));
    EXPECT_EQ(q.toText(), p.toText());
    EXPECT_TRUE(q.toText().starts_with("; on top"));
    EXPECT_NE(q.toText().find("; widths"), std::string::npos);
    EXPECT_EQ(q.load(m_folder), FileError::isDirectory);
    EXPECT_TRUE(q.sections().empty());
}

} // namespace
} // namespace tessaro
