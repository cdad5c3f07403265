// Loose JSON from text and back, beside the trees of values of two well-known libraries.

#include "Benchmarks/Support/Require.hpp"
#include "Benchmarks/Support/TextBytes.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Utilities/JSON/AnyJSONValue.hpp"
#include "Orrenby/Utilities/JSON/JSONObject.hpp"
#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <nlohmann/json.hpp>
#include <random>
#include <span>

namespace {

using namespace orrenby;
using benchmarks::count;
using benchmarks::require;

/// Reports with escapes, text of several scripts, nested objects and numbers of every kind; no null.
std::string reports(std::int64_t count)
{
    static const char* const words[] = {"river", "gauge", "Brücke", "水位", "line\nbreak", "\"quoted\"",
        "station", "north", "level", "rising", "since", "yesterday", "the", "bank", "near", "old", "mill"};
    std::mt19937 engine(5);
    const auto text = [&](unsigned length) {
        std::string result;
        for (; length > 0; --length)
            result += std::string(words[engine() % std::size(words)]) + " ";
        return result;
    };
    const auto decimal = [&](double scale) { return static_cast<double>(engine() % 1'000'000) / scale; };

    auto list = nlohmann::ordered_json::array();
    for (std::int64_t number = 0; number < count; ++number)
        list.push_back({{"identifier", 4'000'000'000 + number}, {"title", text(4)}, {"author", text(2)},
            {"isUrgent", number % 3 == 0}, {"note", text(6)}, {"tags", {text(1), text(1)}},
            {"place", {{"latitude", decimal(1e4)}, {"longitude", -decimal(1e4)}, {"name", text(2)}}},
            {"score", number % 4 == 0 ? decimal(1e6) / 3 : decimal(100)},
            {"createdAt", 1'700'000'000'000 + number}});
    return nlohmann::ordered_json{{"version", "2.4.1"}, {"reports", list}}.dump();
}

void decodeAnyJSONValue(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    const JSONDecoder decoder;
    const auto again = JSONEncoder().encodeText(decoder.decode<AnyJSONValue>(text));
    require(nlohmann::json::parse(again) == nlohmann::json::parse(text));
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.decode<AnyJSONValue>(text));
    count(state, text.size());
}

void decodeJSONObject(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    const JSONDecoder decoder;
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.decode<JSONObject>(text));
    count(state, text.size());
}

void readSerialization(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(NSJSONSerialization::JSONObjectWithData(std::as_bytes(std::span(text))));
    count(state, text.size());
}

void decodeBoost(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(boost::json::parse(text));
    count(state, text.size());
}

void decodeNlohmann(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json::parse(text));
    count(state, text.size());
}

void encodeAnyJSONValue(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    const auto value = JSONDecoder().decode<AnyJSONValue>(text);
    const JSONEncoder encoder;
    for (auto _ : state)
        benchmark::DoNotOptimize(encoder.encodeText(value));
    count(state, text.size());
}

void encodeBoost(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    const auto value = boost::json::parse(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(boost::json::serialize(value));
    count(state, text.size());
}

void encodeNlohmann(benchmark::State& state)
{
    const auto text = reports(state.range(0));
    const auto value = nlohmann::json::parse(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(value.dump());
    count(state, text.size());
}

void copyAnyJSONValue(benchmark::State& state)
{
    const auto value = JSONDecoder().decode<AnyJSONValue>(reports(state.range(0)));
    for (auto _ : state) {
        auto copy = value;
        benchmark::DoNotOptimize(copy);
    }
}

// About 2 KB, 200 KB and 5 MB.
void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(7)->Arg(680)->Arg(17'000)->Unit(benchmark::kMicrosecond);
}
BENCHMARK(decodeAnyJSONValue)->Apply(sizes);
BENCHMARK(decodeJSONObject)->Apply(sizes);
BENCHMARK(readSerialization)->Apply(sizes);
BENCHMARK(decodeBoost)->Apply(sizes);
BENCHMARK(decodeNlohmann)->Apply(sizes);
BENCHMARK(encodeAnyJSONValue)->Apply(sizes);
BENCHMARK(encodeBoost)->Apply(sizes);
BENCHMARK(encodeNlohmann)->Apply(sizes);
BENCHMARK(copyAnyJSONValue)->Arg(680);

} // namespace
