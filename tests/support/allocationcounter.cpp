// SPDX-License-Identifier: MIT
#include "allocationcounter.h"

#include <atomic>
#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define GAMEPAD_ADDRESS_SANITIZER
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define GAMEPAD_ADDRESS_SANITIZER
#endif

namespace
{
std::atomic<std::size_t> allocations{0};

void countOne()
{
    allocations.fetch_add(1, std::memory_order_relaxed);
}
} // namespace

#if defined(GAMEPAD_ADDRESS_SANITIZER)

// The sanitizer has its own allocator, which tells of every allocation when asked.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void *, std::size_t),
                                                         void (*onFree)(const volatile void *));

namespace
{
const bool hooked =
    __sanitizer_install_malloc_and_free_hooks([](const volatile void *, std::size_t) { countOne(); },
                                              [](const volatile void *) {}) != 0;
} // namespace

#elif defined(__GLIBC__)

// `operator new` of the standard library comes here too.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);

[[gnu::visibility("default")]] void *malloc(std::size_t size)
{
    countOne();
    return __libc_malloc(size);
}

[[gnu::visibility("default")]] void *calloc(std::size_t count, std::size_t size)
{
    countOne();
    return __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void *realloc(void *block, std::size_t size)
{
    countOne();
    return __libc_realloc(block, size);
}

[[gnu::visibility("default")]] void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    countOne();
    return __libc_memalign(alignment, size);
}
}

#else

#include <new>

void *operator new(std::size_t size)
{
    countOne();
    if (void *block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void *block) noexcept
{
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    std::free(block);
}

#endif

AllocationCounter::AllocationCounter()
    : m_atStart(allocations.load(std::memory_order_relaxed))
{}

std::size_t AllocationCounter::count() const
{
    return allocations.load(std::memory_order_relaxed) - m_atStart;
}
