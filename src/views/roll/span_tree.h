// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

namespace tessaro {

/// Spans in rising order of `start`, each with its `end` (not less, and outside) and a `most` that belongs to this
/// tree: they answer which of them meet another span, in logarithmic time and the number of those that do. The tree is
/// laid over the row itself: its root is the middle, and `most` is the latest end of the subtree.
namespace span_tree {

/// Fills in `most`; answers the latest end of all, 0 for none.
template <class Span>
std::uint32_t build(std::span<Span> spans)
{
    if (spans.empty()) return 0;
    const std::size_t mid = spans.size() / 2;
    Span& root = spans[mid];
    root.most = std::max({root.end, build(spans.first(mid)), build(spans.subspan(mid + 1))});
    return root.most;
}

/// Calls `visit(span)` in rising order of start for every span with a start before `to` and an end behind `from`.
template <class Span, class Visit>
void forEach(std::span<const Span> spans, std::uint32_t from, std::uint32_t to, Visit& visit)
{
    while (!spans.empty()) {
        const std::size_t mid = spans.size() / 2;
        const Span& root = spans[mid];
        if (root.most <= from) return;
        forEach(spans.first(mid), from, to, visit);
        if (root.start >= to) return;
        if (root.end > from) visit(root);
        spans = spans.subspan(mid + 1);
    }
}

} // namespace span_tree
} // namespace tessaro
