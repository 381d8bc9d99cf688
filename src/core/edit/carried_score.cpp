// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/carried_score.h"

#include "core/model/evnt.h"
#include "core/model/meta.h"

namespace tessaro {

bool CarriedScore::isScoreLink(const CEvnt& event) const
{
    return !m_chunks.empty() && event.isMeta(meta::sequencer) && isScoreLinkBody(event.payload());
}

bool CarriedScore::load(std::span<const std::uint8_t> chunks)
{
    m_chunks.assign(chunks.begin(), chunks.end());
    return true;
}

} // namespace tessaro
