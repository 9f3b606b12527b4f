#include "platform/largeArrays.h"

#include <cstddef> // says whose C library this is

// Sanitizers bring an operator new of their own.
#if defined(__linux__) && defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) &&                  \
    !defined(__SANITIZE_THREAD__)
#define PLATFORM_HAS_LARGE_PAGES 1
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#undef PLATFORM_HAS_LARGE_PAGES
#endif
#endif
#endif

#ifdef PLATFORM_HAS_LARGE_PAGES

#include "platform/LargeBlocks.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

constexpr int kLargeBytes = 4 << 20;    ///< from here on an allocation is a large block
constexpr int kReserveBytes = 32 << 20; ///< of smaller ones that were given back: kept for the next

bool isExpecting = false;
constinit platform::LargeBlocks largeBlocks;

void* allocate(std::size_t size)
{
    if (size >= std::size_t{kLargeBytes} && isExpecting) {
        if (void* const block = largeBlocks.take(size)) {
            return block;
        }
    }
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

namespace platform {

void expectLargeArrays()
{
    // Fixed bounds: by themselves they grow with every block that is given back, and keep those.
    isExpecting = isExpecting || (mallopt(M_MMAP_THRESHOLD, kLargeBytes) == 1 &&
                                  mallopt(M_TRIM_THRESHOLD, kReserveBytes) == 1);
}

} // namespace platform

void* operator new(std::size_t size)
{
    for (;;) {
        if (void* const block = allocate(size)) {
            return block;
        }
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void operator delete(void* block) noexcept
{
    if (block != nullptr && !largeBlocks.giveBack(block)) {
        std::free(block);
    }
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

#else

namespace platform {

void expectLargeArrays() {}

} // namespace platform

#endif
