// Sending and subscribing, by the blocks of memory that they take.

#include "Benchmarks/Support/Allocations.hpp"
#include "Tests/Support/StreamEngines.hpp"

using namespace orrenby;
using benchmarks::allocations;
using orrenby::testing::BothEngines;
using orrenby::testing::Trouble;

namespace {

using Numbers = Streams::PassthroughSubject<int, Trouble>;
using State = Streams::CurrentValueSubject<int, Trouble>;

/// How many blocks the function allocates.
template <class Function> std::int64_t blocksOf(Function function)
{
    const auto before = allocations();
    function();
    return (allocations() - before).blocks;
}

int doubled(int value) { return 2 * value; }

class AllocationContract : public BothEngines {};

TEST_P(AllocationContract, ASendAllocatesNothing)
{
    const auto numbers = Numbers();
    const auto state = State(0);
    auto sum = 0;
    const auto add = [&](const Streams::Payload<int, Trouble>& payload) {
        sum += payload.isValue() ? payload.get() : 0;
    };
    const auto first = numbers.asPublisher().sink(add);
    const auto second = numbers.asPublisher().map(doubled).sink(add);
    const auto third = state.asPublisher().map(doubled).sink(add);

    const auto blocks = blocksOf([&] {
        for (auto value = 1; value <= 100; ++value) {
            numbers.send(value);
            numbers.send(Trouble{value});
            state.send(value);
        }
    });

    EXPECT_EQ(blocks, 0);
    EXPECT_EQ(sum, 5050 + 10100 + 10100);
}

TEST_P(AllocationContract, ASubscriptionIsOneBlockHoweverManyHopsItHas)
{
    const auto numbers = Numbers();
    const auto plain = numbers.asPublisher();
    const auto mapped = plain.map(doubled).map(doubled).map(doubled);
    auto first = Streams::AnyCancellable();
    auto second = Streams::AnyCancellable();

    EXPECT_EQ(blocksOf([&] { first = plain.sink([](const auto&) {}); }), 1);
    EXPECT_EQ(blocksOf([&] { second = mapped.sink([](const auto&) {}); }), 1);
}

INSTANTIATE_ON_BOTH_ENGINES(AllocationContract);

} // namespace
