// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/thin_out.h"

#include "core/model/evnt.h"

#include <cstdlib>
#include <map>
#include <tuple>

namespace tessaro {
namespace {

bool isContinuous(const CEvnt& e) noexcept
{
    switch (status::kind(e.GetStatus())) {
    case status::polyPressure:
    case status::control:
    case status::pressure:
    case status::pitchBend: return true;
    default: return false;
    }
}

/// Block, status and, where there is one, controller or key.
using Stream = std::tuple<POSITION, int, int>;

Stream streamOf(const EvntState& evnt)
{
    const std::uint8_t st = List<CEvnt>::get(evnt.ref.evnt)->GetStatus();
    const bool isNumbered = status::kind(st) == status::control || status::kind(st) == status::polyPressure;
    return {evnt.ref.blk, st, isNumbered ? evnt.key : -1};
}

int valueOf(const EvntState& evnt)
{
    const bool isPressure = status::kind(List<CEvnt>::get(evnt.ref.evnt)->GetStatus()) == status::pressure;
    return isPressure ? evnt.key : evnt.value;
}

class Thinner {
public:
    Thinner(const ThinSettings& settings, std::vector<EvntRef>& removals) : m_settings(settings), m_removals(removals)
    {
    }

    /// Decides about the event before, now that it is known what follows it.
    void pass(const EvntState& evnt)
    {
        if (m_last && isClose(*m_last) && !isFar(evnt.time, m_last->time))
            m_removals.push_back(m_last->ref);
        else
            m_kept = m_last;
        m_last = &evnt;
    }

private:
    [[nodiscard]] bool isFar(std::uint32_t time, std::uint32_t before) const
    {
        return m_settings.ticks > 0 && std::int64_t{time} - before >= m_settings.ticks;
    }
    [[nodiscard]] bool isClose(const EvntState& evnt) const
    {
        if (!m_kept || (m_settings.ticks <= 0 && m_settings.value <= 0) || isFar(evnt.time, m_kept->time)) return false;
        return m_settings.value <= 0 || std::abs(valueOf(evnt) - valueOf(*m_kept)) < m_settings.value;
    }

    const ThinSettings& m_settings;
    std::vector<EvntRef>& m_removals;
    const EvntState* m_kept = nullptr;
    const EvntState* m_last = nullptr;
};

} // namespace

EditPlan thinOut(std::span<const EvntRef> selection, const ThinSettings& settings)
{
    EditPlan plan;
    const std::vector<EvntState> evnts = plan.take(selection, isContinuous);
    std::map<Stream, Thinner> streams;
    for (const EvntState& evnt : evnts)
        streams.try_emplace(streamOf(evnt), settings, plan.removals).first->second.pass(evnt);
    return plan;
}

} // namespace tessaro
