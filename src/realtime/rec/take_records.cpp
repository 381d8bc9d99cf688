// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/take_records.h"

#include "base/file.h"
#include "core/model/trk.h"

#include <algorithm>
#include <limits>
#include <span>
#include <string_view>

namespace tessaro {

namespace {

constexpr std::string_view mark = "Tessaro take 1";
constexpr std::uint64_t mostRead = 1U << 30U;

enum class RecordKind : std::uint8_t { message = 1, sysex = 2, passed = 3 };

std::uint32_t addUp(std::uint32_t sum, std::span<const std::uint8_t> bytes) noexcept
{
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 0x01000193U;
    return sum;
}

bool hasBytes(const LoomRingEntry& entry) noexcept
{
    return entry.status == que::sysex || entry.status == que::continuation;
}

std::span<const std::uint8_t> bytesOf(const LoomRingEntry& entry) noexcept
{
    return {entry.data, entry.status == que::sysex ? entry.length : entry.size};
}

void putKind(ByteWriter& out, RecordKind kind) { out.u8(static_cast<std::uint8_t>(kind)); }

void putTime(ByteWriter& out, std::int64_t time)
{
    out.u32be(static_cast<std::uint32_t>(static_cast<std::uint64_t>(time) >> 32U));
    out.u32be(static_cast<std::uint32_t>(time));
}

std::int64_t getTime(ByteReader& in) noexcept
{
    const std::uint64_t high = in.u32be();
    return static_cast<std::int64_t>(high << 32U | in.u32be());
}

/// The bytes as the engine would hand them over; none when it would not.
std::optional<LoomRingEntry> sysexOf(std::uint8_t status, ByteReader::Bytes bytes) noexcept
{
    LoomRingEntry entry;
    entry.status = status;
    entry.size = static_cast<std::uint32_t>(bytes.size());
    entry.length = static_cast<std::uint16_t>(bytes.size());
    entry.data = bytes.data();
    const bool whole = bytes.size() >= 2 && bytes.size() <= std::numeric_limits<std::uint16_t>::max()
                    && bytes.front() == que::sysex && bytes.back() == que::continuation;
    if (status == que::sysex ? !whole : status != que::continuation || bytes.empty()) return std::nullopt;
    return entry;
}

/// False for a record of no known form.
bool readItem(ByteReader& from, TakeItem& item) noexcept
{
    item = {};
    const auto kind = static_cast<RecordKind>(from.u8());
    item.tick = from.u32be();
    if (kind == RecordKind::passed) return from.ok();
    const std::uint8_t status = from.u8();
    if (kind == RecordKind::sysex) {
        item.entry = sysexOf(status, from.bytes(from.left()));
    } else if (kind == RecordKind::message && status < que::sysex) {
        item.entry.emplace();
        item.entry->status = status;
        item.entry->data1 = from.u8();
        item.entry->data2 = from.u8();
    }
    if (!from.ok() || !item.entry) return false;
    item.entry->time = item.tick;
    return true;
}

} // namespace

template <class Fill>
void TakeWriter::record(std::vector<std::uint8_t>& out, Fill&& fill)
{
    ByteWriter writer(out);
    const std::size_t begin = writer.beginLength();
    fill(writer);
    writer.endLength(begin);
    m_sum = addUp(m_sum, std::span(out).subspan(begin));
    writer.u32be(m_sum);
}

void TakeWriter::start(std::vector<std::uint8_t>& out, const TakeStart& start)
{
    record(out, [&](ByteWriter& to) {
        to.chars(mark);
        to.u32be(start.topTick);
        to.u8(static_cast<std::uint32_t>(start.settings.realMode));
        to.u8(start.settings.newBlock ? 1 : 0);
        putTime(to, start.settings.punchIn);
        putTime(to, start.settings.punchOut);
        to.u8(start.loop.on ? 1 : 0);
        to.u32be(start.loop.start);
        to.u32be(start.loop.end);
        to.u32be(start.inFilter);
        to.bytes(start.dropController);
        for (const int track : start.tracks) to.u8(static_cast<std::uint32_t>(track));
    });
}

void TakeWriter::entry(std::vector<std::uint8_t>& out, const LoomRingEntry& entry)
{
    record(out, [&](ByteWriter& to) {
        putKind(to, hasBytes(entry) ? RecordKind::sysex : RecordKind::message);
        to.u32be(entry.time);
        to.u8(entry.status);
        if (hasBytes(entry)) {
            to.bytes(bytesOf(entry));
        } else {
            to.u8(entry.data1);
            to.u8(entry.data2);
        }
    });
}

void TakeWriter::passed(std::vector<std::uint8_t>& out, std::uint32_t tick)
{
    record(out, [&](ByteWriter& to) {
        putKind(to, RecordKind::passed);
        to.u32be(tick);
    });
}

TakeReplay::TakeReplay(std::vector<std::uint8_t> bytes)
    : m_bytes(std::move(bytes))
    , m_reader(m_bytes)
    , m_start(readStart())
{
}

/// The next whole record; from the first one on that is not whole, none.
std::optional<ByteReader> TakeReplay::record()
{
    const std::size_t begin = m_reader.position();
    const ByteReader::Bytes body = m_reader.bytes(m_reader.u32be());
    m_sum = addUp(m_sum, std::span(m_bytes).subspan(begin, m_reader.position() - begin));
    if (m_reader.u32be() != m_sum || !m_reader.ok()) {
        m_reader = {};
        return std::nullopt;
    }
    return ByteReader(body);
}

std::optional<TakeStart> TakeReplay::readStart()
{
    auto from = record();
    if (!from || from->chars(mark.size()) != mark) return std::nullopt;
    TakeStart start;
    start.topTick = from->u32be();
    const std::uint8_t mode = from->u8();
    start.settings.realMode = static_cast<RealRecMode>(mode);
    start.settings.newBlock = from->u8() != 0;
    start.settings.punchIn = getTime(*from);
    start.settings.punchOut = getTime(*from);
    start.loop.on = from->u8() != 0;
    start.loop.start = from->u32be();
    start.loop.end = from->u32be();
    start.inFilter = from->u32be();
    const ByteReader::Bytes controllers = from->bytes(start.dropController.size());
    if (!from->ok() || mode > static_cast<std::uint8_t>(RealRecMode::punch)) return std::nullopt;
    std::ranges::copy(controllers, start.dropController.begin());
    while (!from->atEnd()) {
        const int track = from->u8();
        if (track == 0 || track >= trackCount) return std::nullopt;
        start.tracks.push_back(track);
    }
    return start;
}

bool TakeReplay::next(TakeItem& item)
{
    while (auto from = record())
        if (readItem(*from, item)) return true;
    return false;
}

TakeReplay readTakeJournal(const std::string& path)
{
    return TakeReplay(readFile(path, std::numeric_limits<std::uint64_t>::max(), mostRead).bytes);
}

} // namespace tessaro
