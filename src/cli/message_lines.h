// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/send_observer.h"

#include <cstdio>
#include <string>

namespace tessaro::cli {

/// Prints each message that leaves an engine in simulated time: MS TICK PORT BYTES. Times count from the start of
/// the run; what leaves before it stands at 0.
class MessageLines final : public SendObserver {
public:
    explicit MessageLines(std::FILE* out) : m_out(out) {}
    ~MessageLines() override { flush(); }

    void startAt(Nanos time) noexcept { m_start = time; }
    void sent(const SentMessage& message) noexcept override;
    void flush() noexcept;

private:
    void number(std::uint64_t value);

    std::FILE* m_out;
    Nanos m_start = Nanos::max();
    std::string m_buffer;
};

/// Appends bytes in hex, with blanks between.
void appendHex(std::string& line, std::span<const std::uint8_t> bytes);

} // namespace tessaro::cli
