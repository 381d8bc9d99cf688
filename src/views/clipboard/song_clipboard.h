// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

class QString;

namespace tessaro {

class CEditor;
class Strings;

/// What the clipboard of the desktop holds of a song: blocks, events of a track or events of the master track, each
/// in its own format, so that it travels between windows, songs and running programs. Copying leaves the song as it
/// is; a paste is a step with its own title, or a part of the one that is open. What is broken, or of another kind,
/// pastes nothing. User interface thread. Borrows editor and texts.
class SongClipboard {
public:
    enum class Format { blks, styleBlks, evnts, mstrEvnts };
    /// As the desktop and other programs know it.
    [[nodiscard]] static QString name(Format format);

    SongClipboard(CEditor& editor, const Strings& strings) : m_editor(editor), m_strings(strings) {}

    [[nodiscard]] bool holds(Format format) const;

    /// Events in the order of the song, all of the master track or none of it; the first one's time becomes 0. False
    /// for nothing, and for an event that has no form; the clipboard then keeps what it had.
    bool copyEvnts(std::span<const EvntRef> refs);
    bool copyBlks(std::span<const BlkRef> blks);

    /// Gives the block of type 1 that events go to, which it may make; none after saying why there is none.
    using Target = std::function<BlkRef()>;
    /// Events of the kinds that may stand on the track, the first at the tick; those that have come in, in their order.
    /// The target is asked when there are any, as part of the step.
    std::vector<EvntRef> pasteEvnts(int track, std::uint32_t time, const Target& target);
    /// Blocks, the first with its top at the tick. On track 0 they go to the tracks that they came from, otherwise the
    /// first goes to the track and the others keep their distance to it. Those that have come in.
    std::vector<BlkRef> pasteBlks(int track, std::uint32_t time);

private:
    CEditor& m_editor;
    const Strings& m_strings;
};

} // namespace tessaro
