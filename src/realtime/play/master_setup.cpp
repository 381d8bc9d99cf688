// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/master_setup.h"

#include "core/model/meta.h"
#include "core/model/trk.h"
#include "realtime/play/direct_sender.h"
#include "realtime/play/event_player.h"
#include "realtime/play/joins.h"
#include "realtime/play/output_filter.h"
#include "realtime/play/track_table.h"

namespace tessaro {

namespace {
void sendEvent(const CEvnt& event, std::uint8_t port, std::uint8_t channel, DirectSender& sender)
{
    const auto message = [&](std::uint8_t kind, std::uint8_t data1, std::uint8_t data2) {
        sender.shortMessage(port, static_cast<std::uint8_t>(kind | channel), data1, data2);
    };
    const auto parameter = [&](std::uint8_t msb) {
        message(status::control, msb, event.GetPost1());
        message(status::control, static_cast<std::uint8_t>(msb - 1), event.GetPost2());
        message(status::control, 6, event.GetPost3());
    };
    const std::uint8_t status = event.GetStatus();
    switch (status::kind(status)) {
    case status::nrpn: parameter(99); break;
    case status::rpn: parameter(101); break;
    case status::voice:
        message(status::control, 0, event.GetPost1());
        message(status::control, 32, event.GetPost2());
        message(status::program, event.GetPost3(), 0);
        break;
    case status::polyPressure:
    case status::control:
    case status::pitchBend: message(status::kind(status), event.GetPost1(), event.GetPost2()); break;
    case status::program:
    case status::pressure: message(status::kind(status), event.GetPost1(), 0); break;
    default:
        if ((status == status::sysex || status == status::sysexPart) && !event.payload().empty()
            && !isSampleSysex(event.payload()))
            sender.songSysex(port, status, event.payload());
        break;
    }
}

bool isUsable(std::span<const std::uint8_t> signature) noexcept
{
    return signature.size() == 4 && signature[0] != 0 && signature[1] <= 5;
}
} // namespace

SignatureAt sendMaster(const CTrk& master, std::uint32_t until, DirectSender& sender, const TrackTable& tracks,
                       StyleCursor& styles)
{
    SignatureAt signature;
    const std::uint32_t mask = tracks.filter(0);
    for (const CBlk* blk = master.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        const CRealBlk* real = blk->GetRealBlk();
        if (!real) continue;
        const std::int64_t top = blk->GetTimeTop();
        for (const CEvnt* e = real->events().head(); e && top + e->GetTime() < until; e = List<CEvnt>::next(e)) {
            const auto time = static_cast<std::uint32_t>(top + e->GetTime());
            if (e->isMeta(meta::timeSignature)) {
                const std::span<const std::uint8_t> data = e->payload();
                if (isUsable(data)) signature = {time, data[0], data[1]};
            } else if (const std::uint8_t* chord = chordBytes(*e)) {
                styles.chord(std::span<const std::uint8_t, 4>{chord, 4}, time, true);
            } else if (!(mask & filter::bitOf(e->GetStatus()))) {
                sendEvent(*e, tracks.port(0), tracks.channel(0), sender);
            }
        }
    }
    return signature;
}

} // namespace tessaro
