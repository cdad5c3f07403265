/// @file
/// What an operation costs on its way through a queue: a block, a subclass, one that waits for another, one
/// that goes on after its start. Beside them, the same block through a dispatch queue.

#include "Benchmarks/Support/Allocations.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Utilities/AsyncBaseOperation.hpp"
#include <benchmark/benchmark.h>
#include <cstdint>
#include <utility>

using namespace orrenby;
using benchmarks::allocations;

namespace {

constexpr std::int64_t batch = 10'000;

class Counting : public Operation {
public:
    explicit Counting(std::int64_t& count)
        : m_count(count)
    {}
    void main() override { ++m_count; }

private:
    std::int64_t& m_count;
};

class Immediate : public AsyncBaseOperation {
public:
    explicit Immediate(std::int64_t& count)
        : m_count(count)
    {}
    void execute(Completion completion) override
    {
        ++m_count;
        completion();
    }

private:
    std::int64_t& m_count;
};

OperationQueue serialQueue()
{
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1);
    return queue;
}

/// Times adding a batch and waiting for it; counts the blocks that adding one allocates.
template <class Add, class Wait> void measure(benchmark::State& state, Add add, Wait wait)
{
    for (std::int64_t number = 0; number < batch; ++number)
        add();
    wait();
    const auto before = allocations();
    for (auto _ : state) {
        for (std::int64_t number = 0; number < batch; ++number)
            add();
        wait();
    }
    state.SetItemsProcessed(state.iterations() * batch);
    state.counters["blocks"] = benchmark::Counter(
        static_cast<double>((allocations() - before).blocks) / batch, benchmark::Counter::kAvgIterations);
}

void dispatchSerial(benchmark::State& state)
{
    const auto queue = DispatchQueue::serial("serial");
    std::int64_t count = 0;
    measure(
        state, [&] { queue.async([&count] { ++count; }); }, [&] { queue.sync([] {}); });
}
BENCHMARK(dispatchSerial)->UseRealTime();

void blockSerial(benchmark::State& state)
{
    const auto queue = serialQueue();
    std::int64_t count = 0;
    measure(
        state, [&] { queue.addOperation([&count] { ++count; }); },
        [&] { queue.waitUntilAllOperationsAreFinished(); });
}
BENCHMARK(blockSerial)->UseRealTime();

void blockUnlimited(benchmark::State& state)
{
    const auto queue = OperationQueue();
    measure(
        state, [&] { queue.addOperation([] { benchmark::ClobberMemory(); }); },
        [&] { queue.waitUntilAllOperationsAreFinished(); });
}
BENCHMARK(blockUnlimited)->UseRealTime();

void blockOnDispatchQueue(benchmark::State& state)
{
    const auto queue = OperationQueue();
    queue.setUnderlyingQueue(DispatchQueue::serial("serial"));
    std::int64_t count = 0;
    measure(
        state, [&] { queue.addOperation([&count] { ++count; }); },
        [&] { queue.waitUntilAllOperationsAreFinished(); });
}
BENCHMARK(blockOnDispatchQueue)->UseRealTime();

void subclassSerial(benchmark::State& state)
{
    const auto queue = serialQueue();
    std::int64_t count = 0;
    measure(
        state, [&] { queue.addOperation(make<Counting>(count)); },
        [&] { queue.waitUntilAllOperationsAreFinished(); });
}
BENCHMARK(subclassSerial)->UseRealTime();

void asynchronousSerial(benchmark::State& state)
{
    const auto queue = serialQueue();
    std::int64_t count = 0;
    measure(
        state, [&] { queue.addOperation(make<Immediate>(count)); },
        [&] { queue.waitUntilAllOperationsAreFinished(); });
}
BENCHMARK(asynchronousSerial)->UseRealTime();

/// Each waits for the one before it.
void chainSerial(benchmark::State& state)
{
    const auto queue = serialQueue();
    std::int64_t count = 0;
    const auto runChain = [&] {
        queue.setSuspended(true);
        auto last = Ref<Operation>();
        for (std::int64_t number = 0; number < batch; ++number) {
            auto next = make<Counting>(count);
            if (last)
                next->addDependency(last);
            queue.addOperation(next);
            last = std::move(next);
        }
        queue.setSuspended(false);
        queue.waitUntilAllOperationsAreFinished();
    };
    runChain();
    const auto before = allocations();
    for (auto _ : state)
        runChain();
    state.SetItemsProcessed(state.iterations() * batch);
    state.counters["blocks"] = benchmark::Counter(
        static_cast<double>((allocations() - before).blocks) / batch, benchmark::Counter::kAvgIterations);
}
BENCHMARK(chainSerial)->UseRealTime();

} // namespace
