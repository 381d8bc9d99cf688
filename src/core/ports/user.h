// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/strings.h"

#include <string_view>

namespace tessaro {

enum class MessageKind { error, warning, info };

/// The person at the machine: messages, questions and the status line. Main thread only. In the command
/// a message is a line on standard error and every question is answered with No.
class TESSARO_API UserPort {
public:
    virtual ~UserPort();
    /// Shows the text of this number in the string table. Returns when it has been seen.
    virtual void message(int stringId, MessageKind kind) = 0;
    void message(TextId id, MessageKind kind) { message(static_cast<int>(id), kind); }
    /// Shows a plain sentence, UTF-8, that the string table does not hold.
    virtual void sentence(std::string_view text, MessageKind kind) = 0;
    /// Asks the text of this number; true for Yes.
    virtual bool ask(int stringId) = 0;
    /// Asks a composed text, UTF-8; true for Yes.
    virtual bool ask(std::string_view text) = 0;
    /// Puts one sentence, UTF-8, in the status line. Does not wait.
    virtual void status(std::string_view text) = 0;
};

/// Nobody: messages vanish and the answer is No.
class TESSARO_API NullUser final : public UserPort {
public:
    void message(int, MessageKind) override {}
    void sentence(std::string_view, MessageKind) override {}
    bool ask(int) override { return false; }
    bool ask(std::string_view) override { return false; }
    void status(std::string_view) override {}
};

} // namespace tessaro
