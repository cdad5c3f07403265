#include "Orrenby/Platform/World/RandomSource.hpp"

#include <gmock/gmock.h>
#include <limits>
#include <set>

using namespace orrenby;
using testing::ElementsAre;

namespace {

std::set<std::uint32_t> draws(std::uint32_t bound, int count)
{
    std::set<std::uint32_t> drawn;
    for (int round = 0; round < count; ++round)
        drawn.insert(RandomSource::system()->below(bound));
    return drawn;
}

} // namespace

TEST(SystemRandomSource, DrawsZeroWhenNothingElseIsBelowTheBound)
{
    EXPECT_THAT(draws(0, 10), ElementsAre(0u));
    EXPECT_THAT(draws(1, 10), ElementsAre(0u));
}

TEST(SystemRandomSource, DrawsEveryNumberBelowTheBound)
{
    EXPECT_THAT(draws(3, 1'000), ElementsAre(0u, 1u, 2u));
}

TEST(SystemRandomSource, DrawsBelowTheLargestBound)
{
    constexpr auto bound = std::numeric_limits<std::uint32_t>::max();

    EXPECT_LT(*draws(bound, 100).rbegin(), bound);
}

TEST(SystemRandomSource, SetsEveryBitOfAWordAtTimes)
{
    std::uint64_t everSet = 0;
    std::uint64_t everClear = 0;

    for (int round = 0; round < 200; ++round) {
        const auto word = RandomSource::system()->word();
        everSet |= word;
        everClear |= ~word;
    }

    EXPECT_EQ(everSet, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(everClear, std::numeric_limits<std::uint64_t>::max());
}
