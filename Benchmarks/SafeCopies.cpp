/// @file
/// What safe copies of nested collections cost, beside the recursive copy that one would write by hand.

#include "Orrenby/Foundation/SafeCopies.hpp"
#include "Orrenby/Foundation/Arrays.hpp"
#include <benchmark/benchmark.h>
#include <string>
#include <utility>

namespace {

using namespace orrenby;

/// A response of 1,000 records with a nested list and dictionary each. Every so many records have a null
/// marker; none with 0.
Dictionary response(int nullEvery)
{
    Array records;
    for (int number = 0; number < 1000; ++number) {
        const bool hasNull = nullEvery != 0 && number % nullEvery == 0;
        records.push_back(
            Dictionary{{"identifier", number}, {"title", "A record with a title of some length"},
                {"tags", Array{"meadow", hasNull ? Any(NSNull{}) : Any("river"), "ford"}},
                {"place", Dictionary{{"latitude", 47.5}, {"longitude", 8.25}, {"name", "Chapel Bank"}}}});
    }
    return {{"records", std::move(records)}, {"total", 1000}};
}

Dictionary naiveDictionary(const Dictionary& dictionary);

Array naiveArray(const Array& array)
{
    Array result;
    for (const Any& value : array) {
        if (const auto* list = value.get<Array>()) {
            if (auto cleaned = naiveArray(*list); !cleaned.empty())
                result.push_back(std::move(cleaned));
        } else if (const auto* members = value.get<Dictionary>()) {
            if (auto cleaned = naiveDictionary(*members); !cleaned.empty())
                result.push_back(std::move(cleaned));
        } else if (!value.isNull())
            result.push_back(value);
    }
    return result;
}

Dictionary naiveDictionary(const Dictionary& dictionary)
{
    Dictionary result;
    for (const auto& [key, value] : dictionary) {
        if (const auto* list = value.get<Array>())
            result.set(key, naiveArray(*list));
        else if (const auto* members = value.get<Dictionary>())
            result.set(key, naiveDictionary(*members));
        else if (!value.isNull())
            result.set(key, value);
    }
    return result;
}

void safeCopy(benchmark::State& state)
{
    const auto subject = response(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(safeDictionary(subject));
}

void naiveCopy(benchmark::State& state)
{
    const auto subject = response(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(naiveDictionary(subject));
}

void strippedNulls(benchmark::State& state)
{
    Array values;
    for (int number = 0; number < 10'000; ++number)
        values.push_back(number % 10 == 0 ? Any() : Any("a text that is shared"));
    for (auto _ : state)
        benchmark::DoNotOptimize(stripNulls(values));
}

// Null markers in no record, in every hundredth, in every one.
BENCHMARK(safeCopy)->Arg(0)->Arg(100)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(naiveCopy)->Arg(0)->Arg(100)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(strippedNulls)->Unit(benchmark::kMicrosecond);

} // namespace
