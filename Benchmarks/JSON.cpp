// JSON between text and structs, beside two well-known libraries that go through a tree of values.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/Require.hpp"
#include "Benchmarks/Support/TextBytes.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <map>
#include <nlohmann/json.hpp>
#include <random>

namespace service {

struct Place {
    double latitude = 0;
    double longitude = 0;
    std::string name;

    friend bool operator==(const Place&, const Place&) = default;
};

struct Report {
    std::int64_t identifier = 0;
    std::string title;
    std::string author;
    bool isUrgent = false;
    std::optional<std::string> note;
    std::vector<std::string> tags;
    Place place;
    double score = 0;
    std::int64_t createdAt = 0;

    friend bool operator==(const Report&, const Report&) = default;
};

struct Response {
    std::string version;
    std::vector<Report> reports;
    std::map<std::string, std::int64_t> counts;

    friend bool operator==(const Response&, const Response&) = default;
};

// What the peers need to be told.

void to_json(nlohmann::json& json, const Place& place)
{
    json = {{"latitude", place.latitude}, {"longitude", place.longitude}, {"name", place.name}};
}
void from_json(const nlohmann::json& json, Place& place)
{
    json.at("latitude").get_to(place.latitude);
    json.at("longitude").get_to(place.longitude);
    json.at("name").get_to(place.name);
}
void to_json(nlohmann::json& json, const Report& report)
{
    json = {{"identifier", report.identifier}, {"title", report.title}, {"author", report.author},
        {"isUrgent", report.isUrgent}, {"tags", report.tags}, {"place", report.place},
        {"score", report.score}, {"createdAt", report.createdAt}};
    if (report.note)
        json["note"] = *report.note;
}
void from_json(const nlohmann::json& json, Report& report)
{
    json.at("identifier").get_to(report.identifier);
    json.at("title").get_to(report.title);
    json.at("author").get_to(report.author);
    json.at("isUrgent").get_to(report.isUrgent);
    if (const auto note = json.find("note"); note != json.end() && !note->is_null())
        report.note = note->get<std::string>();
    json.at("tags").get_to(report.tags);
    json.at("place").get_to(report.place);
    json.at("score").get_to(report.score);
    json.at("createdAt").get_to(report.createdAt);
}
void to_json(nlohmann::json& json, const Response& response)
{
    json = {{"version", response.version}, {"reports", response.reports}, {"counts", response.counts}};
}
void from_json(const nlohmann::json& json, Response& response)
{
    json.at("version").get_to(response.version);
    json.at("reports").get_to(response.reports);
    json.at("counts").get_to(response.counts);
}

template <class T> T member(const boost::json::object& object, const char* key)
{
    return boost::json::value_to<T>(object.at(key));
}
Place tag_invoke(boost::json::value_to_tag<Place>, const boost::json::value& value)
{
    const auto& object = value.as_object();
    return {member<double>(object, "latitude"), member<double>(object, "longitude"),
        member<std::string>(object, "name")};
}
Report tag_invoke(boost::json::value_to_tag<Report>, const boost::json::value& value)
{
    const auto& object = value.as_object();
    std::optional<std::string> note;
    if (const auto* present = object.if_contains("note"); present != nullptr && !present->is_null())
        note = boost::json::value_to<std::string>(*present);
    return {member<std::int64_t>(object, "identifier"), member<std::string>(object, "title"),
        member<std::string>(object, "author"), member<bool>(object, "isUrgent"), std::move(note),
        member<std::vector<std::string>>(object, "tags"), member<Place>(object, "place"),
        member<double>(object, "score"), member<std::int64_t>(object, "createdAt")};
}
Response tag_invoke(boost::json::value_to_tag<Response>, const boost::json::value& value)
{
    const auto& object = value.as_object();
    return {member<std::string>(object, "version"), member<std::vector<Report>>(object, "reports"),
        member<std::map<std::string, std::int64_t>>(object, "counts")};
}
void tag_invoke(boost::json::value_from_tag, boost::json::value& value, const Place& place)
{
    value = {{"latitude", place.latitude}, {"longitude", place.longitude}, {"name", place.name}};
}
void tag_invoke(boost::json::value_from_tag, boost::json::value& value, const Report& report)
{
    auto& object = value.emplace_object();
    object.reserve(9);
    object.emplace("identifier", report.identifier);
    object.emplace("title", report.title);
    object.emplace("author", report.author);
    object.emplace("isUrgent", report.isUrgent);
    if (report.note)
        object.emplace("note", *report.note);
    object.emplace("tags", boost::json::value_from(report.tags, value.storage()));
    object.emplace("place", boost::json::value_from(report.place, value.storage()));
    object.emplace("score", report.score);
    object.emplace("createdAt", report.createdAt);
}
void tag_invoke(boost::json::value_from_tag, boost::json::value& value, const Response& response)
{
    auto& object = value.emplace_object();
    object.emplace("version", response.version);
    object.emplace("reports", boost::json::value_from(response.reports, value.storage()));
    object.emplace("counts", boost::json::value_from(response.counts, value.storage()));
}

} // namespace service

namespace {

using namespace orrenby;
using benchmarks::AllocationsPerTurn;
using benchmarks::count;
using benchmarks::require;

/// Reports with escapes, text of several scripts, nested objects, optional members and numbers of every kind.
service::Response response(std::int64_t reports)
{
    static const char* const words[] = {"river", "gauge", "Brücke", "水位", "line\nbreak", "\"quoted\"",
        "station", "north", "level", "rising", "since", "yesterday", "the", "bank", "near", "old", "mill",
        "is", "under", "water", "again", "and", "will", "be", "closed", "until", "further", "notice", "for",
        "boats"};
    std::mt19937 engine(5);
    const auto word = [&] { return std::string(words[engine() % std::size(words)]); };
    const auto text = [&](unsigned count) {
        std::string result;
        for (; count > 0; --count)
            result += word() + " ";
        return result;
    };
    const auto decimal = [&](double scale) { return static_cast<double>(engine() % 1'000'000) / scale; };

    service::Response result{"2.4.1", {}, {{"open", 12}, {"closed", 341}, {"draft", 0}}};
    for (std::int64_t number = 0; number < reports; ++number)
        result.reports.push_back({4'000'000'000 + number, text(4), text(2), number % 3 == 0,
            number % 2 == 0 ? std::optional(text(6)) : std::nullopt, {word(), word()},
            {decimal(1e4), -decimal(1e4), text(2)}, number % 4 == 0 ? decimal(1e6) / 3 : decimal(100),
            1'700'000'000'000 + number});
    return result;
}

/// Members in the order of the structs, which is the order in which services send them.
std::string textOf(const service::Response& response) { return JSONEncoder().encodeText(response); }

void decodeOrrenby(benchmark::State& state)
{
    const auto expected = response(state.range(0));
    const auto text = textOf(expected);
    const JSONDecoder decoder;
    require(decoder.decode<service::Response>(text) == expected);
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state)
            benchmark::DoNotOptimize(decoder.decode<service::Response>(text));
    }
    count(state, text.size());
    state.counters["tree bytes per text byte"] = static_cast<double>(JSONDocument(text).byteCount())
        / static_cast<double>(text.size());
}

void decodeOrrenbyFromSortedKeys(benchmark::State& state)
{
    const auto text = nlohmann::json(response(state.range(0))).dump();
    const JSONDecoder decoder;
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.decode<service::Response>(text));
    count(state, text.size());
}

void decodeBoost(benchmark::State& state)
{
    const auto text = textOf(response(state.range(0)));
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state)
            benchmark::DoNotOptimize(boost::json::value_to<service::Response>(boost::json::parse(text)));
    }
    count(state, text.size());
}

void decodeNlohmann(benchmark::State& state)
{
    const auto expected = response(state.range(0));
    const auto text = textOf(expected);
    require(nlohmann::json::parse(text).get<service::Response>() == expected);
    {
        const auto counting = AllocationsPerTurn(state);
        for (auto _ : state)
            benchmark::DoNotOptimize(nlohmann::json::parse(text).get<service::Response>());
    }
    count(state, text.size());
}

void readOrrenby(benchmark::State& state)
{
    const auto text = textOf(response(state.range(0)));
    for (auto _ : state) {
        const JSONDocument document(text);
        benchmark::DoNotOptimize(document.nodeCount());
    }
    count(state, text.size());
}

void encodeOrrenby(benchmark::State& state)
{
    const auto value = response(state.range(0));
    const JSONEncoder encoder;
    const auto text = encoder.encodeText(value);
    require(nlohmann::json::parse(text).get<service::Response>() == value);
    for (auto _ : state)
        benchmark::DoNotOptimize(encoder.encodeText(value));
    count(state, text.size());
}

void encodeBoost(benchmark::State& state)
{
    const auto value = response(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(boost::json::serialize(boost::json::value_from(value)));
    count(state, boost::json::serialize(boost::json::value_from(value)).size());
}

void encodeNlohmann(benchmark::State& state)
{
    const auto value = response(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json(value).dump());
    count(state, textOf(value).size());
}

using Numbers = std::map<std::string, std::int64_t>;

std::string wideText(std::int64_t members)
{
    Numbers numbers;
    for (std::int64_t number = 0; number < members; ++number)
        numbers["member number " + std::to_string(number)] = number;
    return nlohmann::json(numbers).dump();
}

void decodeWideByKey(benchmark::State& state)
{
    // Each member is asked for, in an order that is not that of the text.
    const auto members = state.range(0);
    const auto text = wideText(members);
    for (auto _ : state) {
        const JSONDocument document(text);
        for (std::int64_t number = 0; number < members; ++number)
            benchmark::DoNotOptimize(
                document.find(0, "member number " + std::to_string(number * 7'919 % members)));
    }
    state.SetComplexityN(members);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * members);
}

// About 2 KB, 200 KB and 5 MB.
void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(7)->Arg(720)->Arg(18'000)->Unit(benchmark::kMicrosecond);
}
BENCHMARK(decodeOrrenby)->Apply(sizes);
BENCHMARK(decodeOrrenbyFromSortedKeys)->Apply(sizes);
BENCHMARK(decodeBoost)->Apply(sizes);
BENCHMARK(decodeNlohmann)->Apply(sizes);
BENCHMARK(readOrrenby)->Apply(sizes);
BENCHMARK(encodeOrrenby)->Apply(sizes);
BENCHMARK(encodeBoost)->Apply(sizes);
BENCHMARK(encodeNlohmann)->Apply(sizes);
BENCHMARK(decodeWideByKey)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

} // namespace
