#include "Orrenby/Utilities/Retry.hpp"

#include "Orrenby/Platform/World/RandomSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

using namespace orrenby;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();

std::vector<double> allIntervals(Retry& retry)
{
    std::vector<double> intervals;
    while (const auto interval = retry.nextInterval())
        intervals.push_back(*interval);
    return intervals;
}

/// Draws the largest number below every bound, and remembers the bounds.
class LargestSource final : public RandomSource {
public:
    std::uint32_t below(std::uint32_t bound) override
    {
        bounds.push_back(bound);
        return bound == 0 ? 0 : bound - 1;
    }
    std::uint64_t word() override { return 0; }

    std::vector<std::uint32_t> bounds;
};

World worldDrawingFrom(std::shared_ptr<RandomSource> source)
{
    auto world = World();
    world.setRandom(std::move(source));
    return world;
}

} // namespace

TEST(Retry, TellsHowLongToWaitUntilItWorks)
{
    //! [Retrying until it works]
    auto retry = Retry(0.5, 5, Retry::Exponential{2});
    int failuresLeft = 3;
    double waited = 0;

    while (failuresLeft-- > 0) {
        const auto delay = retry.nextInterval();
        if (!delay)
            break;
        waited += *delay; // here an application sets its timer
    }

    EXPECT_EQ(waited, 0.5 + 1 + 2);
    //! [Retrying until it works]
}

TEST(Retry, GrowsExponentially)
{
    auto retry = Retry(2, 3, Retry::Exponential{2});

    EXPECT_THAT(allIntervals(retry), ElementsAre(2.0, 4.0, 8.0));
}

TEST(Retry, GrowsByAFractionalBase)
{
    auto retry = Retry(1, 3, Retry::Exponential{1.5});

    EXPECT_THAT(allIntervals(retry), ElementsAre(1.0, 1.5, 2.25));
}

TEST(Retry, GrowsLinearly)
{
    auto retry = Retry(2, 3, Retry::Linear());

    EXPECT_THAT(allIntervals(retry), ElementsAre(2.0, 4.0, 6.0));
}

TEST(Retry, GivesNothingOnceTheLimitIsReached)
{
    auto retry = Retry(2, 3, Retry::Exponential{2});

    EXPECT_THAT(allIntervals(retry), ElementsAre(2.0, 4.0, 8.0));
    EXPECT_EQ(retry.nextInterval(), std::nullopt);
    EXPECT_EQ(retry.count(), 5);
}

TEST(Retry, GivesNothingAtAllWithLimitZero)
{
    auto retry = Retry(2, 0, Retry::Linear());

    EXPECT_EQ(retry.nextInterval(), std::nullopt);
    EXPECT_EQ(retry.count(), 1);
}

TEST(Retry, GivesNothingAtAllWithANegativeLimit)
{
    auto retry = Retry(2, -1, Retry::Linear());

    EXPECT_THAT(allIntervals(retry), IsEmpty());
}

TEST(Retry, GivesOneDelayWithLimitOne)
{
    auto retry = Retry(2, 1, Retry::Linear());

    EXPECT_THAT(allIntervals(retry), ElementsAre(2.0));
}

TEST(Retry, StartsAgainWhenTheCountIsSetToZero)
{
    auto retry = Retry(2, 2, Retry::Exponential{3});
    ASSERT_THAT(allIntervals(retry), ElementsAre(2.0, 6.0));

    retry.setCount(0);

    EXPECT_EQ(retry.count(), 0);
    EXPECT_THAT(allIntervals(retry), ElementsAre(2.0, 6.0));
}

TEST(Retry, ContinuesFromTheCountThatIsSet)
{
    auto retry = Retry(1, 12, Retry::Exponential{2});

    retry.setCount(10);

    EXPECT_THAT(allIntervals(retry), ElementsAre(1024.0, 2048.0));
}

TEST(Retry, FollowsItsFormulasBelowTheFirstAttempt)
{
    auto exponential = Retry(8, 0, Retry::Exponential{2});
    auto linear = Retry(8, 0, Retry::Linear());
    auto jitter = Retry(8, 0, Retry::ExponentialJitter());
    for (auto* const retry : {&exponential, &linear, &jitter})
        retry->setCount(-2);

    EXPECT_THAT(allIntervals(exponential), ElementsAre(2.0, 4.0));
    EXPECT_THAT(allIntervals(linear), ElementsAre(-8.0, 0.0));
    EXPECT_THAT(allIntervals(jitter), ElementsAre(0.0, 0.0));
}

TEST(Retry, CountsFromTheSmallestNumber)
{
    auto retry = Retry(1, 0, Retry::Linear());

    retry.setCount(smallest);

    EXPECT_EQ(retry.nextInterval(), static_cast<double>(smallest + 1));
}

TEST(Retry, DrawsJitterBelowPowersOfTwo)
{
    const auto source = std::make_shared<LargestSource>();
    const auto world = World::Override(worldDrawingFrom(source));
    auto retry = Retry(2, 4, Retry::ExponentialJitter());

    EXPECT_THAT(allIntervals(retry), ElementsAre(0.0, 2.0, 6.0, 14.0));
    EXPECT_THAT(source->bounds, ElementsAre(1u, 2u, 4u, 8u));
}

TEST(Retry, DrawsJitterFromThePlatformsSource)
{
    for (int round = 0; round < 100; ++round) {
        auto retry = Retry(2, 3, Retry::ExponentialJitter());

        EXPECT_THAT(allIntervals(retry), ElementsAre(0.0, AnyOf(0.0, 2.0), AnyOf(0.0, 2.0, 4.0, 6.0)));
    }
}

TEST(Retry, DrawsTheLargestJitterBoundThatFits)
{
    const auto source = std::make_shared<LargestSource>();
    const auto world = World::Override(worldDrawingFrom(source));
    auto retry = Retry(1, 32, Retry::ExponentialJitter());

    retry.setCount(31);

    EXPECT_EQ(retry.nextInterval(), 2'147'483'647.0);
    EXPECT_THAT(source->bounds, ElementsAre(2'147'483'648u));
}

TEST(RetryDeathTest, EndsTheProcessWhenTheJitterBoundDoesNotFit)
{
    for (const std::int64_t count : {std::int64_t{32}, std::int64_t{2'000}, largest - 1}) {
        auto retry = Retry(1, largest, Retry::ExponentialJitter());
        retry.setCount(count);

        EXPECT_DEATH((void)retry.nextInterval(),
            "^Fatal error: Jitter bound does not fit in 32 bits: file Utilities/Retry\n$");
    }
}

TEST(Retry, GivesNothingRatherThanAJitterThatDoesNotFit)
{
    auto retry = Retry(1, 32, Retry::ExponentialJitter());

    retry.setCount(32);

    EXPECT_EQ(retry.nextInterval(), std::nullopt);
}

TEST(RetryDeathTest, EndsTheProcessWhenTheCountOverflows)
{
    auto retry = Retry(1, largest, Retry::Linear());
    retry.setCount(largest);

    EXPECT_DEATH(
        (void)retry.nextInterval(), "^Fatal error: Count of attempts overflows: file Utilities/Retry\n$");
}

TEST(Retry, CountsUpToTheLargestNumber)
{
    auto retry = Retry(0, largest, Retry::Linear());
    retry.setCount(largest - 1);

    EXPECT_EQ(retry.nextInterval(), 0.0);
    EXPECT_EQ(retry.count(), largest);
}

TEST(Retry, GrowsBeyondAllBoundsWithoutFailing)
{
    auto retry = Retry(1, largest, Retry::Exponential{2});
    retry.setCount(5'000);

    EXPECT_EQ(retry.nextInterval(), std::numeric_limits<double>::infinity());
}

TEST(Retry, GivesZeroForAnIntervalOfZero)
{
    auto retry = Retry(0, 3, Retry::Exponential{2});

    EXPECT_THAT(allIntervals(retry), Each(0.0));
}

TEST(Retry, IsNotCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Retry>);
    EXPECT_FALSE(std::is_copy_assignable_v<Retry>);
}

TEST(RetryMethod, ComparesByCaseAndBase)
{
    EXPECT_EQ(Retry::Method(Retry::Exponential{1.5}), Retry::Method(Retry::Exponential{1.5}));
    EXPECT_NE(Retry::Method(Retry::Exponential{1.5}), Retry::Method(Retry::Exponential()));
    EXPECT_NE(Retry::Method(Retry::Linear()), Retry::Method(Retry::ExponentialJitter()));
}
