/// @file
/// What a value that can be observed costs to set: a plain member first, then a property that nobody
/// observes, that is observed at the end of a path, and through a typed observer. A property that nobody
/// observes stays within 1 ns of the plain member and allocates nothing; telling one observer of small
/// values allocates nothing either.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ObservedParts.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include <benchmark/benchmark.h>
#include <boost/signals2/signal.hpp>
#include <memory>

using namespace orrenby;
using benchmarks::Counting;
using benchmarks::oldAndNew;
using benchmarks::Part;
using benchmarks::Whole;

namespace {

class WeighedPart : public Part {
public:
    Property<int, "weight"> weight{*this};
};

/// Times `operation`, which gets another number each time.
template <class Operation> void measureWithNumbers(benchmark::State& state, Operation operation)
{
    int value = 0;
    benchmarks::measure(state, [&] { operation(++value); });
}

void setPlainMember(benchmark::State& state)
{
    int member = 0;
    benchmark::DoNotOptimize(&member);
    measureWithNumbers(state, [&](int value) { member = value; });
}
BENCHMARK(setPlainMember);

void setUnobserved(benchmark::State& state)
{
    Part part;
    benchmark::DoNotOptimize(&part);
    measureWithNumbers(state, [&](int value) { part.size = value; });
}
BENCHMARK(setUnobserved);

void setBesideAnObservedKey(benchmark::State& state)
{
    WeighedPart part;
    benchmark::DoNotOptimize(&part);
    part.addObserver(std::make_shared<Counting>(), "weight");
    measureWithNumbers(state, [&](int value) { part.size = value; });
}
BENCHMARK(setBesideAnObservedKey);

void setWithObservers(benchmark::State& state)
{
    Part part;
    const auto observer = std::make_shared<Counting>();
    for (auto i = 0; i < state.range(0); ++i)
        part.addObserver(observer, "size", oldAndNew);
    measureWithNumbers(state, [&](int value) { part.size = value; });
}
BENCHMARK(setWithObservers)->Arg(1)->Arg(3)->Arg(10)->ArgName("observers");

void setWithOneSlotOfASignal(benchmark::State& state)
{
    boost::signals2::signal<void(int, int)> changed;
    long calls = 0;
    changed.connect([&](int, int) { ++calls; });
    int member = 0;
    measureWithNumbers(state, [&](int value) {
        const int old = std::exchange(member, value);
        changed(old, value);
    });
}
BENCHMARK(setWithOneSlotOfASignal);

void setAtTheEndOfAPath(benchmark::State& state)
{
    Whole whole;
    const auto part = std::make_shared<Part>();
    whole.part = part;
    const auto observer = std::make_shared<Counting>();
    whole.addObserver(observer, "part.size", oldAndNew);
    measureWithNumbers(state, [&](int value) { part->size = value; });
}
BENCHMARK(setAtTheEndOfAPath);

void replaceAnObjectAlongAPath(benchmark::State& state)
{
    Whole whole;
    const Ref<Part> parts[] = {std::make_shared<Part>(), std::make_shared<Part>()};
    const auto observer = std::make_shared<Counting>();
    whole.addObserver(observer, "part.size", oldAndNew);
    measureWithNumbers(state, [&](int value) { whole.part = parts[value % 2]; });
}
BENCHMARK(replaceAnObjectAlongAPath);

void setWithATypedObserver(benchmark::State& state)
{
    const auto part = std::make_shared<Part>();
    const auto observer = make<KeyPathObserver<Part>>(part);
    long sum = 0;
    observer->observe(keyPath<&Part::size>(), [&](const auto& size) { sum += size.value(); });
    measureWithNumbers(state, [&](int value) { part->size = value; });
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(setWithATypedObserver);

void registerAndRemove(benchmark::State& state)
{
    Part part;
    const auto observer = std::make_shared<Counting>();
    measureWithNumbers(state, [&](int) {
        part.addObserver(observer, "size", oldAndNew);
        part.removeObserver(*observer, "size");
    });
}
BENCHMARK(registerAndRemove);

} // namespace
