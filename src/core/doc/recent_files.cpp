// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/recent_files.h"

#include "core/doc/profile_store.h"

#include <filesystem>

namespace tessaro {

namespace {

constexpr const char* section = "Recent File List";

std::string keyOf(std::size_t index) { return "File" + std::to_string(index + 1); }

std::string absolute(const std::string& path)
{
    std::error_code error;
    const auto full = std::filesystem::absolute(path, error);
    return error ? path : full.lexically_normal().string();
}

} // namespace

void RecentFiles::read(const ProfileStore& store)
{
    m_paths.clear();
    for (std::size_t i = 0; i < most; ++i)
        if (std::string path = store.getString(section, keyOf(i), ""); !path.empty())
            m_paths.push_back(std::move(path));
}

void RecentFiles::write(ProfileStore& store) const
{
    for (std::size_t i = 0; i < most; ++i) {
        if (i < m_paths.size())
            store.setString(section, keyOf(i), m_paths[i]);
        else
            store.remove(section, keyOf(i));
    }
}

void RecentFiles::add(const std::string& path)
{
    remove(path);
    m_paths.insert(m_paths.begin(), absolute(path));
    if (m_paths.size() > most) m_paths.resize(most);
}

void RecentFiles::remove(const std::string& path) { std::erase(m_paths, absolute(path)); }

} // namespace tessaro
