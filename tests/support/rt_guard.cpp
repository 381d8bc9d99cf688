// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/rt_guard.h"

#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <new>
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

void checkSection() noexcept
{
    if (sectionDepth <= 0) return;
    constexpr char text[] = "memory allocated or released in a real-time section\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof text - 1);
    std::abort();
}

void* allocate(std::size_t size) noexcept
{
    checkSection();
    return std::malloc(size == 0 ? 1 : size);
}

void* allocate(std::size_t size, std::align_val_t alignment) noexcept
{
    checkSection();
    const auto step = static_cast<std::size_t>(alignment);
    return std::aligned_alloc(step, (size + step - 1) / step * step);
}

void* orThrow(void* memory)
{
    if (!memory) throw std::bad_alloc();
    return memory;
}

void release(void* memory) noexcept
{
    if (memory) checkSection();
    std::free(memory);
}

} // namespace

namespace tessaro::test {

void rtGuardHook(bool entering) noexcept { sectionDepth += entering ? 1 : -1; }

RtGuardPause::RtGuardPause() noexcept : m_depth(std::exchange(sectionDepth, 0)) {}
RtGuardPause::~RtGuardPause() { sectionDepth = m_depth; }

} // namespace tessaro::test

void* operator new(std::size_t size) { return orThrow(allocate(size)); }
void* operator new[](std::size_t size) { return orThrow(allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment) { return orThrow(allocate(size, alignment)); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return orThrow(allocate(size, alignment)); }
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return allocate(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return allocate(size, alignment);
}
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { release(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { release(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { release(memory); }
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept { release(memory); }

#ifndef TESSARO_SANITIZED

// The C functions as well, for what libraries do inside a section.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
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
void free(void* memory)
{
    if (memory) checkSection();
    __libc_free(memory);
}
}

#endif
