// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/evnt_kind.h"

#include <QPushButton>

#include <functional>

namespace tessaro {

class UiText;

/// A button with a menu of the kinds of events, each with a check; the menu stays open while checks change.
class KindFilter : public QPushButton {
public:
    explicit KindFilter(const UiText& text, QWidget* parent = nullptr);

    /// The person hid or showed kinds: a bit for each hidden group.
    std::function<void(std::uint32_t hidden)> onChosen;

    /// Which groups there are to choose from, and which of all are hidden.
    void show(const std::vector<KindGroup>& groups, std::uint32_t hidden);
    [[nodiscard]] std::uint32_t hidden() const { return m_hidden; }

private:
    void choose(std::uint32_t hidden);
    void showFace();

    const UiText& m_text;
    std::vector<KindGroup> m_groups;
    std::uint32_t m_hidden = 0;
    QMenu* m_menu; ///< child of the button
};

} // namespace tessaro
