// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

namespace tessaro {

class ChildFrame;
enum class WindowKind;
struct ViewParts;

/// A new child window of any kind but the track window, which there is one of; null for that and for an unknown kind.
[[nodiscard]] std::unique_ptr<ChildFrame> makeChild(const ViewParts& parts, WindowKind kind, int track);

} // namespace tessaro
