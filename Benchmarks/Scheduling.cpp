/// @file
/// What a piece of work costs on its way through a dispatch queue, beside a peer's thread pool with as many
/// threads, and what a turn on an idle queue costs beside a mutex. A piece of work of a serial queue costs
/// half of the peer's at most. Its maker allocates nothing for it.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>
#include <mutex>
#include <thread>

using namespace orrenby;
using benchmarks::allocations;

namespace {

constexpr auto burst = 1000; // pieces of work per iteration, so that the threads are in full swing

/// Hands over bursts, each of which the last piece of work reports as done.
/// @param post  Hands over one piece.
/// @param finish  Hands over the one that runs when all others are done, or waits for them.
template <class Post, class Finish> void measure(benchmark::State& state, Post post, Finish finish)
{
    auto sum = 0L;
    const auto work = [&sum] { benchmark::DoNotOptimize(&sum); };
    const auto round = [&] {
        for (int count = 0; count < burst; ++count)
            post(work);
        finish();
    };
    for (int count = 0; count < 20; ++count)
        round(); // until queues have grown
    const auto before = allocations();
    for (auto _ : state)
        round();
    state.SetItemsProcessed(state.iterations() * burst);
    state.counters["blocks"] = static_cast<double>((allocations() - before).blocks)
        / static_cast<double>(state.iterations() * burst);
}

void onQueue(benchmark::State& state, const DispatchQueue& queue)
{
    measure(
        state, [&](const auto& work) { queue.async(work); }, [&] { queue.barrierSync([] {}); });
}

void serialQueue(benchmark::State& state) { onQueue(state, DispatchQueue::serial("serial")); }
BENCHMARK(serialQueue)->UseRealTime();

void concurrentQueue(benchmark::State& state) { onQueue(state, DispatchQueue::concurrent("concurrent")); }
BENCHMARK(concurrentQueue)->UseRealTime();

std::size_t threadCount() { return std::max(2U, std::thread::hardware_concurrency()); }

void peerStrand(benchmark::State& state)
{
    auto pool = boost::asio::thread_pool(threadCount());
    const auto strand = boost::asio::make_strand(pool);
    measure(
        state, [&](const auto& work) { boost::asio::post(strand, work); },
        [&] {
            auto done = detail::Signal();
            boost::asio::post(strand, [&] { done.set(); });
            done.wait();
        });
}
BENCHMARK(peerStrand)->UseRealTime();

void peerPool(benchmark::State& state)
{
    auto pool = boost::asio::thread_pool(threadCount());
    measure(
        state, [&](const auto& work) { boost::asio::post(pool, work); },
        [&] {
            auto done = detail::Signal();
            boost::asio::post(pool, [&] { done.set(); });
            done.wait();
        });
}
BENCHMARK(peerPool)->UseRealTime();

void mutexTurn(benchmark::State& state)
{
    auto mutex = std::mutex();
    auto value = 0L;
    benchmark::DoNotOptimize(&value);
    for (auto _ : state) {
        const auto lock = std::lock_guard(mutex);
        ++value;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(mutexTurn);

template <DispatchQueue (*makeQueue)(std::string)> void queueTurn(benchmark::State& state)
{
    const auto queue = makeQueue("queue");
    auto value = 0L;
    benchmark::DoNotOptimize(&value);
    benchmarks::measure(state, [&] { queue.sync([&] { ++value; }); });
}
BENCHMARK(queueTurn<DispatchQueue::serial>)->Name("serialTurn");
BENCHMARK(queueTurn<DispatchQueue::concurrent>)->Name("concurrentTurn");

} // namespace
