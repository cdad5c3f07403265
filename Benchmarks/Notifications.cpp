/// @file
/// What a post costs: it finds those who want it, however many others are registered, and calls them without
/// allocating. Beside it, a signal of Boost.Signals2, which has neither names nor senders.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"
#include <benchmark/benchmark.h>
#include <boost/signals2/signal.hpp>
#include <string>

using namespace orrenby;
using benchmarks::measure;

namespace {

/// Posts to `range(0)` observers, beside `range(1)` registrations that want other names or senders.
void post(benchmark::State& state)
{
    const auto center = std::make_shared<NotificationCenter>();
    auto observer = NotificationObserver(center);
    const auto sender = std::make_shared<int>();
    auto strangers = std::vector<Ref<int>>();
    for (std::int64_t count = 0; count < state.range(1); ++count)
        if (count % 2 == 0)
            observer.observe({.name = "Other" + std::to_string(count)}, [](const Notification&) {});
        else {
            strangers.push_back(std::make_shared<int>());
            observer.observe({.name = "Saved", .object = strangers.back()}, [](const Notification&) {});
        }
    std::int64_t calls = 0;
    for (std::int64_t count = 0; count < state.range(0); ++count)
        observer.observe({.name = "Saved"}, [&calls](const Notification&) { ++calls; });
    const auto notification = Notification("Saved", sender);

    measure(state, [&] { center->post(notification); });
    benchmark::DoNotOptimize(calls);
}
BENCHMARK(post)->ArgNames({"observers", "others"})->ArgsProduct({{0, 1, 100}, {0, 10'000}});

void signalOfSignals2(benchmark::State& state)
{
    auto signal = boost::signals2::signal<void(const Notification&)>();
    std::int64_t calls = 0;
    for (std::int64_t count = 0; count < state.range(0); ++count)
        signal.connect([&calls](const Notification&) { ++calls; });
    const auto notification = Notification("Saved");

    measure(state, [&] { signal(notification); });
    benchmark::DoNotOptimize(calls);
}
BENCHMARK(signalOfSignals2)->ArgName("observers")->Arg(0)->Arg(1)->Arg(100);

/// Registers and removes beside `range(0)` registrations for the same name.
void observeAndUnobserve(benchmark::State& state)
{
    const auto center = std::make_shared<NotificationCenter>();
    auto others = NotificationObserver(center);
    for (std::int64_t count = 0; count < state.range(0); ++count)
        others.observe({.name = "Saved"}, [](const Notification&) {});
    auto observer = NotificationObserver(center);

    measure(state, [&] {
        const auto token = observer.observe({.name = "Saved"}, [](const Notification&) {});
        observer.unobserve(token);
    });
}
BENCHMARK(observeAndUnobserve)->ArgName("others")->Arg(0)->Arg(10'000);

} // namespace
