// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessaro {

/// Pending note-offs, the one that is due first at the head; equal dues keep the order of insertion. Nodes come from
/// a fixed pool. Dues are counts of feeder steps. Asking whether anything is due looks at the head alone. Feeder only.
template <class Note, std::size_t Capacity>
class NoteOffList {
public:
    NoteOffList() noexcept { clear(); }

    /// False when every node is in use.
    bool add(std::int64_t due, const Note& note) noexcept
    {
        if (m_free == none) return false;
        const Index index = m_free;
        m_free = m_nodes[index].next;
        Index* link = &m_head;
        while (*link != none && m_nodes[*link].due <= due) link = &m_nodes[*link].next;
        m_nodes[index] = {note, due, *link};
        *link = index;
        return true;
    }

    /// Takes the head when it is due at `now`.
    bool takeDue(std::int64_t now, Note& note) noexcept
    {
        return m_head != none && m_nodes[m_head].due <= now && takeHead(note);
    }

    /// Takes the head, due or not; false on an empty list.
    bool takeHead(Note& note) noexcept
    {
        if (m_head == none) return false;
        const Index index = m_head;
        note = m_nodes[index].note;
        m_head = m_nodes[index].next;
        m_nodes[index].next = m_free;
        m_free = index;
        return true;
    }

    void clear() noexcept
    {
        for (std::size_t i = 0; i < Capacity; ++i)
            m_nodes[i].next = static_cast<Index>(i + 1 < Capacity ? i + 1 : none);
        m_free = 0;
        m_head = none;
    }

private:
    using Index = std::uint16_t;
    static constexpr Index none = 0xFFFF;
    static_assert(Capacity > 0 && Capacity < none);

    struct Node {
        Note note{};
        std::int64_t due = 0;
        Index next = none;
    };

    std::array<Node, Capacity> m_nodes;
    Index m_free = 0;
    Index m_head = none;
};

} // namespace tessaro
