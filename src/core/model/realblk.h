// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/evnt.h"
#include "core/model/evnt_index.h"
#include "core/model/evnt_pool.h"

#include <cstdint>

namespace tessaro {

/// A real block: a list of events sorted by time, with no place in the song. Any number of blocks show
/// it. At equal times the earlier insertion stands first. It owns its events, whose memory is the
/// song's pool. Sorted insertion looks around first and bisects then: its cost does not depend on the
/// distance. Times are ticks from the block's start. User interface thread; the feeder reads it while
/// no edit runs. Positions are valid for the life of the event, in whatever real block it stands.
class TESSARO_API CRealBlk : public ListNode {
public:
    explicit CRealBlk(EvntPool& pool) noexcept : m_pool(pool) {}
    CRealBlk(const CRealBlk&) = delete;
    CRealBlk& operator=(const CRealBlk&) = delete;
    ~CRealBlk() { Remove(); }

    [[nodiscard]] std::uint32_t GetNum() const noexcept { return static_cast<std::uint32_t>(m_events.count()); }
    /// Events whose status has the same high nibble. Linear.
    [[nodiscard]] std::uint32_t GetCount(std::uint8_t status) const noexcept;
    [[nodiscard]] POSITION GetHeadPos() const noexcept { return m_events.head(); }
    [[nodiscard]] POSITION GetTailPos() const noexcept { return m_events.tail(); }
    [[nodiscard]] POSITION GetPos(std::uint32_t index) const noexcept { return m_events.at(index); }
    [[nodiscard]] POSITION Find(const CEvnt* e) const noexcept { return m_events.find(e); }

    /// The event at a position, and the step from it; false for a null position.
    bool GetNext(POSITION& pos, CEvnt** e) const noexcept;
    bool GetPrev(POSITION& pos, CEvnt** e) const noexcept;
    bool Get(POSITION pos, CEvnt** e) const noexcept;
    bool GetNext(POSITION& pos, _EDT_EVNT& rec) const { return GetNextEvnt(pos, rec); }
    bool GetNextEvnt(POSITION& pos, _EDT_EVNT& rec) const;
    bool GetPrevEvnt(POSITION& pos, _EDT_EVNT& rec) const;
    bool GetEvnt(POSITION pos, _EDT_EVNT& rec) const;
    /// The position of the head or tail event; null on an empty list.
    POSITION GetHeadEvnt(_EDT_EVNT& rec) const;
    POSITION GetTailEvnt(_EDT_EVNT& rec) const;

    /// A new event, not linked; null through the argument when memory is out.
    void New(CEvnt** e) noexcept { *e = m_pool.make(); }
    void NewAddTail(CEvnt** e) noexcept;
    /// Plain links without sorting.
    void AddHead(CEvnt* e) noexcept;
    void AddTail(CEvnt* e) noexcept;
    void InsertAfter(POSITION pos, CEvnt* e) noexcept;
    void InsertBefore(POSITION pos, CEvnt* e) noexcept;

    /// What an event stands behind, null at the head. Rests do not count: they come and go without a record.
    [[nodiscard]] static POSITION placeOf(POSITION evnt) noexcept;
    /// Takes an event back to the place that `placeOf` named when it left, in front of the next event but a Rest.
    void Restore(CEvnt* e, POSITION place) noexcept;

    /// Sorted insertion, searched from the tail: behind all events of the same time. `time` is the time
    /// the event has or is about to get. The event stands in no list.
    void Add(std::uint32_t time, CEvnt* e) noexcept;
    void Add(std::uint32_t time, CEvnt* e, POSITION& pos) noexcept;
    /// Sorted insertion, searched forward from `pos` (null is the list's end), which comes back as the
    /// place reached.
    void Sort(POSITION& pos, std::uint32_t time, CEvnt* e) noexcept;
    void Sort(POSITION& pos, std::uint32_t time, CEvnt* e, POSITION& newPos) noexcept;
    /// Moves the event at `pos` to a new time, behind all events of that time; returns its position, which stays the
    /// same. Null for a null position.
    POSITION Sort(std::uint32_t time, POSITION pos) noexcept;

    bool AddTs(std::uint32_t time, const std::uint8_t* data);
    bool AddTempo(std::uint32_t time, const std::uint8_t* data);
    /// A new event read from a standard MIDI stream, at the tail or in sorted place.
    bool NewAddTail(_EDT_SMF& smf);
    bool NewSort(_EDT_SMF& smf);
    /// A new event in sorted place; null when the record is refused.
    POSITION InsEvnt(const _EDT_EVNT& rec);

    /// First event with a time not less than `time`; null if none. Logarithmic.
    [[nodiscard]] POSITION GetTimePos(std::uint32_t time) const;
    [[nodiscard]] std::uint32_t GetTopEvntTime() const noexcept;
    /// Time plus gate time of the tail event, 0 on an empty list.
    [[nodiscard]] std::uint32_t GetEndTime() const noexcept;

    /// Adds `delta` to every time, clamping at 0.
    void Move(std::int64_t delta) noexcept;
    /// Adds `delta` to the time of every time signature from `pos` to the tail; others stay.
    void ChngTs(POSITION pos, std::int64_t delta) noexcept;

    /// Unlinks without deleting; false for a null position.
    bool RemoveAt(POSITION pos) noexcept;
    /// Unlinks and deletes; false for a null position.
    bool Del(POSITION pos) noexcept;
    /// Deletes all events.
    void Remove() noexcept;
    /// Deletes an event that stands in no list and came from this song's pool.
    void Delete(CEvnt* e) noexcept { m_pool.destroy(e); }

    [[nodiscard]] const List<CEvnt>& events() const noexcept { return m_events; }

private:
    static std::uint32_t shifted(std::uint32_t time, std::int64_t delta) noexcept;
    /// How far a search looks around before it asks the index.
    static constexpr int nearby = 8;

    void link(CEvnt* e, CEvnt* before) noexcept;
    /// The last event not later than `time`, null for none, searched from an event.
    [[nodiscard]] CEvnt* lastUpTo(std::uint32_t time, CEvnt* from) const noexcept;
    template <class Fill>
    bool newSorted(std::uint32_t time, Fill&& fill);

    EvntPool& m_pool;
    List<CEvnt> m_events;
    mutable EvntIndex m_index;
};

} // namespace tessaro
