/// @file
/// What URLs cost: reading one, its parts, resolution, queries, beside a library for URLs. The peer keeps
/// views or an editable text; ours own their text.

#include "Orrenby/Platform/Net/QueryItems.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLComponents.hpp"
#include <benchmark/benchmark.h>
#include <boost/url/parse.hpp>
#include <boost/url/url.hpp>
#include <string>

using namespace orrenby;

namespace {

const std::string address = "https://api.example.com:8443/v2/herons/young%20ones/7.jpg?page=2&sort=name#top";
const std::string relative = "../../owls/./8.jpg?page=3";
const std::string query = "page=2&name=grey%20heron&tag=young&tag=caf%C3%A9&sorted";

void makeURL_ours(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(URL::make(address));
}
BENCHMARK(makeURL_ours);

void makeURL_boost(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(boost::urls::url(*boost::urls::parse_uri_reference(address)));
}
BENCHMARK(makeURL_boost);

void checkURL_boost(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(boost::urls::parse_uri_reference(address).has_value());
}
BENCHMARK(checkURL_boost);

void host_ours(benchmark::State& state)
{
    const auto url = *URL::make(address);
    for (auto _ : state)
        benchmark::DoNotOptimize(url.host());
}
BENCHMARK(host_ours);

void resolve_ours(benchmark::State& state)
{
    const auto base = *URL::make(address);
    for (auto _ : state)
        benchmark::DoNotOptimize(URL::make(relative, base));
}
BENCHMARK(resolve_ours);

void resolve_boost(benchmark::State& state)
{
    const auto base = *boost::urls::parse_uri_reference(address);
    for (auto _ : state) {
        boost::urls::url url;
        benchmark::DoNotOptimize(
            boost::urls::resolve(base, *boost::urls::parse_uri_reference(relative), url));
        benchmark::DoNotOptimize(url);
    }
}
BENCHMARK(resolve_boost);

void components_thereAndBack(benchmark::State& state)
{
    const auto url = *URL::make(address);
    for (auto _ : state)
        benchmark::DoNotOptimize(URLComponents(url).url());
}
BENCHMARK(components_thereAndBack);

void queryItems_read(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QueryItems::make(query));
}
BENCHMARK(queryItems_read);

void queryItems_readBoost(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<std::pair<std::string, std::string>> items;
        for (const auto item : boost::urls::params_view(query))
            items.emplace_back(item.key, item.value);
        benchmark::DoNotOptimize(items);
    }
}
BENCHMARK(queryItems_readBoost);

void queryItems_write(benchmark::State& state)
{
    const auto items = *QueryItems::make(query);
    for (auto _ : state)
        benchmark::DoNotOptimize(items.encoded());
}
BENCHMARK(queryItems_write);

} // namespace
