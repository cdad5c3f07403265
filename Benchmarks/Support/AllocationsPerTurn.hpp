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

/// Times `operation`, and counts the blocks that one call of it allocates.
template <class Operation> void measure(benchmark::State& state, Operation operation)
{
    const auto counting = AllocationsPerTurn(state);
    for (auto _ : state) {
        operation();
        benchmark::ClobberMemory();
    }
}

} // namespace orrenby::benchmarks
