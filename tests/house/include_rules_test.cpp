// SPDX-License-Identifier: GPL-3.0-or-later
#include "house/include_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <utility>

namespace tessaro::house {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view threeRooms = "# rooms\nbase:\ncore: base\nviews: base core Qt\n";

/// A made-up source tree in a folder of its own, gone with the test.
class MadeUpTree : public testing::Test {
protected:
    MadeUpTree()
        : m_folder(fs::path(testing::TempDir())
                   / (std::string("tessaro_house_") + testing::UnitTest::GetInstance()->current_test_info()->name()))
    {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
    }
    ~MadeUpTree() override { fs::remove_all(m_folder); }

    void write(const std::string& file, const std::string& text) const
    {
        fs::create_directories((m_folder / file).parent_path());
        std::ofstream(m_folder / file) << text;
    }
    [[nodiscard]] std::vector<std::string> faults() const
    {
        return checkIncludes(m_folder, RoomTable::parse(threeRooms));
    }

private:
    fs::path m_folder;
};

TEST_F(MadeUpTree, DownwardAndInnerIncludesAreFine)
{
    write("base/list.h", "#include <vector>\n");
    write("core/model/trk.h", "  #  include \"base/list.h\"\n");
    write("core/trk.cpp", "#include \"core/model/trk.h\"\n// #include \"views/window.h\"\n");
    write("views/window.h", "#include <QWidget>\n#include \"core/model/trk.h\"\n");
    write("views/window.cpp", "#include \"views/window.h\"\n#include \"window.moc\"\n");
    EXPECT_THAT(faults(), IsEmpty());
}

TEST_F(MadeUpTree, UpwardIncludesAndUnknownRoomsAreFound)
{
    write("base/list.h", "#include \"core/trk.h\"\n");
    write("core/trk.h", "");
    write("core/trk.cpp", "#include \"views/window.h\"\n#include \"core/lost.h\"\n");
    write("views/window.h", "");
    write("attic/old.cpp", "");
    EXPECT_THAT(faults(),
                ElementsAre("attic/old.cpp: unknown room attic", "base/list.h: base may not include core/trk.h",
                            "core/trk.cpp: core may not include views/window.h",
                            "core/trk.cpp: no such file core/lost.h"));
}

TEST_F(MadeUpTree, CirclesOfHeadersAreFoundOnce)
{
    write("core/a.h", "#include \"core/b.h\"\n");
    write("core/b.h", "#include \"core/c.h\"\n#include \"core/d.h\"\n");
    write("core/c.h", "#include \"core/a.h\"\n");
    write("core/d.h", "");
    write("core/e.h", "#include \"core/e.h\"\n");
    EXPECT_THAT(faults(), ElementsAre("circle of headers: core/a.h -> core/b.h -> core/c.h -> core/a.h",
                                      "circle of headers: core/e.h -> core/e.h"));
}

TEST_F(MadeUpTree, QtStaysInItsRoomsAndPrecise)
{
    write("core/trk.cpp", "#include <QString>\n#include <QtCore/qglobal.h>\n#include <Quality>\n");
    write("views/window.cpp", "#include <QtWidgets>\n#include <QtGlobal>\n");
    EXPECT_THAT(faults(), ElementsAre("core/trk.cpp: Qt header QString in a room without Qt",
                                      "core/trk.cpp: Qt header QtCore/qglobal.h in a room without Qt",
                                      "views/window.cpp: includes all of QtWidgets"));
}

TEST_F(MadeUpTree, TypesOfOneNameAreFound)
{
    write("base/ring.h",
          "namespace a {\nclass Ring;\nstruct Cell {\n    struct Part {};\n};\nclass TESSARO_API Ring final : X {\n");
    write("core/ring.h", "namespace a {\nclass Ring {\nstruct Part {\n    struct Cell {};\n};\n");
    write("core/other.h", "namespace a {\nenum class Cell : int;\n}\nnamespace b {\nclass Ring {\n};\n");
    EXPECT_THAT(faults(), ElementsAre("a::Ring is defined in several headers: base/ring.h core/ring.h"));
}

TEST(RoomTable, FaultyLinesAreTold)
{
    const RoomTable table = RoomTable::parse("base: core\ncore: base\nnonsense\nbase:\n");
    EXPECT_THAT(table.faults, ElementsAre("base names core, which is not a room below it", "no colon in: nonsense",
                                          "base stands twice"));
}

TEST(SourceTree, KeepsTheTableOfRooms)
{
    const fs::path root = TESSARO_SOURCE_DIR;
    std::ifstream in(root / "docs/rooms.txt");
    const RoomTable table = RoomTable::parse(std::string(std::istreambuf_iterator<char>(in), {}));
    EXPECT_THAT(table.faults, IsEmpty());
    ASSERT_TRUE(table.mayInclude.contains("base"));
    EXPECT_THAT(checkIncludes(root / "src", table), IsEmpty());

    std::vector<std::string> roomsWithoutReadme;
    for (const auto& [room, allowed] : table.mayInclude) {
        const fs::path folder = root / "src" / room;
        if (fs::exists(folder) && !fs::is_empty(folder) && !fs::exists(folder / "README.md"))
            roomsWithoutReadme.push_back(room);
    }
    EXPECT_THAT(roomsWithoutReadme, IsEmpty());
}

} // namespace
} // namespace tessaro::house
