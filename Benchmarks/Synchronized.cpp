/// @file
/// What a lock box costs over the bare lock inside it. Nobody else wants the lock, so all that shows is the
/// way into the body and out of it. The box stays within 1 ns of the bare calls and allocates nothing.

#include "Orrenby/Utilities/Synchronized.hpp"
#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include <benchmark/benchmark.h>
#include <pthread.h>
#include <shared_mutex>

using namespace orrenby;
using benchmarks::measure;

namespace {

struct BareMutex {
    BareMutex() { pthread_mutex_init(&lock, nullptr); }
    ~BareMutex() { pthread_mutex_destroy(&lock); }
    void enterToChange() { pthread_mutex_lock(&lock); }
    void leaveChanged() { pthread_mutex_unlock(&lock); }
    void enterToRead() { enterToChange(); }
    void leaveRead() { leaveChanged(); }

    pthread_mutex_t lock{};
};

struct BareReadersWriterLock {
    BareReadersWriterLock() { pthread_rwlock_init(&lock, nullptr); }
    ~BareReadersWriterLock() { pthread_rwlock_destroy(&lock); }
    void enterToChange() { pthread_rwlock_wrlock(&lock); }
    void leaveChanged() { pthread_rwlock_unlock(&lock); }
    void enterToRead() { pthread_rwlock_rdlock(&lock); }
    void leaveRead() { leaveChanged(); }

    pthread_rwlock_t lock{};
};

/// The standard library's readers-writer lock, beside the others.
struct StandardSharedMutex {
    void enterToChange() { lock.lock(); }
    void leaveChanged() { lock.unlock(); }
    void enterToRead() { lock.lock_shared(); }
    void leaveRead() { lock.unlock_shared(); }

    std::shared_mutex lock;
};

template <class Lock> void bareChange(benchmark::State& state)
{
    Lock lock;
    long value = 0;
    benchmark::DoNotOptimize(&value);
    measure(state, [&] {
        lock.enterToChange();
        ++value;
        lock.leaveChanged();
    });
}
BENCHMARK_TEMPLATE(bareChange, BareMutex);
BENCHMARK_TEMPLATE(bareChange, BareReadersWriterLock);
BENCHMARK_TEMPLATE(bareChange, StandardSharedMutex);

template <class Lock> void bareRead(benchmark::State& state)
{
    Lock lock;
    long value = 0;
    benchmark::DoNotOptimize(&value);
    measure(state, [&] {
        lock.enterToRead();
        auto copy = value;
        lock.leaveRead();
        benchmark::DoNotOptimize(copy);
    });
}
BENCHMARK_TEMPLATE(bareRead, BareMutex);
BENCHMARK_TEMPLATE(bareRead, BareReadersWriterLock);
BENCHMARK_TEMPLATE(bareRead, StandardSharedMutex);

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
