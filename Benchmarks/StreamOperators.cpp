/// @file
/// What operators cost for each element, and sources for each life. Both engines.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/Deferred.hpp"
#include "Orrenby/Utilities/Streams/Future.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <benchmark/benchmark.h>

using namespace orrenby;
using benchmarks::AllocationsPerTurn;

namespace {

using Subject = Streams::PassthroughSubject<int, Never>;
using State = Streams::CurrentValueSubject<int, Never>;

constexpr auto combine = detail::Engine::Combine;
constexpr auto rx = detail::Engine::Rx;

void use(detail::Engine engine)
{
    testing::TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = engine == combine});
}

/// Sends to `subject` on each turn; `sum` gathers what arrives at the far end.
void sendOnEachTurn(benchmark::State& state, const Subject& subject, std::int64_t& sum)
{
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state)
            subject.send(1);
    }
    benchmark::DoNotOptimize(sum);
}

template <detail::Engine engine> void CombineLatestOf2(benchmark::State& state)
{
    use(engine);
    const auto subject = Subject();
    auto sum = std::int64_t(0);
    const auto handle = subject.asPublisher()
                            .combineLatest(State(1).asPublisher())
                            .bind([&](const auto& tuple) { sum += std::get<0>(tuple) + std::get<1>(tuple); });
    sendOnEachTurn(state, subject, sum);
}
BENCHMARK(CombineLatestOf2<combine>);
BENCHMARK(CombineLatestOf2<rx>);

template <detail::Engine engine> void CombineLatestOf4(benchmark::State& state)
{
    use(engine);
    const auto subject = Subject();
    const auto other = State(1).asPublisher();
    auto sum = std::int64_t(0);
    const auto handle = subject.asPublisher().combineLatest(other, other, other).bind([&](const auto& tuple) {
        sum += std::get<0>(tuple) + std::get<3>(tuple);
    });
    sendOnEachTurn(state, subject, sum);
}
BENCHMARK(CombineLatestOf4<combine>);
BENCHMARK(CombineLatestOf4<rx>);

/// A million items across a serial queue for each turn; the producer waits when it is 10,000 ahead.
template <detail::Engine engine> void QueueHop(benchmark::State& state)
{
    use(engine);
    constexpr auto items = 1'000'000;
    const auto subject = Subject();
    const auto queue = DispatchQueue::serial("hop");
    auto sum = std::int64_t(0);
    const auto handle = subject.asPublisher().receive(queue).bind([&](int value) { sum += value; });
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state)
            for (auto i = 0; i < items; ++i) {
                subject.send(1);
                if (i % 10'000 == 0)
                    queue.sync([] {});
            }
    }
    queue.sync([] {});
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations() * items);
}
BENCHMARK(QueueHop<combine>)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(QueueHop<rx>)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Creates a future, fulfils it, subscribes and disposes.
template <detail::Engine engine> void LifeOfFuture(benchmark::State& state)
{
    use(engine);
    auto sum = std::int64_t(0);
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state) {
            const auto future = Streams::Future<int, Never>([](const auto& promise) {
                promise(Result<int, Never>::success(1));
                return nullptr;
            });
            const auto handle = future.asPublisher().bind([&](int value) { sum += value; });
        }
    }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(LifeOfFuture<combine>);
BENCHMARK(LifeOfFuture<rx>);

template <detail::Engine engine> void SubscribeToDeferred(benchmark::State& state)
{
    use(engine);
    const auto subject = Subject();
    const auto publisher = Streams::Deferred<Subject>([&] { return subject; }).asPublisher();
    auto sum = std::int64_t(0);
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state)
            const auto handle = publisher.bind([&](int value) { sum += value; });
    }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(SubscribeToDeferred<combine>);
BENCHMARK(SubscribeToDeferred<rx>);

} // namespace
