// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/play/play_bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <vector>

namespace tessaro::test {

inline bool isValid(const std::vector<std::uint8_t>& m)
{
    const auto low = [](std::uint8_t b) { return b < 0x80; };
    if (m.empty() || m[0] < 0x80) return false;
    if (m[0] == 0xF0) return m.back() == 0xF7 && std::all_of(m.begin() + 1, m.end() - 1, low);
    const std::size_t length = (m[0] & 0xE0U) == 0xC0 ? 2 : m[0] < 0xF0 || m[0] == 0xF2 ? 3 : 1;
    return m.size() == length && std::all_of(m.begin() + 1, m.end(), low);
}

/// Follows a whole log: what sounds, and that nothing is odd.
class Listener {
public:
    void hear(const std::vector<Heard>& log)
    {
        for (const Heard& h : log) {
            ASSERT_TRUE(isValid(h.bytes));
            ASSERT_GE(h.due, m_last) << "time goes backwards";
            m_last = h.due;
            const auto note = std::make_tuple(h.port, h.bytes[0] & 0x0F, h.bytes.size() > 1 ? h.bytes[1] : 0);
            if (h.isNoteOn()) ++m_sounding[note];
            if (h.isNoteOff()) {
                ASSERT_GT(m_sounding[note], 0) << "off before on";
                --m_sounding[note];
            }
        }
    }
    [[nodiscard]] int sounding() const
    {
        int count = 0;
        for (const auto& [note, n] : m_sounding) count += n;
        return count;
    }

private:
    std::map<std::tuple<int, int, int>, int> m_sounding;
    Nanos m_last{};
};

} // namespace tessaro::test
