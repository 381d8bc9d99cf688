// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes, read as the journal of a take: as they are, and with sums that fit, so that the records behind count.
#include "realtime/rec/take_records.h"

#include <cstdlib>

namespace {

using namespace tessaro;

constexpr std::size_t frame = 4; // bytes of a record's length, and of its sum

void demand(bool holds)
{
    if (!holds) std::abort();
}

void putSums(std::vector<std::uint8_t>& bytes)
{
    std::uint32_t sum = 0;
    for (std::size_t at = 0; bytes.size() - at >= 2 * frame;) {
        const std::size_t length = ByteReader(std::span(bytes).subspan(at)).u32be();
        if (length > bytes.size() - at - 2 * frame) return;
        for (const std::size_t end = at + frame + length; at < end; ++at) sum = (sum ^ bytes[at]) * 0x01000193U;
        ByteWriter(bytes).patchU32(at, sum);
        at += frame;
    }
}

std::size_t read(const std::vector<std::uint8_t>& bytes)
{
    TakeReplay replay(bytes);
    if (!replay.isTake()) return 0;
    for (const int track : replay.start().tracks) demand(track >= 1 && track <= 100);
    std::vector<std::uint8_t> again;
    TakeWriter writer;
    writer.start(again, replay.start());
    std::size_t items = 0;
    for (TakeItem item; replay.next(item); ++items) {
        if (!item.entry) {
            writer.passed(again, item.tick);
            continue;
        }
        const LoomRingEntry& entry = *item.entry;
        demand(entry.time == item.tick);
        if (entry.status == que::sysex) demand(entry.data[0] == 0xF0 && entry.data[entry.length - 1] == 0xF7);
        if (entry.status == que::continuation) demand(entry.size > 0 && entry.data);
        writer.entry(again, entry);
    }
    TakeReplay second(std::move(again));
    demand(second.isTake());
    std::size_t secondItems = 0;
    for (TakeItem item; second.next(item);) ++secondItems;
    demand(items == secondItems);
    return items;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::uint8_t> bytes(data, data + size);
    read(bytes);
    putSums(bytes);
    read(bytes);
    return 0;
}
