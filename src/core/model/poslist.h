// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/pos.h"

#include <cstdint>

namespace tessaro {

/// A selection: a list of places that owns them, and three flags that let a batch operation put off the
/// rebuilding of the maps to one at its end.
class TESSARO_API CPosList {
public:
    CPosList() = default;
    CPosList(const CPosList&) = delete;
    CPosList& operator=(const CPosList&) = delete;
    ~CPosList() { RemoveAll(); }

    [[nodiscard]] bool IsTimeChng() const noexcept { return m_timeChng; }
    [[nodiscard]] bool IsMeasChng() const noexcept { return m_measChng; }
    [[nodiscard]] bool IsTsChng() const noexcept { return m_tsChng; }
    void SetIsTimeChng(bool on) noexcept { m_timeChng = on; }
    void SetIsMeasChng(bool on) noexcept { m_measChng = on; }
    void SetIsTsChng(bool on) noexcept { m_tsChng = on; }
    /// All flags off and no places.
    void Init() noexcept;

    /// A place that stands in no list; the caller owns it until it is linked.
    [[nodiscard]] static CPos* New() { return new CPos; }
    CPos* NewAddTail();
    void AddTail(CPos* place) noexcept { m_places.addTail(place); }
    void InsertBefore(POSITION pos, CPos* place) noexcept;
    /// Inserts by time behind equal times; `pos` comes back as the place of insertion.
    void Sort(POSITION& pos, std::uint32_t time, CPos* place) noexcept;
    /// Inserts by time in front of equal times.
    void SortBefore(POSITION& pos, std::uint32_t time, CPos* place) noexcept;
    /// Inserts by note number behind equal notes.
    void SortNote(std::uint8_t note, CPos* place) noexcept;
    void RemoveAll() noexcept;
    /// Unlinks and deletes the place; false for a null position.
    bool RemoveAt(POSITION pos) noexcept;
    /// Deletes all places from this index to the tail.
    void RemoveFrom(int index) noexcept;

    [[nodiscard]] POSITION FindIndex(int index) const noexcept;
    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(m_places.count()); }
    [[nodiscard]] POSITION GetHeadPos() const noexcept { return m_places.head(); }
    [[nodiscard]] POSITION GetTailPos() const noexcept { return m_places.tail(); }
    [[nodiscard]] POSITION GetTopPos() const noexcept { return m_places.head(); }
    /// The place at `pos`, which moves on; null for a null position.
    CPos* GetNext(POSITION& pos) const noexcept;
    CPos* GetPrev(POSITION& pos) const noexcept;
    [[nodiscard]] CPos* GetAt(POSITION pos) const noexcept { return List<CPos>::get(pos); }

private:
    void insertBeforeOrAppend(CPos* at, CPos* place) noexcept;

    List<CPos> m_places;
    bool m_timeChng = false;
    bool m_measChng = false;
    bool m_tsChng = false;
};

} // namespace tessaro
