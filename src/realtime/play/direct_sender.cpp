// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/direct_sender.h"

#include "realtime/loom/loom.h"

namespace tessaro {

namespace {
constexpr unsigned settleMs = 50;
constexpr std::chrono::seconds longEndLimit{11};
constexpr std::size_t bytesPerMs = 3; // what a MIDI line carries
} // namespace

void DirectSender::setChunks(std::uint32_t size, std::uint32_t intervalMs) noexcept
{
    m_chunk.store(size, std::memory_order_relaxed);
    m_intervalMs.store(intervalMs, std::memory_order_relaxed);
}

unsigned DirectSender::shortMessage(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    return m_loom.loomSendShortMsg(port, status, data1, data2);
}

unsigned DirectSender::longMessage(int port, std::span<const std::uint8_t> bytes)
{
    const std::size_t chunk = chunkSize();
    if (bytes.size() > chunk && chunk == 0) return 1;
    while (bytes.size() > chunk) {
        m_loom.loomSendLongMsg(port, bytes.data(), static_cast<std::uint32_t>(chunk));
        bytes = bytes.subspan(chunk);
        sleep(m_intervalMs.load(std::memory_order_relaxed));
    }
    return m_loom.loomSendLongMsg(port, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

void DirectSender::songSysex(std::uint8_t port, std::uint8_t status, std::span<const std::uint8_t> payload)
{
    m_sysex.clear();
    if (status == 0xF0) m_sysex.push_back(status);
    m_sysex.insert(m_sysex.end(), payload.begin(), payload.end());
    longMessage(port, m_sysex);
    waitForLongEnd();
    sleep(static_cast<unsigned>(m_sysex.size() / bytesPerMs));
}

void DirectSender::waitForLongEnd()
{
    const Nanos limit = m_clock.now() + longEndLimit;
    sleep(settleMs);
    while (m_loom.getLoomInLongmsg()) {
        if (m_clock.now() >= limit) {
            m_loom.setLoomInLongmsg(0);
            return;
        }
        sleep(1);
    }
}

} // namespace tessaro
