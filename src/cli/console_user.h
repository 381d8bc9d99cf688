// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/user.h"

#include <string>

namespace tessaro::cli {

/// The person in front of a terminal: messages are lines on standard error, questions are answered with No.
class ConsoleUser final : public UserPort {
public:
    /// Lines begin with the program's name and, behind it, that of the file at work.
    explicit ConsoleUser(std::string file) : m_file(std::move(file)) {}

    /// Whether an error has been told.
    [[nodiscard]] bool failed() const noexcept { return m_failed; }
    void setFile(std::string file) { m_file = std::move(file); }

    using UserPort::message;
    void message(int stringId, MessageKind kind) override;
    void sentence(std::string_view text, MessageKind kind) override;
    bool ask(int) override { return false; }
    bool ask(std::string_view) override { return false; }
    void status(std::string_view text) override { sentence(text, MessageKind::info); }

private:
    std::string m_file;
    bool m_failed = false;
};

} // namespace tessaro::cli
