#pragma once

/// @file
/// Counts what a benchmark or a test allocates. Included by one source of a program, because it replaces the
/// global operators.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace orrenby::benchmarks {

/// Blocks allocated so far, and bytes that are allocated now with the allocator's own overhead of one word
/// each.
struct Allocations {
    std::int64_t blocks = 0;
    std::int64_t bytes = 0;

    Allocations operator-(const Allocations& earlier) const
    {
        return {blocks - earlier.blocks, bytes - earlier.bytes};
    }
};

inline Allocations& allocations()
{
    static thread_local auto total = Allocations();
    return total;
}

} // namespace orrenby::benchmarks

// NOLINTBEGIN(misc-definitions-in-headers)
// Never inlined: g++ would then see a `free` meet a `new` and warn.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    auto* const block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    auto& total = orrenby::benchmarks::allocations();
    ++total.blocks;
    total.bytes += static_cast<std::int64_t>(malloc_usable_size(block) + sizeof(std::size_t));
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept
{
    if (block)
        orrenby::benchmarks::allocations().bytes -= static_cast<std::int64_t>(
            malloc_usable_size(block) + sizeof(std::size_t));
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
// NOLINTEND(misc-definitions-in-headers)
