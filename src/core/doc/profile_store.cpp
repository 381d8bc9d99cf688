// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/profile_store.h"

#include <filesystem>

namespace tessaro {

ProfileStore::ProfileStore(std::string path) : m_path(std::move(path))
{
    const FileError error = m_profile.load(m_path);
    m_readable = error == FileError::none || error == FileError::notFound;
}

ProfileStore::~ProfileStore() { flush(); }

int ProfileStore::getInt(std::string_view section, std::string_view key, int otherwise) const
{
    return m_profile.integer(std::string(section), std::string(key), otherwise);
}

bool ProfileStore::setInt(std::string_view section, std::string_view key, int value)
{
    m_profile.set(std::string(section), std::string(key), value);
    m_dirty = true;
    return m_readable;
}

std::string ProfileStore::getString(std::string_view section, std::string_view key, std::string_view otherwise) const
{
    return m_profile.string(std::string(section), std::string(key), otherwise);
}

bool ProfileStore::setString(std::string_view section, std::string_view key, std::string_view value)
{
    m_profile.set(std::string(section), std::string(key), value);
    m_dirty = true;
    return m_readable;
}

std::vector<std::uint8_t> ProfileStore::getBinary(std::string_view section, std::string_view key) const
{
    return m_profile.bytes(std::string(section), std::string(key));
}

bool ProfileStore::setBinary(std::string_view section, std::string_view key, std::span<const std::uint8_t> bytes)
{
    m_profile.setBytes(std::string(section), std::string(key), bytes);
    m_dirty = true;
    return m_readable;
}

void ProfileStore::remove(std::string_view section, std::string_view key)
{
    m_profile.remove(std::string(section), std::string(key));
    m_dirty = true;
}

bool ProfileStore::flush()
{
    if (!m_dirty) return true;
    if (!m_readable) return false;
    makeFolders(std::filesystem::path(m_path).parent_path().string());
    m_dirty = m_profile.save(m_path) != FileError::none;
    return !m_dirty;
}

std::string userSettingsPath() { return configFolder() + "/tessaro/tessaro.ini"; }

} // namespace tessaro
