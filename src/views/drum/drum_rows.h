// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <QString>

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessaro {

class UiText;

/// Which notes a drum grid shows, a row each, the highest note on top.
class DrumRows {
public:
    static constexpr int keys = 128;
    enum class Shown { all, named, used };
    using Keys = std::bitset<keys>;

    /// `used` are the notes of the track: they have rows whatever else is shown. A track without notes shows the named
    /// ones where those in use are asked for.
    void set(Shown shown, const Keys& used);

    [[nodiscard]] int count() const { return static_cast<int>(m_keys.size()); }
    /// The note of a row from 0, top first; the nearest row's for one that does not exist.
    [[nodiscard]] int key(int row) const;
    /// Nothing for a note that is folded away.
    [[nodiscard]] std::optional<int> row(int key) const;
    [[nodiscard]] const std::vector<std::uint8_t>& fromTop() const { return m_keys; }
    bool operator==(const DrumRows&) const = default;

private:
    std::vector<std::uint8_t> m_keys; ///< by row
    std::array<int, keys> m_rows{};   ///< by note; -1 for none
};

/// Notes of the common drum map, 27 to 87, have a name.
[[nodiscard]] constexpr bool hasDrumName(int key) { return key >= 27 && key <= 87; }
[[nodiscard]] QString drumName(int key, const UiText& text);

} // namespace tessaro
