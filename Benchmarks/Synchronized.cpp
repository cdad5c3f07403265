/// @file
/// What a lock box costs over the bare lock inside it. Nobody else wants the lock, so all that shows is the
/// way into the body and out of it. The box stays within 1 ns of the bare calls and allocates nothing.

#include "Orrenby/Utilities/Synchronized.hpp"
#include "Benchmarks/Support/Allocations.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include <benchmark/benchmark.h>
#include <pthread.h>

using namespace orrenby;
using benchmarks::allocations;

namespace {

/// Times `operation` and counts the blocks that one call of it allocates.
template <class Operation> void measure(benchmark::State& state, Operation operation)
{
    const auto before = allocations();
    for (auto _ : state) {
        operation();
        benchmark::ClobberMemory();
    }
    state.counters["blocks"] = benchmark::Counter(
        static_cast<double>((allocations() - before).blocks), benchmark::Counter::kAvgIterations);
}

void bareMutexChange(benchmark::State& state)
{
    pthread_mutex_t lock{};
    long value = 0;
    pthread_mutex_init(&lock, nullptr);
    benchmark::DoNotOptimize(&value);
    measure(state, [&] {
        pthread_mutex_lock(&lock);
        ++value;
        pthread_mutex_unlock(&lock);
    });
    pthread_mutex_destroy(&lock);
}
BENCHMARK(bareMutexChange);

void bareMutexRead(benchmark::State& state)
{
    pthread_mutex_t lock{};
    long value = 0;
    pthread_mutex_init(&lock, nullptr);
    benchmark::DoNotOptimize(&value);
    measure(state, [&] {
        pthread_mutex_lock(&lock);
        auto copy = value;
        pthread_mutex_unlock(&lock);
        benchmark::DoNotOptimize(copy);
    });
    pthread_mutex_destroy(&lock);
}
BENCHMARK(bareMutexRead);

void bareReadersWriterChange(benchmark::State& state)
{
    pthread_rwlock_t lock{};
    long value = 0;
    pthread_rwlock_init(&lock, nullptr);
    benchmark::DoNotOptimize(&value);
    measure(state, [&] {
        pthread_rwlock_wrlock(&lock);
        ++value;
        pthread_rwlock_unlock(&lock);
    });
    pthread_rwlock_destroy(&lock);
}
BENCHMARK(bareReadersWriterChange);

void bareReadersWriterRead(benchmark::State& state)
{
    pthread_rwlock_t lock{};
    long value = 0;
    pthread_rwlock_init(&lock, nullptr);
    benchmark::DoNotOptimize(&value);
    measure(state, [&] {
        pthread_rwlock_rdlock(&lock);
        auto copy = value;
        pthread_rwlock_unlock(&lock);
        benchmark::DoNotOptimize(copy);
    });
    pthread_rwlock_destroy(&lock);
}
BENCHMARK(bareReadersWriterRead);

template <SynchronizedKind kind> void boxChange(benchmark::State& state)
{
    Synchronized<long> box(0, kind);
    benchmark::DoNotOptimize(&box);
    measure(state, [&] { box.apply([](long& value) { ++value; }); });
}
BENCHMARK_TEMPLATE(boxChange, SynchronizedKind::mutex);
BENCHMARK_TEMPLATE(boxChange, SynchronizedKind::readersWriter);

template <SynchronizedKind kind> void boxRead(benchmark::State& state)
{
    Synchronized<long> box(0, kind);
    benchmark::DoNotOptimize(&box);
    measure(state, [&] { benchmark::DoNotOptimize(box.value()); });
}
BENCHMARK_TEMPLATE(boxRead, SynchronizedKind::mutex);
BENCHMARK_TEMPLATE(boxRead, SynchronizedKind::readersWriter);

} // namespace
