#pragma once

/// @file
/// The length of a text, and its bytes per second, as columns of a benchmark's table.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>

namespace orrenby::benchmarks {

/// To be called after the loop, when each turn went through a text of so many bytes.
inline void count(benchmark::State& state, std::size_t bytes)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes));
    state.counters["text bytes"] = static_cast<double>(bytes);
}

} // namespace orrenby::benchmarks
