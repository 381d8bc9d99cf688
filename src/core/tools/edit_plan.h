// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/edit/evnt_ref.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

class CEditor;
class CEvnt;

/// An event of a selection: as it stands, or as an edit would have it.
struct EvntState {
    EvntRef ref;
    std::uint32_t time = 0; ///< absolute ticks
    std::uint32_t gate = 0; ///< ticks
    std::uint8_t key = 0;   ///< the first data byte
    std::uint8_t value = 0; ///< the second one: of a note the velocity

    [[nodiscard]] std::uint32_t end() const noexcept;
    bool operator==(const EvntState&) const = default;
};

/// An event that goes to the same place on another track.
struct EvntTransfer {
    EvntRef ref;
    int track = 0;
};

/// How an empty track is to sound before events go there.
struct TrackSetup {
    int track = 0;
    std::uint8_t port = 0;
    std::uint8_t ch = 0;
};

/// Why an edit is not done at all.
enum class PlanFault {
    none,
    keyRange,    ///< notes would leave the keys 0 to 127
    emptyTracks, ///< there are not enough of them
};

/// What an edit would do with a selection, found out without touching the song, so that it can be told beforehand.
/// Valid until the song changes.
struct TESSARO_API EditPlan {
    std::vector<EvntState> changes; ///< as they are to be, in the order in which the edit makes them
    std::vector<EvntRef> removals;
    std::vector<TrackSetup> setups;
    std::vector<EvntTransfer> transfers;
    std::size_t considered = 0; ///< events of the selection that the edit is for
    std::size_t faulty = 0;     ///< those that stand against it
    PlanFault fault = PlanFault::none;
    bool hasLinked = false; ///< some of the selection stands in linked blocks, which are left out

    /// How many events would change, go or move.
    [[nodiscard]] std::size_t count() const noexcept { return changes.size() + removals.size() + transfers.size(); }

    using Filter = bool (*)(const CEvnt&) noexcept;
    /// The events of a selection that the edit is for, by rising time.
    [[nodiscard]] std::vector<EvntState> take(std::span<const EvntRef> selection, Filter isMeant);
    /// Plans to change those that are not as they stand.
    void change(std::vector<EvntState> wanted);
};

[[nodiscard]] bool isNoteEvnt(const CEvnt& event) noexcept;

/// Does what is planned; the caller holds the undo step open. Blocks grow where they must, as part of the step. Linked
/// blocks are refused with a message. Gives the events that transfers made.
TESSARO_API std::vector<EvntRef> apply(CEditor& editor, const EditPlan& plan);

} // namespace tessaro
