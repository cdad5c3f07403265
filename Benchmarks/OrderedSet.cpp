/// @file
/// What it costs to build an ordered set, to look members up, and to compare two sets, beside a vector with a
/// hash map and beside a set of the same kind.

#include "Orrenby/Utilities/OrderedSet.hpp"
#include <benchmark/benchmark.h>
#include <cstdint>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>
#if __has_include(<tsl/ordered_set.h>)
#include <tsl/ordered_set.h>
#endif

using namespace orrenby;

namespace {

template <class T> T made(std::uint64_t number)
{
    if constexpr (std::is_same_v<T, std::string>)
        return "item-" + std::to_string(number);
    else
        return static_cast<T>(number);
}

/// Members in no order; a tenth of them a second time.
template <class T> std::vector<T> members(std::int64_t count)
{
    std::mt19937_64 engine(7);
    std::vector<T> result;
    for (std::int64_t place = 0; place < count; ++place)
        result.push_back(
            place % 10 == 9 ? result[engine() % result.size()] : made<T>(engine() % 1'000'000'000'000U));
    return result;
}

/// What an application writes when it has no ordered set.
template <class T> struct VectorAndMap {
    std::vector<T> elements;
    std::unordered_map<T, std::int64_t> indices;

    explicit VectorAndMap(const std::vector<T>& sequence)
    {
        elements.reserve(sequence.size());
        indices.reserve(sequence.size());
        for (const T& element : sequence)
            if (indices.try_emplace(element, static_cast<std::int64_t>(elements.size())).second)
                elements.push_back(element);
    }
    std::int64_t position(const T& element) const
    {
        const auto found = indices.find(element);
        return found != indices.end() ? found->second : -1;
    }
};

template <class T> struct Ours {
    OrderedSet<T> set;
    explicit Ours(const std::vector<T>& sequence)
        : set(sequence)
    {}
    std::int64_t position(const T& element) const { return set.indexOf(element).value_or(-1); }
};

#if __has_include(<tsl/ordered_set.h>)
template <class T> struct Tsl {
    tsl::ordered_set<T, std::hash<T>, std::equal_to<T>, std::allocator<T>, std::vector<T>> set;
    explicit Tsl(const std::vector<T>& sequence)
        : set(sequence.begin(), sequence.end())
    {}
    std::int64_t position(const T& element) const
    {
        const auto found = set.find(element);
        return found != set.end() ? found - set.begin() : -1;
    }
};
#endif

template <class Set, class T> void build(benchmark::State& state)
{
    const auto sequence = members<T>(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(Set(sequence));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Half of what is looked up is there.
template <class Set, class T> void lookup(benchmark::State& state)
{
    const auto sequence = members<T>(state.range(0) * 2);
    const Set set(std::vector<T>(sequence.begin(), sequence.begin() + state.range(0)));
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const T& element : sequence)
            sum += set.position(element);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sequence.size()));
}

template <template <class> class Set, class T> void registerFor(const std::string& name)
{
    for (const std::int64_t size : {10, 1'000, 100'000}) {
        benchmark::RegisterBenchmark(("build/" + name).c_str(), build<Set<T>, T>)->Arg(size);
        benchmark::RegisterBenchmark(("lookup/" + name).c_str(), lookup<Set<T>, T>)->Arg(size);
    }
}

[[maybe_unused]] const bool isRegistered = [] {
    registerFor<Ours, std::int64_t>("OrderedSet/int");
    registerFor<VectorAndMap, std::int64_t>("vector+unordered_map/int");
    registerFor<Ours, std::string>("OrderedSet/text");
    registerFor<VectorAndMap, std::string>("vector+unordered_map/text");
#if __has_include(<tsl/ordered_set.h>)
    registerFor<Tsl, std::int64_t>("tsl/int");
    registerFor<Tsl, std::string>("tsl/text");
#endif
    return true;
}();

/// A tenth of the members is new, a tenth gone, and nearly all have another position.
template <class T> void compare(benchmark::State& state)
{
    const auto sequence = members<T>(state.range(0));
    const OrderedSet<T> before(sequence);
    auto after = before;
    after.removeAll([place = 0](const T&) mutable { return place++ % 10 == 3; });
    for (std::int64_t place = 0; place < before.count() / 10; ++place)
        after.append(made<T>(static_cast<std::uint64_t>(place) + 2'000'000'000'000U));
    for (auto _ : state)
        benchmark::DoNotOptimize(before.compared(after));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(compare<std::int64_t>)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Complexity(benchmark::oN);
BENCHMARK(compare<std::string>)->Arg(1'000)->Arg(10'000)->Arg(100'000);

template <class T> void compareWithFewestMoves(benchmark::State& state)
{
    const OrderedSet<T> before(members<T>(state.range(0)));
    const auto after = before.sorted(std::less<>());
    for (auto _ : state)
        benchmark::DoNotOptimize(before.comparedWithFewestMoves(after));
}
BENCHMARK(compareWithFewestMoves<std::int64_t>)->Arg(10'000);

void appendAndRemoveLast(benchmark::State& state)
{
    OrderedSet<std::int64_t> set(members<std::int64_t>(state.range(0)));
    for (auto _ : state) {
        set.append(-1);
        benchmark::DoNotOptimize(set.removeLast());
    }
}
BENCHMARK(appendAndRemoveLast)->Arg(1'000)->Arg(100'000);

} // namespace
