// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace tessaro {

class Loom;
class MessageTarget;
class PlayOwners;
struct LoomRingEntry;

/// The one reader of the engine's two rings: every 10 ms it turns what came in into messages for the record owner, and
/// what was played into messages for the play owners. An incoming entry is the receiver's until it frees it
/// (`smcIncRrdpt`), in the order of the messages; what there is no receiver for is freed here. While the receiver's
/// line is full, entries wait in the ring, whose overflow is an error like any other and told once by message 0x434.
/// Start, stop and the owner belong to the user interface thread.
class RecordThread {
public:
    RecordThread(Loom& loom, Clock& clock, PlayOwners& owners) : m_loom(loom), m_clock(clock), m_owners(owners) {}

    void start();
    void stop() { m_task.reset(); }
    /// Null for none. The owner before gets nothing more, and still frees what it was given.
    void setOwner(MessageTarget* owner);

private:
    enum class Posted { yes, full, nobody };

    void pass();
    void forwardIncoming();
    void forwardPlayed();
    bool handOn(const LoomRingEntry& entry);
    void tellError();
    Posted postToOwner(std::uint32_t id, const LoomRingEntry* entry);

    Loom& m_loom;
    Clock& m_clock;
    PlayOwners& m_owners;
    std::atomic<MessageTarget*> m_owner{nullptr};
    std::atomic<bool> m_posting{false};
    std::uint16_t m_recIndex = 0;
    std::uint16_t m_backIndex = 0;
    std::unique_ptr<TimedTask> m_task;
};

} // namespace tessaro
