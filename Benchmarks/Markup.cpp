/// @file
/// What texts with attributes cost: made out of brackets, beside the regular expression alone on the whole
/// text, which is quadratic where brackets are never closed; put together; written as HTML and for terminals.

#include "Orrenby/Foundation/NSAttributedString.hpp"
#include "Orrenby/Platform/Text/ANSIText.hpp"
#include "Orrenby/Platform/Text/HTMLText.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include "Orrenby/Platform/Text/RegularExpression.hpp"
#include <benchmark/benchmark.h>
#include <string>

using namespace orrenby;

namespace {

const TextAttributes normal{{TextAttribute::font, Font::system(17)}};
const TextAttributes strong{{TextAttribute::font, Font::boldSystem(17)}};

/// Sentences, each with one piece of markup, until the text is so long.
std::string sentences(std::int64_t length, std::string_view sentence)
{
    std::string text;
    while (text.size() < static_cast<std::size_t>(length))
        text += sentence;
    return text;
}

constexpr std::string_view emphasis = "Keep to the [marked paths] and close every gate behind you.\n";
constexpr std::string_view links = "Read [the rules](https://hut.example/rules) and close the gates.\n";
constexpr std::string_view mixed = "Höhe & Länge <5 m>: siehe [Karte](https://hut.example/map)!\n";

void emphasised(benchmark::State& state)
{
    const auto text = sentences(state.range(0), emphasis);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            makeAttributedString(text, {.normalAttributes = normal, .markdownAttributes = strong}));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(emphasised)->Arg(60)->Arg(6'000)->Arg(600'000);

/// The engine's part of the same work: nothing is made of what it finds.
void emphasis_engineAlone(benchmark::State& state)
{
    const auto text = sentences(state.range(0), emphasis);
    const RegularExpression expression(R"(\[(.*?)\])", {.timeLimit = 0});
    for (auto _ : state)
        benchmark::DoNotOptimize(expression.allMatches(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(emphasis_engineAlone)->Arg(60)->Arg(6'000)->Arg(600'000);

void linked(benchmark::State& state)
{
    const auto text = sentences(state.range(0), links);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            makeAttributedString(text, {.normalAttributes = normal, .linkAttributes = strong}));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(linked)->Arg(60)->Arg(6'000)->Arg(600'000);

void neverClosed(benchmark::State& state)
{
    const std::string text(static_cast<std::size_t>(state.range(0)), '[');
    for (auto _ : state)
        benchmark::DoNotOptimize(
            makeAttributedString(text, {.normalAttributes = normal, .markdownAttributes = strong}));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(neverClosed)->Arg(1'000)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond)->Complexity();

/// With 100,000 it takes a hundred times as long as with 10,000.
void neverClosed_engineAlone(benchmark::State& state)
{
    const std::string text(static_cast<std::size_t>(state.range(0)), '[');
    const RegularExpression expression(R"(\[(.*?)\])", {.timeLimit = 0});
    for (auto _ : state)
        benchmark::DoNotOptimize(expression.allMatches(text));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(neverClosed_engineAlone)
    ->Arg(1'000)
    ->Arg(3'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity();

NSAttributedString rendered(std::int64_t length)
{
    return makeAttributedString(
        sentences(length, mixed), {.normalAttributes = normal, .linkAttributes = strong})
        .value_or(NSAttributedString());
}

void html(benchmark::State& state)
{
    const auto text = rendered(60'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(htmlText(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.string().size()));
}
BENCHMARK(html);

void ansi(benchmark::State& state)
{
    const auto text = rendered(60'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(ansiText(text, {.hasLinks = true}));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.string().size()));
}
BENCHMARK(ansi);

void appended(benchmark::State& state)
{
    for (auto _ : state) {
        NSMutableAttributedString text;
        for (int piece = 0; piece < 100; ++piece)
            text.append("twenty bytes of text", piece % 2 == 0 ? normal : strong);
        benchmark::DoNotOptimize(std::move(text).attributedString());
    }
    state.SetItemsProcessed(state.iterations() * 100);
}
BENCHMARK(appended);

/// A part of one stretch in the middle, of ASCII and not.
void substring(benchmark::State& state)
{
    const NSAttributedString text(sentences(state.range(0), state.range(1) == 0 ? emphasis : mixed));
    const NSRange range{.location = text.length() / 2, .length = 20};
    for (auto _ : state)
        benchmark::DoNotOptimize(text.substring(range));
}
BENCHMARK(substring)->ArgsProduct({{600, 60'000}, {0, 1}});

} // namespace
