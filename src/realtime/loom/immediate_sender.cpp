// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/immediate_sender.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

namespace tessaro {

struct ImmediateSender::Long {
    std::vector<std::uint8_t> bytes;
    Long* next = nullptr;
};

ImmediateSender::~ImmediateSender()
{
    for (Item item; m_line.pop(item);) delete item.big;
    reclaim();
}

bool ImmediateSender::putShort(int port, std::span<const std::uint8_t> message) noexcept
{
    Item item{.port = static_cast<std::uint8_t>(port), .size = static_cast<std::uint8_t>(message.size())};
    std::ranges::copy(message, item.bytes.begin());
    return m_line.push(item);
}

bool ImmediateSender::putLong(int port, std::span<const std::uint8_t> bytes) noexcept
{
    reclaim();
    std::unique_ptr<Long> message;
    try {
        message = std::make_unique<Long>();
        message->bytes.assign(bytes.begin(), bytes.end());
    } catch (const std::exception&) {
        return false;
    }
    m_put.fetch_add(1);
    if (!m_line.push({.big = message.get(), .port = static_cast<std::uint8_t>(port)})) {
        m_sent.fetch_add(1);
        return false;
    }
    (void)message.release();
    return true;
}

bool ImmediateSender::longUnderWay() const noexcept { return m_sent.load() < m_put.load() || m_busy.load(); }

void ImmediateSender::forgetLong() noexcept { m_busy = false; }

void ImmediateSender::drain(OutPorts& ports, Nanos now) noexcept
{
    const Stamp stamp{.due = now};
    for (Item item; m_line.pop(item);) {
        if (!item.big) {
            ports.send(item.port, std::span(item.bytes).first(item.size), stamp);
            continue;
        }
        ports.sendSysex(item.port, sysexImmediate, item.big->bytes, stamp);
        giveBack(item.big);
        m_watching = true;
        m_busy = true;
        m_sent.fetch_add(1);
    }
    if (m_watching && !ports.sysexUnderWay()) {
        m_watching = false;
        m_busy = false;
    }
}

void ImmediateSender::giveBack(Long* message) noexcept
{
    message->next = m_done.load(std::memory_order_relaxed);
    while (!m_done.compare_exchange_weak(message->next, message, std::memory_order_release)) {}
}

void ImmediateSender::reclaim() noexcept
{
    for (Long* message = m_done.exchange(nullptr, std::memory_order_acquire); message;)
        delete std::exchange(message, message->next);
}

} // namespace tessaro
