/// @file
/// What it costs to send along a responder chain: every responder up to the one that claims the message is
/// asked once.

#include "Benchmarks/Support/AllocationsPerTurn.hpp"
#include "Benchmarks/Support/ParkedThread.hpp"
#include "Orrenby/Utilities/Discover/ResponderChain.hpp"
#include <benchmark/benchmark.h>
#include <cstdint>

using namespace orrenby;
using benchmarks::measure;

namespace {

using Chain = ResponderChain<int>;

/// Sends to `range(0)` responders, of which the last claims.
void send(benchmark::State& state)
{
    auto chain = Chain();
    auto responders = std::vector<Ref<int>>();
    std::int64_t claimed = 0;
    for (int number = 1; number <= state.range(0); ++number) {
        responders.push_back(std::make_shared<int>(number));
        chain.addResponder(responders.back(), [&claimed, number](const int& message) -> Chain::Action {
            if (message != number)
                return nullptr;
            return [&claimed](const int&) { ++claimed; };
        });
    }
    const auto last = static_cast<int>(state.range(0));

    measure(state, [&] { benchmark::DoNotOptimize(chain.send(last)); });
    if (claimed == 0)
        state.SkipWithError("nobody claimed the message");
}
BENCHMARK(send)->ArgName("responders")->Arg(1)->Arg(10)->Arg(100);

} // namespace
