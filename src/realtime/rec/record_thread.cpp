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
    tellError();
    forwardPlayed();
}

void RecordThread::forwardIncoming()
{
    const LoomRingEntry* entries = m_loom.getLoomRecdata();
    const std::uint16_t end = m_loom.getLoomWrdpt();
    while (m_recIndex != end && handOn(entries[m_recIndex])) m_recIndex = after(m_recIndex);
}

// False when it has to wait: for room in the owner's line, or, since entries are freed in order, for the owner to free
// those it has.
bool RecordThread::handOn(const LoomRingEntry& entry)
{
    const Posted posted = isWhole(entry) ? postToOwner(msg::data, &entry) : Posted::nobody;
    if (posted != Posted::nobody) return posted == Posted::yes;
    if (m_loom.getLoomRrdpt() != m_recIndex) return false;
    m_loom.loomIncRrdpt();
    return true;
}

void RecordThread::tellError()
{
    if (m_loom.getLoomRecError() == 0) return;
    m_loom.setLoomRecError(0); // first, so that one that comes now is told next time
    if (postToOwner(msg::recordError, nullptr) == Posted::full) m_loom.setLoomRecError(1);
}

void RecordThread::forwardPlayed()
{
    const LoomRingEntry* entries = m_loom.getLoomBackMsg();
    for (const std::uint16_t end = m_loom.getLoomWbmpt(); m_backIndex != end; m_backIndex = after(m_backIndex)) {
        m_owners.post(entries[m_backIndex]);
        m_loom.loomIncRbmpt();
    }
}

RecordThread::Posted RecordThread::postToOwner(std::uint32_t id, const LoomRingEntry* entry)
{
    m_posting.store(true); // before the owner is read, so that setOwner waits for us
    Posted posted = Posted::nobody;
    if (MessageTarget* owner = m_owner.load())
        posted = owner->post({id, 0, reinterpret_cast<std::intptr_t>(entry)}) ? Posted::yes : Posted::full;
    m_posting.store(false);
    return posted;
}

} // namespace tessaro
