// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tessaro::test {

/// What a call of the command left.
struct Outcome {
    int exit = -1;
    std::string out;
    std::string err;
};

/// Runs the command as a user does, in a folder of its own for its files.
class CommandTest : public testing::Test {
protected:
    CommandTest()
    {
        std::string folder = (std::filesystem::temp_directory_path() / "tessaro-cli-XXXXXX").string();
        m_folder = mkdtemp(folder.data());
    }
    ~CommandTest() override { std::filesystem::remove_all(m_folder); }

    /// `before` stands in front of the command: settings, or a program that runs it.
    Outcome run(const std::string& arguments, const std::string& before = {}) const
    {
        const std::string err = path("stderr");
        const std::string line = before + " " + TESSARO_CLI + " " + arguments + " 2>" + err;
        Outcome result;
        std::FILE* pipe = popen(line.c_str(), "r");
        std::array<char, 4096> room{};
        for (std::size_t n = 0; (n = std::fread(room.data(), 1, room.size(), pipe)) > 0;)
            result.out.append(room.data(), n);
        const int status = pclose(pipe);
        result.exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.err = bytesOf("stderr");
        return result;
    }

    std::string path(const std::string& name) const { return (m_folder / name).string(); }

    std::string bytesOf(const std::string& name) const
    {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    static std::string example() { return std::string(TESSARO_SOURCE_DIR) + "/examples/harbour-lights.mid"; }

private:
    std::filesystem::path m_folder;
};

} // namespace tessaro::test
