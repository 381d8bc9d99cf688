// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/profile.h"

#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION // some distributions leave the code to a library otherwise
#include <SimpleIni.h>

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::uint64_t sizeLimit = 64U << 20;

std::string unquoted(std::string_view value)
{
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return std::string(quoted ? value.substr(1, value.size() - 2) : value);
}

bool isBlankOrQuote(char c) noexcept { return c == ' ' || c == '\t' || c == '"' || c == '\''; }

/// The line that reads back as the value: what has blanks or quotes at its ends needs quotes around it.
std::string asLine(std::string_view value)
{
    std::string line(value);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
    if (line.empty() || (!isBlankOrQuote(line.front()) && !isBlankOrQuote(line.back()))) return line;
    return '"' + line + '"';
}

constexpr std::string_view hexDigits = "0123456789ABCDEF";

/// Negative for a character that is no digit.
int hexValue(char c) noexcept
{
    const std::size_t value = hexDigits.find(c);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

} // namespace

struct Profile::Store {
    // Several values of a key are kept apart, so that the first one can win.
    CSimpleIniA ini{false, true, false};

    Store() { ini.SetSpaces(false); }

    [[nodiscard]] const char* value(const std::string& section, const std::string& key) const
    {
        return ini.GetValue(section.c_str(), key.c_str());
    }

    static std::vector<std::string> inFileOrder(CSimpleIniA::TNamesDepend names)
    {
        names.sort(CSimpleIniA::Entry::LoadOrder());
        std::vector<std::string> result;
        for (const auto& name : names) result.emplace_back(name.pItem);
        return result;
    }
};

Profile::Profile() : m_store(std::make_unique<Store>()) {}
Profile::~Profile() = default;
Profile::Profile(Profile&&) noexcept = default;
Profile& Profile::operator=(Profile&&) noexcept = default;

FileError Profile::load(const std::string& path)
{
    const FileContents file = readFile(path, sizeLimit);
    parse({reinterpret_cast<const char*>(file.bytes.data()), file.bytes.size()});
    return file.error == FileError::notFound ? FileError::none : file.error;
}

void Profile::parse(std::string_view text)
{
    m_store = std::make_unique<Store>();
    m_store->ini.LoadData(text.data(), text.size());
}

FileError Profile::save(const std::string& path) const
{
    const std::string text = toText();
    return writeFileAtomic(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::string Profile::toText() const
{
    std::string text;
    m_store->ini.Save(text);
    return text;
}

bool Profile::has(const std::string& section, const std::string& key) const { return m_store->value(section, key); }

std::string Profile::string(const std::string& section, const std::string& key, std::string_view otherwise) const
{
    const char* value = m_store->value(section, key);
    return value ? unquoted(value) : std::string(otherwise);
}

int Profile::integer(const std::string& section, const std::string& key, int otherwise) const
{
    if (!has(section, key)) return otherwise;
    const std::string value = string(section, key);
    std::string_view rest = value;
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) rest.remove_prefix(1);

    std::uint32_t number = 0;
    for (; !rest.empty() && rest.front() >= '0' && rest.front() <= '9'; rest.remove_prefix(1))
        number = number * 10 + static_cast<std::uint32_t>(rest.front() - '0');
    return static_cast<int>(negative ? 0 - number : number);
}

std::vector<std::uint8_t> Profile::bytes(const std::string& section, const std::string& key) const
{
    const std::string value = string(section, key);
    if (value.size() % 2 != 0) return {};
    std::vector<std::uint8_t> result;
    for (std::size_t i = 0; i < value.size(); i += 2) {
        const int high = hexValue(value[i]);
        const int low = hexValue(value[i + 1]);
        if (high < 0 || low < 0) return {};
        result.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return result;
}

void Profile::set(const std::string& section, const std::string& key, std::string_view value)
{
    m_store->ini.SetValue(section.c_str(), key.c_str(), asLine(value).c_str(), nullptr, true);
}

void Profile::set(const std::string& section, const std::string& key, int value)
{
    set(section, key, std::string_view(std::to_string(value)));
}

void Profile::setBytes(const std::string& section, const std::string& key, std::span<const std::uint8_t> value)
{
    std::string text;
    for (const std::uint8_t byte : value) {
        text += hexDigits[byte >> 4];
        text += hexDigits[byte & 0xF];
    }
    set(section, key, text);
}

void Profile::remove(const std::string& section, const std::string& key)
{
    m_store->ini.Delete(section.c_str(), key.c_str());
}

void Profile::removeSection(const std::string& section) { m_store->ini.Delete(section.c_str(), nullptr); }

std::vector<std::string> Profile::sections() const
{
    CSimpleIniA::TNamesDepend names;
    m_store->ini.GetAllSections(names);
    return Store::inFileOrder(std::move(names));
}

std::vector<std::string> Profile::keys(const std::string& section) const
{
    CSimpleIniA::TNamesDepend names;
    m_store->ini.GetAllKeys(section.c_str(), names);
    return Store::inFileOrder(std::move(names));
}

} // namespace tessaro
