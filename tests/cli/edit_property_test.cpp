// SPDX-License-Identifier: GPL-3.0-or-later
// Random edits of every operation, undone and redone: the song at each place of the history is always the same.
#include "cli/random_edits.h"
#include "core/edit/undo_scope.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tessaro::test {
namespace {

class History : public testing::TestWithParam<std::uint32_t> {
protected:
    using Dump = std::string (EditBench::*)();

    /// The song as it is now must be that of the place in the history.
    void look()
    {
        ASSERT_EQ(bench.faults(), "");
        ASSERT_EQ(bench.user.failures, 0);
        const auto place = static_cast<std::size_t>(bench.editor.GetUndoRedoIndex() + 1);
        ASSERT_LT(place, states.size());
        if ((bench.*dump)() != states[place]) FAIL() << differences((bench.*dump)(), states[place]);
    }

    void step(RandomEdits& edits)
    {
        {
            const UndoScope scope(bench.editor, "step");
            for (std::uint32_t i = bench.dice.between(1, 4); i > 0; --i) edits.edit();
        }
        const auto place = static_cast<std::size_t>(bench.editor.GetUndoRedoIndex() + 1);
        if (place < states.size()) states.resize(place); // nothing recorded, or a new future
        if (place == states.size()) states.push_back((bench.*dump)());
    }

    /// Steps with undo and redo between them, then all the way back and forth.
    void run(bool staysInside, int steps)
    {
        dump = staysInside ? &EditBench::dump : &EditBench::looseDump;
        RandomEdits edits(bench, staysInside);
        edits.makeSong();
        states.push_back((bench.*dump)());
        for (int i = 0; i < steps; ++i) {
            if (bench.dice.oneIn(4)) {
                const int count = static_cast<int>(bench.dice.between(1, 6));
                bench.dice.oneIn(2) ? bench.editor.UndoNode(count) : bench.editor.RedoNode(count);
            } else {
                step(edits);
            }
            ASSERT_NO_FATAL_FAILURE(look()) << "step " << i;
        }
        while (bench.editor.RedoNode()) ASSERT_NO_FATAL_FAILURE(look());
        for (int round = 0; round < 2; ++round) {
            while (bench.editor.UndoNode()) ASSERT_NO_FATAL_FAILURE(look());
            EXPECT_EQ((bench.*dump)(), states.front());
            while (bench.editor.RedoNode()) ASSERT_NO_FATAL_FAILURE(look());
            EXPECT_EQ((bench.*dump)(), states.back());
        }
    }

    /// A few lines around the first that differs.
    static std::string differences(const std::string& now, const std::string& wanted)
    {
        std::size_t at = 0;
        while (at < now.size() && at < wanted.size() && now[at] == wanted[at]) ++at;
        const std::size_t line = now.rfind('\n', at) + 1;
        const std::size_t from = line < 200 ? 0 : line - 200;
        return "now:\n" + now.substr(from, 600) + "\nwanted:\n" + wanted.substr(from, 600);
    }

    EditBench bench{GetParam()};
    Dump dump = nullptr;
    std::vector<std::string> states;
};

TEST_P(History, GivesBackEveryByte) { run(true, 250); }

TEST_P(History, GivesBackAllButWhatHasNoUndo) { run(false, 250); }

/// Saves as the document does it, twice; what a fresh editor reads from the file is the song.
TEST_P(History, SavesInBetweenKeepTheSong)
{
    RandomEdits edits(bench, false);
    edits.makeSong();
    for (int round = 0; round < 12; ++round) {
        for (int i = 0; i < 15; ++i) {
            const UndoScope scope(bench.editor, "step");
            edits.edit();
        }
        if (bench.dice.oneIn(2)) bench.editor.UndoNode(static_cast<int>(bench.dice.below(12)));
        const std::vector<std::uint8_t> file = bench.save();
        ASSERT_EQ(bench.faults(), "");
        ASSERT_EQ(bench.editor.GetUndoRedoCount(), 0);
        EditBench reader(0);
        ASSERT_TRUE(reader.load(file));
        ASSERT_EQ(reader.faults(), "");
        const std::string read = reader.savedDump();
        if (read != bench.savedDump()) FAIL() << differences(read, bench.savedDump());
        const std::vector<std::uint8_t> second = reader.save();
        ASSERT_TRUE(reader.load(second));
        ASSERT_TRUE(reader.save() == second) << "the same bytes from the second save on";
    }
}

/// TESSARO_RANDOM_EDITS asks for more songs than usual.
std::uint32_t songs()
{
    const char* wanted = std::getenv("TESSARO_RANDOM_EDITS");
    return wanted ? static_cast<std::uint32_t>(std::max(1, std::atoi(wanted))) : 12;
}

INSTANTIATE_TEST_SUITE_P(Songs, History, testing::Range(0U, songs()));

} // namespace
} // namespace tessaro::test
