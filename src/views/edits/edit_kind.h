// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/tools/edit_plan.h"

#include <cstdint>
#include <span>

namespace tessaro {

struct ViewParts;
enum class EverydayEdit;

/// A row of a choice.
struct EditChoice {
    int value;
    TextId text;
};

/// A setting of an everyday edit, as a person fills it in.
struct EditField {
    enum class Kind {
        number,
        percent,
        ticks,
        key,        ///< of the keyboard, by name
        tonic,      ///< of a scale, by name
        noteLength, ///< the power of two that divides the whole note
        track,      ///< one where MIDI events may go
        choice,
    };

    static constexpr unsigned always = ~0U;

    TextId label;
    const char* name; ///< in the settings store
    Kind kind;
    int usual; ///< as long as none was chosen
    int least = 0;
    int most = 0;
    std::span<const EditChoice> choices{};
    unsigned modes = always; ///< values of the first field, as bits, for which this one counts
};

/// What an edit goes by.
struct EditInput {
    const ViewParts& parts;
    std::span<const EvntRef> selection;
    std::span<const int> values; ///< of the fields, in their order
    std::uint32_t seed;          ///< of what is left to chance
};

/// An everyday edit: its settings, and what it makes of them.
struct EditKind {
    TextId step; ///< title in the undo history
    std::span<const EditField> fields;
    EditPlan (*plan)(const EditInput&);
};

/// `quantiseAgain` is `quantise` with other manners.
[[nodiscard]] const EditKind& editKind(EverydayEdit edit);

} // namespace tessaro
