// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/note_table.h"

#include <new>

namespace tessaro {

/// The notes stand in a list by age, and in one chain for each track and key, the oldest first in both.
struct NoteTable::Table {
    struct Node {
        SoundingNote note;
        Index older = none;
        Index newer = none; // in the free list: the next free one
        Index chained = none;
    };

    Table() { clear(); }

    void clear()
    {
        chains.fill(none);
        for (std::size_t i = 0; i < capacity; ++i) nodes[i].newer = i + 1 < capacity ? static_cast<Index>(i + 1) : none;
        free = 0;
        oldest = newest = none;
    }

    Index& chainOf(std::uint8_t track, std::uint8_t songKey)
    {
        return chains[static_cast<std::size_t>(track) * 128 + songKey];
    }

    std::array<Node, capacity> nodes;
    std::array<Index, std::size_t{loomTracks} * 128> chains;
    Index free = none;
    Index oldest = none;
    Index newest = none;
};

NoteTable::NoteTable() = default;
NoteTable::~NoteTable() = default;

bool NoteTable::create()
{
    if (!m_table) m_table.reset(new (std::nothrow) Table);
    return m_table != nullptr;
}

void NoteTable::destroy() { m_table.reset(); }

bool NoteTable::add(const SoundingNote& note)
{
    if (!m_table || m_table->free == none || note.track >= loomTracks || note.songKey >= 128) return false;
    Table& t = *m_table;
    const Index index = t.free;
    t.free = t.nodes[index].newer;
    t.nodes[index] = {.note = note, .older = t.newest, .newer = none, .chained = none};
    (t.newest == none ? t.oldest : t.nodes[t.newest].newer) = index;
    t.newest = index;

    Index* link = &t.chainOf(note.track, note.songKey);
    while (*link != none) link = &t.nodes[*link].chained;
    *link = index;
    return true;
}

NoteTable::Index NoteTable::indexOf(std::uint8_t track, std::uint8_t port, std::uint8_t channel,
                                    std::uint8_t songKey) const
{
    if (!m_table || track >= loomTracks || songKey >= 128) return none;
    const Index first = m_table->chainOf(track, songKey);
    for (Index i = first; i != none; i = m_table->nodes[i].chained) {
        const SoundingNote& note = m_table->nodes[i].note;
        if (note.port == port && note.channel == channel) return i;
    }
    return first;
}

std::optional<SoundingNote> NoteTable::find(std::uint8_t track, std::uint8_t port, std::uint8_t channel,
                                            std::uint8_t songKey) const
{
    const Index index = indexOf(track, port, channel, songKey);
    if (index == none) return std::nullopt;
    return m_table->nodes[index].note;
}

std::optional<SoundingNote> NoteTable::take(std::uint8_t track, std::uint8_t port, std::uint8_t channel,
                                            std::uint8_t songKey)
{
    const Index index = indexOf(track, port, channel, songKey);
    if (index == none) return std::nullopt;
    const SoundingNote note = m_table->nodes[index].note;
    remove(index);
    return note;
}

void NoteTable::remove(Index index)
{
    Table& t = *m_table;
    Table::Node& node = t.nodes[index];
    Index* link = &t.chainOf(node.note.track, node.note.songKey);
    while (*link != index) link = &t.nodes[*link].chained;
    *link = node.chained;

    (node.older == none ? t.oldest : t.nodes[node.older].newer) = node.newer;
    (node.newer == none ? t.newest : t.nodes[node.newer].older) = node.older;
    node.newer = t.free;
    t.free = index;
}

void NoteTable::clear()
{
    if (m_table && m_table->oldest != none) m_table->clear();
}

NoteTable::Index NoteTable::oldest() const { return m_table ? m_table->oldest : none; }
NoteTable::Index NoteTable::newerThan(Index index) const { return m_table->nodes[index].newer; }
const SoundingNote& NoteTable::noteAt(Index index) const { return m_table->nodes[index].note; }

} // namespace tessaro
