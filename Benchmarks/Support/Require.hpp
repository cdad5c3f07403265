#pragma once

/// @file
/// Keeps a benchmark from comparing libraries that do not do the same.

#include <stdexcept>

namespace orrenby::benchmarks {

/// @throws std::logic_error if a library did not give what the others give.
inline void require(bool condition)
{
    if (!condition)
        throw std::logic_error("a library gave another result");
}

} // namespace orrenby::benchmarks
