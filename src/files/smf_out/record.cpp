// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/smf_out/record.h"

#include <algorithm>

namespace tessaro {

namespace {

/// Where each ascending run ends.
std::vector<std::size_t> runEnds(const RecordList& list)
{
    std::vector<std::size_t> ends;
    for (auto from = list.begin(); from != list.end();) {
        from = std::is_sorted_until(from, list.end(), isEarlier);
        ends.push_back(static_cast<std::size_t>(from - list.begin()));
    }
    return ends;
}

/// Merges each run with its neighbour and leaves half as many.
void mergePairs(const RecordList& list, RecordList& merged, std::vector<std::size_t>& ends)
{
    const auto at = [&list](std::size_t index) { return list.begin() + static_cast<std::ptrdiff_t>(index); };
    auto out = merged.begin();
    std::size_t from = 0;
    std::size_t runs = 0;
    for (std::size_t i = 0; i < ends.size(); i += 2) {
        const std::size_t middle = ends[i];
        const std::size_t end = i + 1 < ends.size() ? ends[i + 1] : middle;
        out = std::merge(at(from), at(middle), at(middle), at(end), out, isEarlier);
        from = ends[runs++] = end;
    }
    ends.resize(runs);
}

} // namespace

void sortByTime(RecordList& list)
{
    std::vector<std::size_t> ends = runEnds(list);
    if (ends.size() < 2) return;
    RecordList merged(list.size());
    while (ends.size() > 1) {
        mergePairs(list, merged, ends);
        list.swap(merged);
    }
}

} // namespace tessaro
