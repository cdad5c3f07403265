/// @file
/// What it costs to look for links, numbers and addresses, in prose and in texts made to be slow, and how
/// many of those in the corpus are found.

#include "Orrenby/Platform/Text/DataDetector.hpp"
#include "Tests/Support/DetectorCorpus.hpp"
#include <benchmark/benchmark.h>
#include <set>
#include <string>

using namespace orrenby;

namespace {

constexpr std::size_t size = 1'000'000;

std::string repeated(std::string_view unit)
{
    std::string result;
    while (result.size() < size)
        result += unit;
    return result;
}

void search(benchmark::State& state, std::string_view unit)
{
    const auto text = repeated(unit);
    std::size_t work = 0;
    for (auto _ : state) {
        DataDetector::Scan scan(DataDetector(DataKind::All), text);
        while (scan.next()) {}
        work = scan.work();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.counters["looks/byte"] = static_cast<double>(work) / static_cast<double>(text.size());
}
BENCHMARK_CAPTURE(search, prose,
    "The quick heron stood by the water, and nobody in the Village had seen it since March; then Anna took her "
    "notes (three pages) and walked home. Der Reiher stand im Wasser, w\u00E4hrend Frau M\u00FCller schrieb.\n");
BENCHMARK_CAPTURE(search, letters,
    "Dear Anna, please ring 0161 496 0123 or write to bob@example.com before 12 May; the place is 12 Lake Road, "
    "Dover, DE 19901, and the pictures are at https://example.com/heron_(young). Yours, Bob\n");
BENCHMARK_CAPTURE(search, dots, ".");
BENCHMARK_CAPTURE(search, at_signs, "a@");
BENCHMARK_CAPTURE(search, digits, "1 ");
BENCHMARK_CAPTURE(search, brackets, "http://a(");
BENCHMARK_CAPTURE(search, streets, "12 Main St, A A A A A A ");

/// Recall: how many of those that a reader finds are found. Precision: how many of those found are right.
void corpus(benchmark::State& state, std::string_view kind)
{
    double wanted = 0, found = 0, right = 0;
    for (const auto& line : orrenby::testing::detectorCorpus()) {
        std::multiset<std::string> there;
        for (const auto& finding : line.findings)
            if (finding.kind == kind && finding.mark != orrenby::testing::CorpusFinding::Mark::Wrong)
                there.insert(finding.description());
        wanted += static_cast<double>(there.size());
        for (const auto& finding : orrenby::testing::detectorFindings(line.text)) {
            if (finding.kind != kind)
                continue;
            found += 1;
            if (const auto place = there.find(finding.description()); place != there.end()) {
                there.erase(place);
                right += 1;
            }
        }
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(right);
    state.counters["there"] = wanted;
    state.counters["recall%"] = 100 * right / wanted;
    state.counters["precision%"] = 100 * right / found;
}
BENCHMARK_CAPTURE(corpus, link, "link")->Iterations(1);
BENCHMARK_CAPTURE(corpus, mail, "mail")->Iterations(1);
BENCHMARK_CAPTURE(corpus, phone, "phone")->Iterations(1);
BENCHMARK_CAPTURE(corpus, address, "address")->Iterations(1);

} // namespace
