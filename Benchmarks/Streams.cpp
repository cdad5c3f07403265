/// @file
/// What streams cost: sending, subscribing, memory. Both engines, with Boost.Signals2 as the peer in the same
/// run.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <benchmark/benchmark.h>
#include <boost/signals2.hpp>
#include <vector>

using namespace orrenby;
using benchmarks::allocations;
using benchmarks::measure;

namespace {

void use(detail::Engine engine)
{
    testing::TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = engine == detail::Engine::Combine});
}

template <detail::Engine engine> struct Stream {
    using Subject = Streams::PassthroughSubject<int, Never>;
    using State = Streams::CurrentValueSubject<int, Never>;
    using Connection = Streams::AnyCancellable;

    Stream() { use(engine); }
    static auto makeSource() { return Subject(); }
    static auto makeState() { return State(0); }
    template <class Source, class Callback> static Connection connect(const Source& source, Callback callback)
    {
        return source.asPublisher().bind(callback);
    }
    template <class Source> static void send(const Source& source, int value) { source.send(value); }
};

using Combine = Stream<detail::Engine::Combine>;
using Rx = Stream<detail::Engine::Rx>;

struct Signals2 {
    using Signal = boost::signals2::signal<void(int)>;
    using Connection = boost::signals2::scoped_connection;

    static auto makeSource() { return std::make_unique<Signal>(); }
    static auto makeState() { return makeSource(); }
    template <class Callback>
    static Connection connect(const std::unique_ptr<Signal>& signal, Callback callback)
    {
        return Connection(signal->connect(callback));
    }
    static void send(const std::unique_ptr<Signal>& signal, int value) { (*signal)(value); }
};

template <class Kind, class Source>
auto connectMany(const Source& source, std::int64_t count, std::int64_t& sum)
{
    auto connections = std::vector<typename Kind::Connection>();
    connections.reserve(static_cast<std::size_t>(count));
    for (auto i = std::int64_t(0); i < count; ++i)
        connections.push_back(Kind::connect(source, [&sum](int value) { sum += value; }));
    return connections;
}

/// Time and allocations of one send to `range(0)` subscribers.
template <class Kind> void Send(benchmark::State& state)
{
    const auto kind = Kind();
    const auto source = kind.makeSource();
    auto sum = std::int64_t(0);
    const auto connections = connectMany<Kind>(source, state.range(0), sum);

    measure(state, [&] { kind.send(source, 1); });

    benchmark::DoNotOptimize(sum);
}

/// One value through three hops, with the type erased at each.
template <class Kind> void SendThroughThreeMaps(benchmark::State& state)
{
    const auto kind = Kind();
    const auto source = kind.makeSource();
    const auto more = [](int value) { return value + 1; };
    auto sum = std::int64_t(0);
    const auto handle = source.asPublisher().map(more).map(more).map(more).bind(
        [&sum](int value) { sum += value; });

    measure(state, [&] { kind.send(source, 1); });

    benchmark::DoNotOptimize(sum);
}

/// A current value from its making to its end: create, subscribe, push one value, dispose.
template <class Kind> void CreateSubscribePushDispose(benchmark::State& state)
{
    const auto kind = Kind();
    auto sum = std::int64_t(0);

    measure(state, [&] {
        const auto source = kind.makeState();
        const auto connection = kind.connect(source, [&sum](int value) { sum += value; });
        kind.send(source, 1);
    });

    benchmark::DoNotOptimize(sum);
}

/// One subscription made and ended beside `range(0)` others.
template <class Kind> void SubscribeDispose(benchmark::State& state)
{
    const auto kind = Kind();
    const auto source = kind.makeSource();
    auto sum = std::int64_t(0);
    const auto others = connectMany<Kind>(source, state.range(0), sum);

    measure(
        state, [&] { const auto connection = kind.connect(source, [&sum](int value) { sum += value; }); });
}

/// Bytes and blocks that one of `range(0)` live subscriptions holds.
template <class Kind> void LiveMemory(benchmark::State& state)
{
    const auto kind = Kind();
    auto sum = std::int64_t(0);
    auto used = benchmarks::Allocations();

    for (auto _ : state) {
        const auto source = kind.makeSource();
        auto connections = std::vector<typename Kind::Connection>();
        connections.reserve(static_cast<std::size_t>(state.range(0)));
        const auto before = allocations();
        for (auto i = std::int64_t(0); i < state.range(0); ++i)
            connections.push_back(kind.connect(source, [&sum](int value) { sum += value; }));
        used = allocations() - before;
    }

    const auto count = static_cast<double>(state.range(0));
    state.counters["bytes/subscription"] = static_cast<double>(used.bytes) / count;
    state.counters["blocks/subscription"] = static_cast<double>(used.blocks) / count;
}

/// Reading the current value.
template <class Kind> void ReadCurrent(benchmark::State& state)
{
    const auto kind = Kind();
    const auto source = kind.makeState();

    for (auto _ : state)
        benchmark::DoNotOptimize(source.value());
}

#define ON_ALL(function, ...)                                                                                \
    BENCHMARK_TEMPLATE(function, Combine) __VA_ARGS__;                                                       \
    BENCHMARK_TEMPLATE(function, Rx) __VA_ARGS__;                                                            \
    BENCHMARK_TEMPLATE(function, Signals2) __VA_ARGS__

ON_ALL(Send, ->Arg(1)->Arg(10)->Arg(2'000));
ON_ALL(CreateSubscribePushDispose);
ON_ALL(SubscribeDispose, ->Arg(0)->Arg(100)->Arg(10'000));
ON_ALL(LiveMemory, ->Arg(100'000)->Iterations(1)->Unit(benchmark::kMillisecond));
BENCHMARK_TEMPLATE(SendThroughThreeMaps, Combine);
BENCHMARK_TEMPLATE(SendThroughThreeMaps, Rx);
BENCHMARK_TEMPLATE(ReadCurrent, Combine);
BENCHMARK_TEMPLATE(ReadCurrent, Rx);

} // namespace
