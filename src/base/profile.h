// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/file.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

/// Settings in the form of an ini file: sections of keys and values, in the order of the file. Case
/// does not count in the names of sections and keys. Texts are bytes as they stand. Of a key that
/// comes twice in a section the first counts. Lines that start with ; or # are comments; comments
/// survive loading and saving.
class TESSARO_API Profile {
public:
    Profile();
    ~Profile();
    Profile(Profile&&) noexcept;
    Profile& operator=(Profile&&) noexcept;

    /// Replaces what the profile holds. A missing file is an empty profile and no error; on an error the
    /// profile is empty too.
    FileError load(const std::string& path);
    void parse(std::string_view text);
    /// Replaces the file as a whole, see writeFileAtomic; makes no folder.
    [[nodiscard]] FileError save(const std::string& path) const;
    [[nodiscard]] std::string toText() const;

    [[nodiscard]] bool has(const std::string& section, const std::string& key) const;
    /// The value without the blanks around it, and without a pair of quotes around it.
    [[nodiscard]] std::string string(const std::string& section, const std::string& key,
                                     std::string_view otherwise = {}) const;
    /// The value's leading number, sign allowed, taken modulo 2^32; 0 when it does not start with one.
    [[nodiscard]] int integer(const std::string& section, const std::string& key, int otherwise = 0) const;
    /// A value written by setBytes; nothing when it is absent or not of that form.
    [[nodiscard]] std::vector<std::uint8_t> bytes(const std::string& section, const std::string& key) const;

    /// Line ends in a value become blanks.
    void set(const std::string& section, const std::string& key, std::string_view value);
    void set(const std::string& section, const std::string& key, int value);
    void setBytes(const std::string& section, const std::string& key, std::span<const std::uint8_t> value);
    void remove(const std::string& section, const std::string& key);
    void removeSection(const std::string& section);

    [[nodiscard]] std::vector<std::string> sections() const;
    [[nodiscard]] std::vector<std::string> keys(const std::string& section) const;

private:
    struct Store;
    std::unique_ptr<Store> m_store;
};

} // namespace tessaro
