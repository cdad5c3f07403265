/// @file
/// What it costs to hand a response to eight services, beside decoding the same text into one struct that
/// has a field for each; and what a report costs, on a response that is good and on one that is not.

#include "Orrenby/Utilities/ServiceDecoder.hpp"
#include "Benchmarks/Support/TextBytes.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include <benchmark/benchmark.h>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;
using benchmarks::count;

namespace {

struct Report {
    std::int64_t identifier = 0;
    std::string title;
    std::string author;
    bool isUrgent = false;
    std::optional<std::string> note;
    std::vector<std::string> tags;
    double score = 0;
};
using Reports = std::vector<Report>;

/// All services' members as one type.
struct Response {
    Reports first, second, third, fourth, fifth, sixth, seventh, eighth;
};
constexpr const char* keys[] = {"first", "second", "third", "fourth", "fifth", "sixth", "seventh", "eighth"};

Reports reports(std::int64_t count)
{
    Reports result;
    for (std::int64_t number = 0; number < count; ++number)
        result.push_back({4'000'000'000 + number, "Water level at the old mill, \"north\" gauge",
            "Ann Example", number % 3 == 0,
            number % 2 == 0 ? std::optional<std::string>("Brücke closed\nuntil further notice")
                            : std::nullopt,
            {"river", "gauge"}, static_cast<double>(number) / 7});
    return result;
}

/// About 200 KB.
std::string goodText()
{
    const auto some = reports(125);
    return JSONEncoder().encodeText(Response{some, some, some, some, some, some, some, some});
}

/// A wrong value in every hundredth report.
std::string badText()
{
    auto text = goodText();
    std::size_t number = 0;
    for (auto place = text.find("isUrgent\":"); place != std::string::npos;
         place = text.find("isUrgent\":", place + 1))
        if (number++ % 100 == 0)
            text.replace(place + 10, text.find(',', place) - place - 10, "1234");
    return text;
}

void registerAll(ServiceDecoder& services, std::size_t& received)
{
    for (const auto* key : keys)
        services.register_(key, [&received](Reports reports) { received += reports.size(); });
}

void decodeOneStruct(benchmark::State& state)
{
    const auto text = goodText();
    const JSONDecoder decoder;
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.decode<Response>(text));
    count(state, text.size());
}
BENCHMARK(decodeOneStruct)->Unit(benchmark::kMicrosecond);

void decodeEightServices(benchmark::State& state)
{
    const auto text = goodText();
    std::size_t received = 0;
    ServiceDecoder services;
    registerAll(services, received);
    for (auto _ : state)
        services.decode(text);
    if (received != static_cast<std::size_t>(state.iterations()) * 1'000)
        throw std::logic_error("a member did not arrive");
    count(state, text.size());
}
BENCHMARK(decodeEightServices)->Unit(benchmark::kMicrosecond);

void reportOnGoodResponse(benchmark::State& state)
{
    const auto text = goodText();
    std::size_t received = 0;
    ServiceDecoder services;
    registerAll(services, received);
    for (auto _ : state)
        if (!decodeReport(services, text).isEmpty())
            throw std::logic_error("nothing is wrong");
    count(state, text.size());
}
BENCHMARK(reportOnGoodResponse)->Unit(benchmark::kMicrosecond);

void reportOnBadResponse(benchmark::State& state)
{
    const auto text = badText();
    std::size_t received = 0;
    ServiceDecoder services;
    registerAll(services, received);
    std::size_t failures = 0;
    for (auto _ : state) {
        failures = decodeReport(services, text).failures.size();
        benchmark::DoNotOptimize(failures);
    }
    state.counters["failures"] = static_cast<double>(failures);
    count(state, text.size());
}
BENCHMARK(reportOnBadResponse)->Unit(benchmark::kMicrosecond);

/// Responses of one small member: what a call costs besides.
void decodeOneNumber(benchmark::State& state)
{
    const JSONDecoder decoder;
    struct Number {
        int a = 0;
    };
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.decode<Number>(R"({"a":1})"));
}
BENCHMARK(decodeOneNumber);

void serveOneNumber(benchmark::State& state)
{
    int sum = 0;
    ServiceDecoder services;
    services.register_("a", [&](int value) { sum += value; });
    for (auto _ : state)
        services.decode(R"({"a":1})");
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(serveOneNumber);

} // namespace
