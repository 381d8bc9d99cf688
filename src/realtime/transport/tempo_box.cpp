// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/tempo_box.h"

#include "realtime/loom/loom.h"
#include "realtime/play/smc.h"
#include "realtime/transport/cnp_observer.h"

namespace tessaro {

namespace {
constexpr int fastTempo = 3000; // thousandths on top
}

void TempoBox::wish(int tempo)
{
    const int base = m_smc.loom().getLoomTempo();
    if (base > 0 && tempo > 0) setRelative((long{tempo} * 1000 + base - 1) / base - 1000);
}

void TempoBox::setRelative(long thousandths)
{
    m_savedRelTempo = static_cast<int>(thousandths);
    if (!m_fast) m_smc.smcSetRelativeTempo(m_savedRelTempo);
    update();
}

void TempoBox::update()
{
    const int tempo = m_smc.loom().getLoomRealTempo();
    if (m_fast || tempo == m_tempo) return;
    m_tempo = tempo;
    if (m_observer) m_observer->tempoShown(tempo);
}

void TempoBox::beginFast()
{
    m_savedRelTempo = m_smc.loom().getLoomRelativeTempo();
    m_fast = true;
    m_smc.smcSetRelativeTempo(fastTempo);
}

void TempoBox::endFast()
{
    m_fast = false;
    setRelative(m_savedRelTempo);
}

} // namespace tessaro
