// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/quantise.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <utility>

namespace tessaro {
namespace {

using What = QuantiseSettings::What;
using Side = QuantiseSettings::Side;

class Quantiser {
public:
    Quantiser(const CEditor& editor, const QuantiseSettings& settings)
        : m_lines(editor, settings.grid, settings.swing)
        , m_settings(settings)
    {
    }

    void operator()(EvntState& note)
    {
        const std::uint32_t end = note.end();
        if (m_settings.what != What::ends) {
            std::uint32_t line = m_lines.nearest(note.time);
            const std::uint32_t top = List<CBlk>::get(note.ref.blk)->GetTimeTop();
            if (line < top) line = m_lines.atOrAfter(top);
            note.time = drawn(note.time, line);
        }
        if (m_settings.what == What::starts) return;
        std::uint32_t line = m_lines.nearest(end);
        if (line <= note.time) line = m_lines.atOrAfter(note.time + 1);
        const std::uint32_t ending = drawn(end, line);
        note.gate = ending > note.time ? ending - note.time : 1;
    }

private:
    [[nodiscard]] std::uint32_t drawn(std::uint32_t time, std::uint32_t line)
    {
        const std::int64_t way = std::int64_t{line} - time;
        const std::int64_t reach = std::int64_t{m_lines.length(time)} * m_settings.reach;
        const bool isNear = m_settings.reach >= 100 || std::abs(way) * 200 <= reach;
        if (isNear != (m_settings.side == Side::near)) return time;
        const std::int64_t part = way * m_settings.strength;
        return static_cast<std::uint32_t>(time + (part + (part < 0 ? -50 : 50)) / 100);
    }

    GridLines m_lines;
    const QuantiseSettings& m_settings;
};

} // namespace

EditPlan quantise(const CEditor& editor, std::span<const EvntRef> selection, const QuantiseSettings& settings)
{
    EditPlan plan;
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    std::ranges::for_each(notes, Quantiser(editor, settings));
    plan.change(std::move(notes));
    return plan;
}

} // namespace tessaro
