// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/evnt_kind.h"

#include <functional>
#include <optional>
#include <vector>

class QMenu;

namespace tessaro {

/// What a choice from the menu asks for; the controller, where it has one.
using InsertKind = std::function<void(EvntKind kind, std::optional<std::uint8_t> controller)>;

/// Fills a menu with kinds of events to insert; controllers stand in a menu of their own, the usual ones by name.
void fillKinds(QMenu& menu, const std::vector<EvntKind>& kinds, const UiText& text, InsertKind insert);

} // namespace tessaro
