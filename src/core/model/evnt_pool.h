// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/model/evnt.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessaro {

/// The memory of a song's events: slabs with a free list. An event keeps its address from `make` to
/// `destroy`, whatever block it stands in; addresses of destroyed events are used again. Every event
/// must be destroyed before its pool. User interface thread.
class TESSARO_API EvntPool {
public:
    EvntPool() = default;
    EvntPool(const EvntPool&) = delete;
    EvntPool& operator=(const EvntPool&) = delete;
    ~EvntPool() = default;

    /// A new event, in no list; null when memory is out.
    [[nodiscard]] CEvnt* make() noexcept;
    void destroy(CEvnt* e) noexcept;

    /// Bytes held, for measuring.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    union Slot {
        Slot* nextFree;
        alignas(CEvnt) std::byte room[sizeof(CEvnt)];
    };
    static constexpr std::size_t smallestSlab = 16;
    static constexpr std::size_t largestSlab = 4096;

    bool grow() noexcept;

    struct Slab {
        std::unique_ptr<Slot[]> slots;
        std::size_t size;
    };
    std::vector<Slab> m_slabs;
    std::size_t m_used = 0; ///< slots handed out of the last slab
    Slot* m_free = nullptr;
};

} // namespace tessaro
