/// @file
/// What it costs to read typed members out of a dictionary and to turn a value into one, beside what an
/// application would write by hand and beside a well-known library.

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"
#include "Orrenby/Standard/JSON/Encodable+JSON.hpp"
#include "Orrenby/Standard/JSON/JSONPointer.hpp"
#include "Orrenby/Standard/JSON/JSONReflection.hpp"
#include <benchmark/benchmark.h>
#include <map>
#include <nlohmann/json.hpp>
#include <variant>

using namespace orrenby;

namespace {

constexpr int memberCount = 20;

std::string keyAt(int index) { return "member-" + std::to_string(index); }

bool isNumber(int index) { return index % 2 == 0; }

Dictionary dictionary()
{
    Dictionary result;
    for (int index = 0; index < memberCount; ++index)
        result.set(keyAt(index), isNumber(index) ? Any(index) : Any("the text of " + keyAt(index)));
    return result;
}

/// What an application writes when it knows the kinds beforehand.
using Scalar = std::variant<std::int64_t, std::string>;

std::map<std::string, Scalar, std::less<>> mapOfScalars()
{
    std::map<std::string, Scalar, std::less<>> result;
    for (int index = 0; index < memberCount; ++index)
        result[keyAt(index)] = isNumber(index) ? Scalar(index) : Scalar("the text of " + keyAt(index));
    return result;
}

nlohmann::json peer()
{
    nlohmann::json result;
    for (int index = 0; index < memberCount; ++index) {
        if (isNumber(index))
            result[keyAt(index)] = index;
        else
            result[keyAt(index)] = "the text of " + keyAt(index);
    }
    return result;
}

/// Reads all members of one kind, so that near and far ones count alike.
template <class Read> void readAll(benchmark::State& state, bool numbers, Read read)
{
    std::vector<std::string> keys;
    for (int index = 0; index < memberCount; ++index)
        if (isNumber(index) == numbers)
            keys.push_back(keyAt(index));
    for (auto _ : state)
        for (const auto& key : keys)
            benchmark::DoNotOptimize(read(key));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(keys.size()));
}

void getInteger(benchmark::State& state)
{
    const auto members = dictionary();
    readAll(state, true, [&](const std::string& key) { return get<std::int64_t>(members, key); });
}
BENCHMARK(getInteger);

void getIntegerByVariant(benchmark::State& state)
{
    const auto members = mapOfScalars();
    readAll(state, true,
        [&](const std::string& key) { return std::get<std::int64_t>(members.find(key)->second); });
}
BENCHMARK(getIntegerByVariant);

void getIntegerByPeer(benchmark::State& state)
{
    const auto members = peer();
    readAll(state, true, [&](const std::string& key) { return members.at(key).get<std::int64_t>(); });
}
BENCHMARK(getIntegerByPeer);

void getText(benchmark::State& state)
{
    const auto members = dictionary();
    readAll(state, false, [&](const std::string& key) { return get<std::string>(members, key); });
}
BENCHMARK(getText);

void getTextByVariant(benchmark::State& state)
{
    const auto members = mapOfScalars();
    readAll(state, false,
        [&](const std::string& key) { return std::get<std::string>(members.find(key)->second); });
}
BENCHMARK(getTextByVariant);

void getTextByPeer(benchmark::State& state)
{
    const auto members = peer();
    readAll(state, false, [&](const std::string& key) { return members.at(key).get<std::string>(); });
}
BENCHMARK(getTextByPeer);

void getMissing(benchmark::State& state)
{
    const auto members = dictionary();
    for (auto _ : state)
        benchmark::DoNotOptimize(getOptional<std::int64_t>(members, "member-x"));
}
BENCHMARK(getMissing);

void tryGetOfAnotherType(benchmark::State& state)
{
    const auto members = dictionary();
    for (auto _ : state)
        benchmark::DoNotOptimize(tryGet<std::int64_t>(members, "member-1"));
}
BENCHMARK(tryGetOfAnotherType);

void getOfAnotherTypeThatThrows(benchmark::State& state)
{
    const auto members = dictionary();
    for (auto _ : state) {
        try {
            benchmark::DoNotOptimize(get<std::int64_t>(members, "member-1"));
        } catch (const JSONError& error) {
            benchmark::DoNotOptimize(error.kind());
        }
    }
}
BENCHMARK(getOfAnotherTypeThatThrows);

void readThroughPointer(benchmark::State& state)
{
    const auto tree = Dictionary{{"users", Array{1, Dictionary{{"name", "Ada"}, {"age", 36}}}}};
    const auto pointer = JSONPointer("/users/1/age");
    for (auto _ : state)
        benchmark::DoNotOptimize(pointer.get<std::int64_t>(tree));
}
BENCHMARK(readThroughPointer);

void readThroughPointerByPeer(benchmark::State& state)
{
    const auto tree = nlohmann::json{{"users", nlohmann::json::array({1, {{"name", "Ada"}, {"age", 36}}})}};
    const auto pointer = nlohmann::json::json_pointer("/users/1/age");
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.at(pointer).get<std::int64_t>());
}
BENCHMARK(readThroughPointerByPeer);

struct Reading : JSONSerializable {
    std::int64_t identifier = 7;
    std::string title = "Summit, east side";
    bool isUrgent = true;
    std::optional<std::string> note;
    std::vector<std::int64_t> scores = {1, 2, 3};
    double value = 0.5;
};

/// The same without the mark, so that it is encoded.
struct EncodedReading {
    std::int64_t identifier = 7;
    std::string title = "Summit, east side";
    bool isUrgent = true;
    std::optional<std::string> note;
    std::vector<std::int64_t> scores = {1, 2, 3};
    double value = 0.5;
};

Dictionary writtenByHand(const Reading& reading)
{
    Dictionary result = {{"identifier", reading.identifier}, {"title", reading.title},
        {"isUrgent", reading.isUrgent}, {"scores", reading.scores}, {"value", reading.value}};
    if (reading.note)
        result.set("note", *reading.note);
    return result;
}

void jsonOfStruct(benchmark::State& state)
{
    const Reading reading;
    for (auto _ : state)
        benchmark::DoNotOptimize(json(reading));
}
BENCHMARK(jsonOfStruct);

void jsonOfStructByHand(benchmark::State& state)
{
    const Reading reading;
    for (auto _ : state)
        benchmark::DoNotOptimize(writtenByHand(reading));
}
BENCHMARK(jsonOfStructByHand);

void jsonOfEncodable(benchmark::State& state)
{
    const EncodedReading reading;
    for (auto _ : state)
        benchmark::DoNotOptimize(json(reading));
}
BENCHMARK(jsonOfEncodable);

} // namespace
