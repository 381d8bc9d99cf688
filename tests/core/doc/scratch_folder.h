// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace tessaro::test {

inline std::string contents(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A folder of its own for one test, gone with it.
class ScratchFolder {
public:
    ScratchFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "tessaro-test-XXXXXX").string();
        m_path = ::mkdtemp(name.data());
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { std::filesystem::remove_all(m_path); }

    [[nodiscard]] std::string operator/(const std::string& name) const { return m_path + "/" + name; }
    [[nodiscard]] const std::string& path() const { return m_path; }
    std::string write(const std::string& name, std::string_view text) const
    {
        std::ofstream(*this / name, std::ios::binary) << text;
        return *this / name;
    }

private:
    std::string m_path;
};

} // namespace tessaro::test
