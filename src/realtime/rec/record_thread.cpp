// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/record_thread.h"

#include "base/messages.h"
#include "realtime/loom/loom.h"
#include "realtime/play/play_owners.h"

namespace tessaro {

namespace {
constexpr std::chrono::milliseconds interval{10};

std::uint16_t after(std::uint16_t index) noexcept
{
    return index + 1 < loomRingEntries ? static_cast<std::uint16_t>(index + 1) : std::uint16_t{0};
}

bool isWhole(const LoomRingEntry& entry) noexcept
{
    if (entry.status != 0xF0) return true;
    return entry.data && entry.length > 0 && entry.data[0] == 0xF0 && entry.data[entry.length - 1] == 0xF7;
}
} // namespace

void RecordThread::start()
{
    m_recIndex = m_loom.getLoomWrdpt();
    m_backIndex = m_loom.getLoomWbmpt();
    m_task = m_clock.start(Urgency::normal, [this](Nanos now) {
        pass();
        return now + interval;
    });
}

void RecordThread::setOwner(MessageTarget* owner)
{
    m_owner.store(owner);
    while (m_posting.load()) m_clock.sleepFor(std::chrono::milliseconds{1});
}

void RecordThread::pass()
{
    forwardIncoming();
    if (m_loom.getLoomRecError() == 1 && postToOwner(msg::recordError, nullptr)) m_loom.setLoomRecError(0);
    forwardPlayed();
}

void RecordThread::forwardIncoming()
{
    const LoomRingEntry* entries = m_loom.getLoomRecdata();
    for (const std::uint16_t end = m_loom.getLoomWrdpt(); m_recIndex != end; m_recIndex = after(m_recIndex)) {
        const LoomRingEntry& entry = entries[m_recIndex];
        if (!isWhole(entry) || !postToOwner(msg::data, &entry)) m_loom.loomIncRrdpt();
    }
}

void RecordThread::forwardPlayed()
{
    const LoomRingEntry* entries = m_loom.getLoomBackMsg();
    for (const std::uint16_t end = m_loom.getLoomWbmpt(); m_backIndex != end; m_backIndex = after(m_backIndex)) {
        m_owners.post(entries[m_backIndex]);
        m_loom.loomIncRbmpt();
    }
}

bool RecordThread::postToOwner(std::uint32_t id, const LoomRingEntry* entry)
{
    m_posting.store(true); // before the owner is read, so that setOwner waits for us
    MessageTarget* owner = m_owner.load();
    const bool posted = owner && owner->post({id, 0, reinterpret_cast<std::intptr_t>(entry)});
    m_posting.store(false);
    return posted;
}

} // namespace tessaro
