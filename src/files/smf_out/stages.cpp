// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/smf_out/stages.h"

#include "core/model/evnt.h"
#include "core/model/tick.h"

#include <algorithm>
#include <functional>

namespace tessaro {

namespace {

constexpr std::uint32_t packedStep = 5; ///< ticks between the messages of a packed kind

bool isSyng(const SmfRecord& r) noexcept { return status::kind(r.status) == status::syng; }
bool isVoice(const SmfRecord& r) noexcept { return status::kind(r.status) == status::voice; }
bool hasEnd(const SmfRecord& r) noexcept { return status::kind(r.status) == status::note && r.gate != 0; }

SmfRecord noteEnd(const SmfRecord& note) noexcept
{
    return {.time = tick::later(note.time, note.gate), .status = note.status, .post1 = note.post1};
}

/// Appends all records from tick `from` to, not including, `end`, `from` becoming `time`.
void copySpan(const RecordList& source, std::uint32_t from, RecordList::const_iterator end, std::uint32_t time,
              RecordList& destination)
{
    for (auto r = std::lower_bound(source.begin(), source.end(), SmfRecord{.time = from}, isEarlier); r < end; ++r) {
        destination.push_back(*r);
        destination.back().time = tick::later(time, r->time - from);
    }
}

/// The notes that sound while a list is walked, the one that ends next on top.
class SoundingNotes {
public:
    explicit SoundingNotes(const RecordList& list) : m_list(list) {}

    void start(std::size_t index)
    {
        const std::uint64_t end = noteEnd(m_list[index]).time;
        m_ends.push_back(end << 32U | (lowest - index)); // of equal ends the later note comes out first
        std::push_heap(m_ends.begin(), m_ends.end(), std::greater<>());
    }

    /// Appends the ends up to this tick.
    void endUntil(std::uint32_t time, RecordList& out)
    {
        while (!m_ends.empty() && m_ends.front() >> 32U <= time) {
            out.push_back(noteEnd(m_list[lowest - (m_ends.front() & lowest)]));
            std::pop_heap(m_ends.begin(), m_ends.end(), std::greater<>());
            m_ends.pop_back();
        }
    }

private:
    static constexpr std::uint64_t lowest = 0xFFFF'FFFF;

    const RecordList& m_list;
    std::vector<std::uint64_t> m_ends; ///< heap: tick of the end, index of the note counted down
};

} // namespace

void Repeat(const RecordList& source, std::span<const RepeatJump> jumps, RecordList& destination)
{
    std::uint32_t time = 0;
    std::uint32_t from = 0;
    for (const RepeatJump& jump : jumps) {
        const auto end = std::lower_bound(source.begin(), source.end(), SmfRecord{.time = jump.from}, isEarlier);
        copySpan(source, from, end, time, destination);
        if (jump.from == jump.to) return;
        if (jump.from > from) time = tick::later(time, jump.from - from);
        from = jump.to;
    }
    copySpan(source, from, source.end(), time, destination);
}

void FwdSyng(RecordList& list)
{
    const auto moved = std::stable_partition(list.begin(), list.end(), std::not_fn(isSyng));
    for (auto r = moved; r != list.end(); ++r) r->time -= std::min(r->time, packedStep);
    std::inplace_merge(list.begin(), moved, list.end(), isEarlier);
}

void UnpackSyng(RecordList& list)
{
    const std::size_t count = list.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!isSyng(list[i])) continue;
        SmfRecord note = list[i];
        note.time = tick::later(note.time, packedStep);
        note.status = status::note | status::channel(note.status);
        note.event = nullptr;
        list.push_back(note);
    }
    sortByTime(list);
}

void UnpackNote(RecordList& list)
{
    RecordList out;
    out.reserve(list.size() + static_cast<std::size_t>(std::count_if(list.begin(), list.end(), hasEnd)));
    SoundingNotes sounding(list);
    for (std::size_t i = 0; i < list.size(); ++i) {
        sounding.endUntil(list[i].time, out);
        out.push_back(list[i]);
        if (hasEnd(list[i])) sounding.start(i);
    }
    sounding.endUntil(tick::latest, out);
    list.swap(out);
}

void UnpackVce(RecordList& list)
{
    const std::size_t count = list.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!isVoice(list[i])) continue;
        const SmfRecord voice = list[i];
        const std::uint8_t ch = status::channel(voice.status);
        list.push_back({.time = tick::later(voice.time, packedStep),
                        .status = static_cast<std::uint8_t>(status::control | ch),
                        .post1 = 0x20,
                        .post2 = voice.post2});
        list.push_back({.time = tick::later(voice.time, 2 * packedStep),
                        .status = static_cast<std::uint8_t>(status::program | ch),
                        .post1 = voice.post3});
    }
    sortByTime(list);
}

} // namespace tessaro
