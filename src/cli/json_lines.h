// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

namespace tessaro::cli {

/// Writes JSON objects, one a line, to an open file that it borrows. Keys are plain words; members come out in
/// the order of the calls. Nothing is lost before `flush`.
class JsonLines {
public:
    explicit JsonLines(std::FILE* out) : m_out(out) {}
    ~JsonLines() { flush(); }
    JsonLines(const JsonLines&) = delete;
    JsonLines& operator=(const JsonLines&) = delete;

    JsonLines& begin();                     ///< a new object
    JsonLines& begin(std::string_view key); ///< an object as a member
    JsonLines& end();                       ///< of the object begun last; a line ends with the outermost
    JsonLines& number(std::string_view key, std::int64_t value);
    /// Bytes by the rule for texts.
    JsonLines& text(std::string_view key, std::string_view bytes);
    JsonLines& hex(std::string_view key, std::span<const std::uint8_t> bytes);
    JsonLines& numbers(std::string_view key, std::span<const std::uint8_t> values);
    void flush();

private:
    void key(std::string_view name);
    void digits(std::int64_t value);

    std::FILE* m_out;
    std::string m_buffer;
    int m_depth = 0;
    bool m_first = true;
};

} // namespace tessaro::cli
