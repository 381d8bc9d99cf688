// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/rt_guard.h"

#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <utility>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define TESSARO_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TESSARO_SANITIZED
#endif

namespace {

thread_local int sectionDepth = 0;

#ifndef TESSARO_SANITIZED
void checkSection() noexcept
{
    if (sectionDepth <= 0) return;
    constexpr char text[] = "memory allocated or released in a real-time section\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof text - 1);
    std::abort();
}
#endif

} // namespace

namespace tessaro::test {

void rtGuardHook(bool entering) noexcept { sectionDepth += entering ? 1 : -1; }

bool rtGuardWatches() noexcept
{
#ifdef TESSARO_SANITIZED
    return false;
#else
    return true;
#endif
}

RtGuardPause::RtGuardPause() noexcept : m_depth(std::exchange(sectionDepth, 0)) {}
RtGuardPause::~RtGuardPause() { sectionDepth = m_depth; }

} // namespace tessaro::test

#ifndef TESSARO_SANITIZED

// In front of the C library's own, which `new` and `delete` end in as well.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t size)
{
    checkSection();
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size)
{
    checkSection();
    return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size)
{
    checkSection();
    return __libc_realloc(memory, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    checkSection();
    return __libc_memalign(alignment, size);
}
void free(void* memory)
{
    if (memory) checkSection();
    __libc_free(memory);
}
}

#endif
