// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/chase.h"

#include "core/edit/song.h"
#include "realtime/play/direct_sender.h"
#include "realtime/play/event_player.h"
#include "realtime/play/output_filter.h"
#include "realtime/play/play_owners.h"
#include "realtime/play/track_table.h"

#include <algorithm>

namespace tessaro {

namespace {
constexpr std::array<std::uint8_t, 6> selection{99, 98, 101, 100, 6, 38};
constexpr std::array<std::uint8_t, 2> registered{101, 100};
constexpr std::array<std::uint8_t, 2> dataEntry{6, 38};

bool isSelector(std::uint8_t number) noexcept { return number >= 98 && number <= 101; }

// Controllers after which a module may need a moment.
bool needsPause(std::uint8_t number) noexcept
{
    return number == 0 || number == 32 || number == 64 || (number >= 96 && number <= 101);
}

bool isChased(const CEvnt& event) noexcept
{
    const std::uint8_t status = event.GetStatus();
    switch (status::kind(status)) {
    case status::nrpn:
    case status::rpn:
    case status::voice:
    case status::polyPressure:
    case status::control:
    case status::program:
    case status::pressure:
    case status::pitchBend: return true;
    default: break;
    }
    if (status != status::sysex && status != status::sysexPart) return false;
    return !event.payload().empty() && !isSampleSysex(event.payload());
}
} // namespace

Chase::Chase(DirectSender& sender, PlayOwners& owners, const TrackTable& tracks, unsigned ports)
    : m_sender(sender)
    , m_owners(owners)
    , m_tracks(tracks)
    , m_ports(ports)
    , m_channels(std::size_t{ports} * 16)
{
}

void Chase::run(const Song& song, std::uint32_t target)
{
    for (const Item& item : collect(song, target)) take(item);
    flushAll();
}

std::vector<Chase::Item> Chase::collect(const Song& song, std::uint32_t target) const
{
    std::vector<Item> items;
    for (int number = 0; number < trackCount; ++number) {
        const CTrk* trk = song.trk(number);
        const std::uint8_t port = m_tracks.port(number);
        if (!trk || trk->GetType() != trktype::midi || port >= m_ports) continue;
        const std::uint32_t mask = m_tracks.filter(number);
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            const std::int64_t top = blk->GetTimeTop();
            if (!blk->GetRealBlk() || top >= target) continue;
            for (const CEvnt* e = blk->GetRealBlk()->events().head(); e && top + e->GetTime() < target;
                 e = List<CEvnt>::next(e))
                if (isChased(*e) && !(mask & filter::bitOf(e->GetStatus())))
                    items.push_back({top + e->GetTime(), e, port, m_tracks.channel(number)});
        }
    }
    std::stable_sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.time < b.time; });
    return items;
}

Chase::Place Chase::placeOf(const Item& item)
{
    return {item.port, item.channel, m_channels[std::size_t{item.port} * 16 + item.channel]};
}

void Chase::take(const Item& item)
{
    const CEvnt& event = *item.event;
    const Place place = placeOf(item);
    switch (status::kind(event.GetStatus())) {
    case status::nrpn: parameter(place, 99, event); break;
    case status::rpn: parameter(place, 101, event); break;
    case status::voice:
    case status::program: program(place, event); break;
    case status::control: control(place, event.GetPost1(), event.GetPost2()); break;
    case status::polyPressure: place.state.poly = {event.GetPost1(), event.GetPost2()}; break;
    case status::pressure: place.state.pressure = event.GetPost1(); break;
    case status::pitchBend: place.state.bend = {event.GetPost1(), event.GetPost2()}; break;
    default: sysex(item); break;
    }
}

void Chase::sysex(const Item& item)
{
    flushAll();
    const std::span<const std::uint8_t> payload = item.event->payload();
    m_sender.songSysex(item.port, item.event->GetStatus(), payload);
    LoomRingEntry entry;
    entry.size = static_cast<std::uint32_t>(payload.size());
    entry.time = item.port;
    entry.status = item.event->GetStatus();
    entry.length = static_cast<std::uint16_t>(payload.size());
    entry.data = payload.data();
    m_owners.tell(entry);
}

void Chase::control(const Place& place, std::uint8_t number, std::uint8_t value)
{
    if (number > 0x7F) return;
    if (number == 96 || number == 97) {
        flushControls(place, registered);
        sendControl(place, number, value);
    } else {
        if (isSelector(number) && place.state.dirty) flushControls(place, selection);
        place.state.control[number] = value;
    }
    place.state.dirty = true;
}

void Chase::parameter(const Place& place, std::uint8_t msbControl, const CEvnt& event)
{
    if (place.state.dirty) flushControls(place, selection);
    place.state.control[msbControl] = event.GetPost1();
    place.state.control[msbControl - 1U] = event.GetPost2();
    place.state.control[6] = event.GetPost3();
    place.state.control[38] = event.GetPost4();
    place.state.dirty = true;
}

void Chase::program(const Place& place, const CEvnt& event)
{
    flush(place);
    const bool withBank = status::kind(event.GetStatus()) == status::voice;
    if (withBank) {
        sendControl(place, 0, event.GetPost1());
        sendControl(place, 32, event.GetPost2());
    }
    sendProgram(place, withBank ? event.GetPost3() : event.GetPost1());
    place.state.dirty = withBank;
}

void Chase::flushAll()
{
    for (unsigned i = 0; i < m_channels.size(); ++i)
        flush({static_cast<std::uint8_t>(i / 16), static_cast<std::uint8_t>(i % 16), m_channels[i]});
}

void Chase::flush(const Place& place)
{
    Channel& state = place.state;
    if (state.dirty) {
        for (std::uint8_t number = 0; number < 128; ++number)
            if (number != 6 && number != 38) flushControls(place, {&number, 1});
        flushControls(place, dataEntry);
    }
    if (state.bend[0] != none) send(place, status::pitchBend, state.bend[0], state.bend[1]);
    if (state.poly[0] != none) send(place, status::polyPressure, state.poly[0], state.poly[1]);
    if (state.pressure != none) send(place, status::pressure, state.pressure, 0);
    state.bend[0] = state.poly[0] = state.pressure = none;
}

void Chase::flushControls(const Place& place, std::span<const std::uint8_t> numbers)
{
    for (const std::uint8_t number : numbers) {
        std::uint8_t& value = place.state.control[number];
        if (value < none) sendControl(place, number, value);
        value = none;
    }
}

void Chase::send(const Place& place, std::uint8_t kind, std::uint8_t data1, std::uint8_t data2)
{
    LoomRingEntry entry;
    entry.time = place.port;
    entry.status = static_cast<std::uint8_t>(kind | place.channel);
    entry.data1 = data1;
    entry.data2 = data2;
    m_sender.shortMessage(place.port, entry.status, data1, data2);
    m_owners.tell(entry);
}

void Chase::sendControl(const Place& place, std::uint8_t number, std::uint8_t value)
{
    if (needsPause(number)) m_sender.sleep(1);
    send(place, status::control, number, value);
}

void Chase::sendProgram(const Place& place, std::uint8_t number)
{
    m_sender.sleep(1);
    send(place, status::program, number, 0);
}

} // namespace tessaro
