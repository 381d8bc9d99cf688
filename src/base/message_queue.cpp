// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/message_queue.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tessaro {

MessageQueue::MessageQueue(Handler handler)
    : m_handler(std::move(handler))
    , m_event(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
    if (m_event < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

MessageQueue::~MessageQueue() { close(m_event); }

bool MessageQueue::post(const Message& message) noexcept
{
    if (!m_line.push(message)) return false;
    signal();
    return true;
}

void MessageQueue::send(const Message& message) { m_handler(message); }

int MessageQueue::drain()
{
    // The order matters: a post that still finds the flag set is seen by the pops below, one that
    // finds it cleared makes the descriptor readable again.
    eventfd_t ignored = 0;
    eventfd_read(m_event, &ignored);
    m_signalled.exchange(false);

    int handled = 0;
    Message message;
    while (handled < static_cast<int>(capacity) && m_line.pop(message)) {
        m_handler(message);
        ++handled;
    }
    if (m_line.ready()) signal();
    return handled;
}

void MessageQueue::signal() noexcept
{
    if (!m_signalled.exchange(true)) eventfd_write(m_event, 1);
}

} // namespace tessaro
