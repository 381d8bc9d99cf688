// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/note_commands.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"

#include <QPoint>

#include <cstdint>
#include <functional>
#include <unordered_set>
#include <vector>

namespace tessaro {

class CEditor;
class Grid;

/// What the pencil does in a drum grid: a press on a free cell writes a hit, a press on a hit takes it away, and a
/// sweep goes on with the same along the row. A cell reaches from one line of the grid to the next; off the grid a
/// sweep writes nothing more. The release makes one step of it. Pixels as in RollScale. Borrows all.
class DrumGesture {
public:
    struct Parts {
        CEditor& editor;
        NoteTables& notes;
        NoteCommands& commands;
        const Grid& grid;
        const RollScale& scale;
    };

    static constexpr std::uint8_t velocity = 100;
    /// Pixels of a hit as it is drawn, which take the mouse.
    [[nodiscard]] static int hitWidth(const RollScale& scale) { return scale.rowHeight() - 1; }

    explicit DrumGesture(const Parts& parts) : m_parts(parts) {}

    std::function<void(std::uint8_t key, std::uint8_t velocity)> onHear;

    void setTrack(int track);
    /// The topmost hit that is drawn at the point.
    [[nodiscard]] std::optional<NoteInView> hit(QPoint at) const;

    void press(QPoint at);
    void move(QPoint at);
    void release();
    /// Nothing has happened.
    void cancel();

    [[nodiscard]] bool isActive() const { return m_mode != Mode::none; }
    /// Those that the release will write.
    [[nodiscard]] const std::vector<NoteInView>& written() const { return m_written; }
    [[nodiscard]] bool isTaken(const EvntRef& ref) const { return m_taken.contains(ref.evnt); }

private:
    enum class Mode { none, write, take };

    [[nodiscard]] bool isFree(TickRange cell) const;
    void sweep(std::uint32_t from, std::uint32_t to);
    void write(std::uint32_t time);
    void take(std::uint32_t from, std::uint32_t to);
    void commit(std::vector<NoteInView> hits);

    Parts m_parts;
    Mode m_mode = Mode::none;
    int m_track = -1;
    std::uint8_t m_key = 0;
    std::uint32_t m_last = 0; ///< time of the pointer
    std::vector<NoteInView> m_written;
    std::vector<EvntRef> m_takenRefs;
    std::unordered_set<POSITION> m_taken;
};

} // namespace tessaro
