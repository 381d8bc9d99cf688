// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

namespace tessaro {

class SettingsStore;

/// The zoom of a kind of window in the settings, as whole ticks a pixel and, beside them, thousandths. `name` is how
/// its keys begin. None when nothing was ever kept.
[[nodiscard]] std::optional<double> loadZoom(const SettingsStore& store, const char* name);
void saveZoom(SettingsStore& store, const char* name, double zoom);

} // namespace tessaro
