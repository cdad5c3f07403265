#include "Orrenby/Utilities/SeededRandomNumberGenerator.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <vector>

using namespace orrenby;
using orrenby::testing::LogCapture;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Le;

namespace {

using Bounds = SeededRandomNumberBounds;
constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();

std::vector<std::uint64_t> draws(std::string_view seed, Bounds bounds, int count = 50)
{
    SeededRandomNumberGenerator generator(seed, bounds);
    std::vector<std::uint64_t> result;
    for (int draw = 0; draw < count; ++draw)
        result.push_back(generator.next());
    return result;
}

} // namespace

TEST(SeededRandomNumberGenerator, DrawsSampleData)
{
    //! [Drawing sample data]
    auto dice = SeededRandomNumberGenerator("orrenby", {.min = 1, .max = 6});

    EXPECT_EQ(dice.next(), 4U); // always, with this seed
    EXPECT_EQ(dice.next(), 3U);
    //! [Drawing sample data]
}

TEST(SeededRandomNumberGenerator, GivesEqualNumbersForEqualSeeds)
{
    EXPECT_EQ(draws("seed", {0, 1'000}), draws("seed", {0, 1'000}));
    EXPECT_THAT(draws("orrenby", {0, 99}, 8), ElementsAre(69, 38, 55, 51, 46, 82, 72, 74));
}

TEST(SeededRandomNumberGenerator, GivesOtherNumbersForASeedThatDiffersInOneCharacter)
{
    EXPECT_NE(draws("seed", {0, 1'000}), draws("seee", {0, 1'000}));
    EXPECT_NE(draws("seed", {0, 1'000}), draws("Seed", {0, 1'000}));
}

TEST(SeededRandomNumberGenerator, AcceptsTheEmptySeed)
{
    const auto numbers = draws("", {0, 1'000});

    EXPECT_EQ(numbers, draws("", {0, 1'000}));
    EXPECT_THAT(numbers, Each(Le(1'000U)));
    EXPECT_NE(numbers, draws("a", {0, 1'000}));
}

TEST(SeededRandomNumberGenerator, TakesTheSeedAsItsBytes)
{
    EXPECT_NE(draws("\xC3\xA9", {0, 1'000}), draws("e", {0, 1'000}));
    EXPECT_NE(draws(std::string_view("a\0", 2), {0, 1'000}), draws("a", {0, 1'000}));
}

TEST(SeededRandomNumberGenerator, GivesBothBoundsAndNothingBeyond)
{
    const auto numbers = draws("seed", {5, 8}, 200);

    EXPECT_THAT(numbers, Each(AllOf(Ge(5U), Le(8U))));
    for (const std::uint64_t number : {5U, 6U, 7U, 8U})
        EXPECT_THAT(numbers, Contains(number));
}

TEST(SeededRandomNumberGenerator, GivesTheOnlyNumberOfItsRange)
{
    EXPECT_THAT(draws("seed", {0, 0}), Each(0U));
    EXPECT_THAT(draws("seed", {largest, largest}), Each(static_cast<std::uint64_t>(largest)));
}

TEST(SeededRandomNumberGenerator, SharesItsSourceWithItsCopies)
{
    SeededRandomNumberGenerator one("orrenby", {0, 99});
    auto copy = one;

    EXPECT_EQ(one.next(), 69U);
    EXPECT_EQ(copy.next(), 38U);
    EXPECT_EQ(one.next(), 55U);
    EXPECT_EQ(one.source(), copy.source());
}

TEST(SeededRandomNumberGenerator, LogsNothingWithoutACorrection)
{
    const LogCapture log;

    SeededRandomNumberGenerator generator("seed", {3, 3});

    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(generator.min(), 3);
    EXPECT_EQ(generator.max(), 3);
}

TEST(SeededRandomNumberGenerator, CorrectsANegativeMinimum)
{
    const LogCapture log;

    const auto numbers = draws("seed", {-1, 10}, 300);

    EXPECT_THAT(numbers, Each(Le(10U)));
    EXPECT_THAT(numbers, AllOf(Contains(0U), Contains(10U)));
    EXPECT_THAT(log.messages(),
        ElementsAre("SeededRandomNumberGenerator only supports non-negative ranges - correcting min from -1 "
                    "to 0"));
    ASSERT_EQ(log.count(Log::Level::warning), 1U);
    const auto event = log.entries()[0].event;
    EXPECT_EQ(event.filename(), "SeededRandomNumberGenerator");
    EXPECT_EQ(event.line(), 28);
    EXPECT_EQ(event.function(), "init(_:min:max:)");
}

TEST(SeededRandomNumberGenerator, CorrectsAMaximumBelowTheMinimum)
{
    const LogCapture log;

    const auto numbers = draws("seed", {3, 1});

    EXPECT_THAT(numbers, Each(3U));
    EXPECT_THAT(log.messages(),
        ElementsAre("SeededRandomNumberGenerator min:3 is bigger than max:1 - resetting max to min"));
    ASSERT_EQ(log.count(Log::Level::warning), 1U);
    EXPECT_EQ(log.entries()[0].event.line(), 34);
    EXPECT_EQ(log.entries()[0].event.function(), "init(_:min:max:)");
}

TEST(SeededRandomNumberGenerator, WarnsOfANegativeMinimumFirstAndNamesTheBoundsAsTheyWereGiven)
{
    const LogCapture log;

    SeededRandomNumberGenerator generator("seed", {-5, -7});

    EXPECT_THAT(log.messages(),
        ElementsAre("SeededRandomNumberGenerator only supports non-negative ranges - correcting min from -5 "
                    "to 0",
            "SeededRandomNumberGenerator min:-5 is bigger than max:-7 - resetting max to min"));
}

TEST(SeededRandomNumberGenerator, ComparesTheMaximumWithTheMinimumAsItWasGiven)
{
    const LogCapture log;
    SeededRandomNumberGenerator above("seed", {-5, -2});
    EXPECT_EQ(above.min(), 0);
    EXPECT_EQ(above.max(), -2);
    EXPECT_EQ(log.count(), 1U);

    SeededRandomNumberGenerator below("seed", {-5, -7});
    EXPECT_EQ(below.min(), 0);
    EXPECT_EQ(below.max(), -5);
    EXPECT_EQ(log.count(), 3U);
}

TEST(SeededRandomNumberGenerator, GivesZeroForABoundOfZero)
{
    EXPECT_THAT(draws("seed", {-5, -1}), Each(0U));
}

TEST(SeededRandomNumberGeneratorDeathTest, TerminatesWhenTheRangeIsTooWide)
{
    const auto message = "Fatal error: Arithmetic operation overflowed: file "
                         "Utilities/SeededRandomNumberGenerator, line 45";

    EXPECT_DEATH(draws("seed", {0, largest}), message);
    EXPECT_DEATH(draws("seed", {smallest, largest}), message);
}

TEST(SeededRandomNumberGenerator, DrawsFromTheWidestRange)
{
    EXPECT_THAT(draws("seed", {1, largest}), Each(AllOf(Ge(1U), Le(static_cast<std::uint64_t>(largest)))));
}

TEST(SeededRandomNumberGeneratorDeathTest, TerminatesWhenADrawReadsAsNegative)
{
    // The bound wraps to 2^64 - 1, so that half of the draws do.
    EXPECT_DEATH(draws("seed", {-5, -2}),
        "Fatal error: Negative value is not representable: file Utilities/SeededRandomNumberGenerator, line "
        "46");
}
