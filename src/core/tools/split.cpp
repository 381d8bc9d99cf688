// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/split.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace tessaro {
namespace {

const CTrk& trkOf(const EvntState& evnt) { return *List<CTrk>::get(evnt.ref.trk); }
std::uint8_t statusOf(const EvntState& evnt) { return List<CEvnt>::get(evnt.ref.evnt)->GetStatus(); }

bool hasChannel(const CEvnt& e) noexcept
{
    const std::uint8_t kind = status::kind(e.GetStatus());
    const bool isPacked = kind == status::nrpn || kind == status::rpn || kind == status::voice;
    return isPacked || (kind >= status::note && kind <= status::pitchBend);
}

/// Empty tracks, each for one part of one track.
class EmptyTracks {
public:
    EmptyTracks(const CEditor& editor, EditPlan& plan) : m_editor(editor), m_plan(plan) {}

    /// 0 when there are no more.
    int trackFor(POSITION source, int part, std::uint8_t ch)
    {
        const auto [at, isNew] = m_parts.try_emplace({source, part}, 0);
        if (!isNew) return at->second;
        while (m_next < trackCount && !canTake(*m_editor.song().trk(m_next))) ++m_next;
        if (m_next == trackCount) return 0;
        m_plan.setups.push_back({m_next, List<CTrk>::get(source)->GetPort(), ch});
        return at->second = m_next++;
    }

private:
    static bool canTake(const CTrk& trk) { return trk.IsEmpty() && trk.GetType() != trktype::wave; }

    const CEditor& m_editor;
    EditPlan& m_plan;
    std::map<std::pair<POSITION, int>, int> m_parts;
    int m_next = 1;
};

void send(EditPlan& plan, const EvntState& evnt, int track)
{
    if (track > 0)
        plan.transfers.push_back({evnt.ref, track});
    else
        ++plan.faulty;
}

void judge(EditPlan& plan)
{
    if (plan.faulty == 0) return;
    plan.fault = PlanFault::emptyTracks;
    plan.transfers.clear();
    plan.setups.clear();
}

} // namespace

EditPlan splitByPitch(std::span<const EvntRef> selection, const SplitSettings& settings)
{
    EditPlan plan;
    for (const EvntState& note : plan.take(selection, isNoteEvnt))
        if (note.key < settings.key && Song::numberOf(note.ref.trk) != settings.track)
            plan.transfers.push_back({note.ref, settings.track});
    return plan;
}

EditPlan splitByChannel(const CEditor& editor, std::span<const EvntRef> selection)
{
    EditPlan plan;
    EmptyTracks tracks(editor, plan);
    for (const EvntState& evnt : plan.take(selection, hasChannel)) {
        const std::uint8_t ch = status::channel(statusOf(evnt));
        if (ch != trkOf(evnt).GetCh()) send(plan, evnt, tracks.trackFor(evnt.ref.trk, ch, ch));
    }
    judge(plan);
    return plan;
}

EditPlan separateChords(const CEditor& editor, std::span<const EvntRef> selection)
{
    EditPlan plan;
    EmptyTracks tracks(editor, plan);
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    std::ranges::stable_sort(notes, {}, [](const EvntState& n) { return std::tuple(n.time, n.ref.trk, -n.key); });
    const EvntState* before = nullptr;
    int voice = 0;
    for (const EvntState& note : notes) {
        const bool isSameChord = before && before->time == note.time && before->ref.trk == note.ref.trk;
        voice = isSameChord ? voice + 1 : 0;
        before = &note;
        if (voice > 0) send(plan, note, tracks.trackFor(note.ref.trk, voice, trkOf(note).GetCh()));
    }
    judge(plan);
    return plan;
}

} // namespace tessaro
