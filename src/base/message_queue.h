// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/messages.h"
#include "base/ring.h"

#include <atomic>
#include <functional>

namespace tessaro {

/// The line of messages in front of one loop, be it a window's or the command's. Its owner waits until
/// fd() is readable and then calls drain(), on the loop's thread; other threads post.
class TESSARO_API MessageQueue final : public MessageTarget {
public:
    using Handler = std::function<void(const Message&)>;
    static constexpr std::size_t capacity = 2048;

    /// Raises std::system_error when the system has no more file descriptors.
    explicit MessageQueue(Handler handler);
    ~MessageQueue() override;
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;

    bool post(const Message& message) noexcept override;
    void send(const Message& message) override;

    /// Handles what stands in line, at most `capacity` messages, and returns how many. The handler may
    /// post, send and drain itself. Loop thread.
    int drain();
    /// Readable while messages stand in line that no drain() has looked at. For poll and its kin.
    [[nodiscard]] int fd() const noexcept { return m_event; }

private:
    void signal() noexcept;

    Handler m_handler;
    MpscQueue<Message, capacity> m_line;
    std::atomic<bool> m_signalled = false;
    int m_event;
};

} // namespace tessaro
