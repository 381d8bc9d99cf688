// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/track_list.h"

#include "core/model/trk.h"

#include <charconv>

namespace tessaro::cli {

namespace {

/// Reads a track number and leaves `at` behind it; 0 for anything else.
int trackAt(const char*& at, const char* end)
{
    int number = 0;
    const auto [next, error] = std::from_chars(at, end, number);
    if (error != std::errc() || number < 1 || number >= trackCount) return 0;
    at = next;
    return number;
}

} // namespace

std::optional<std::vector<int>> tracksOf(std::string_view list)
{
    std::vector<int> tracks;
    const char* at = list.data();
    const char* const end = at + list.size();
    for (;;) {
        const int first = trackAt(at, end);
        int last = first;
        if (first != 0 && at != end && *at == '-') last = trackAt(++at, end);
        if (first == 0 || last < first) return std::nullopt;
        for (int trk = first; trk <= last; ++trk) tracks.push_back(trk);
        if (at == end) return tracks;
        if (*at++ != ',') return std::nullopt;
    }
}

} // namespace tessaro::cli
