// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

/// Told when a real-time section of the calling thread begins (true) and ends (false). Tests plug in an
/// allocator's guard here; null, the default, costs one comparison.
using RtHook = void (*)(bool entering) noexcept;

/// The span of a scope in which the thread must not allocate, lock or wait.
class RtSection {
public:
    explicit RtSection(RtHook hook) noexcept : m_hook(hook)
    {
        if (m_hook) m_hook(true);
    }
    ~RtSection()
    {
        if (m_hook) m_hook(false);
    }
    RtSection(const RtSection&) = delete;
    RtSection& operator=(const RtSection&) = delete;

private:
    RtHook m_hook;
};

} // namespace tessaro
