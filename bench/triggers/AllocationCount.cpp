#include "AllocationCount.h"

#include <atomic>
#include <cstddef>

namespace {

std::atomic<std::uint64_t> allocations = 0;

} // namespace

// Stands in for the C library's functions, which everything else ends in, containers of the toolkit included.
extern "C" {
void *__libc_malloc(std::size_t);
void *__libc_realloc(void *, std::size_t);
void *__libc_calloc(std::size_t, std::size_t);

void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}
void *realloc(void *block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}
void *calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}
}

std::uint64_t Orbita::allocationCount()
{
    return allocations;
}
