// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>

namespace tessaro {

struct EditPlan;
class UiText;

/// One sentence on what an edit would do with so many selected events, or on what stands against it.
[[nodiscard]] QString planText(const EditPlan& plan, std::size_t selected, const UiText& text);

} // namespace tessaro
