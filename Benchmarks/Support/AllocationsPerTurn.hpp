#pragma once

/// @file
/// Allocations as a column of a benchmark's table. Included by one source of a program.

#include "Benchmarks/Support/Allocations.hpp"
#include <benchmark/benchmark.h>

namespace orrenby::benchmarks {

/// Counts the blocks that each turn of a benchmark allocates.
class AllocationsPerTurn {
public:
    explicit AllocationsPerTurn(benchmark::State& state)
        : m_state(state)
        , m_before(allocations().blocks)
    {}
    ~AllocationsPerTurn()
    {
        m_state.counters["allocs"] = static_cast<double>(allocations().blocks - m_before)
            / static_cast<double>(m_state.iterations());
    }

private:
    benchmark::State& m_state;
    decltype(allocations().blocks) m_before;
};

} // namespace orrenby::benchmarks
