#pragma once

/// @file
/// What a fuzz target says of every input.

#include <cstdint>
#include <cstdlib>

/// Ends the process where a property does not hold: that is what a fuzzer looks for.
inline void requireThat(bool isTrue)
{
    if (!isTrue)
        std::abort();
}
