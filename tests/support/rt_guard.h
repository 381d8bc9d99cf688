// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro::test {

/// For the engine's real-time hook: between the two calls, any allocation or release of memory by the thread ends the
/// program. A program that names this function gets the watching allocator, except in builds with a sanitizer, which
/// bring their own.
void rtGuardHook(bool entering) noexcept;
[[nodiscard]] bool rtGuardWatches() noexcept;

/// Lifts the watch for its scope, for fakes that run inside the engine.
class RtGuardPause {
public:
    RtGuardPause() noexcept;
    ~RtGuardPause();
    RtGuardPause(const RtGuardPause&) = delete;
    RtGuardPause& operator=(const RtGuardPause&) = delete;

private:
    int m_depth;
};

} // namespace tessaro::test
