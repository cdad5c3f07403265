#include "Orrenby/Utilities/OrderedSetPositions.hpp"

#include <gmock/gmock.h>
#include <string>
#include <unordered_set>

using namespace orrenby;
using detail::OrderedSetPositions;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr auto always = [](std::size_t) { return true; };

std::size_t find(const OrderedSetPositions& positions, std::uint32_t hash, std::size_t wanted)
{
    return positions.find(hash, [=](std::size_t position) { return position == wanted; });
}

} // namespace

TEST(OrderedSetPositions, FindNothingWhileEmpty)
{
    OrderedSetPositions positions;

    positions.erase(0, always);
    positions.shift(0, 1);

    EXPECT_EQ(positions.find(0, always), OrderedSetPositions::notFound);
    EXPECT_EQ(positions.count(), 0U);
}

TEST(OrderedSetPositions, CloseTheGapBehindWhatStandsAcrossTheEnd)
{
    OrderedSetPositions positions;
    positions.reserve(4); // 16 places: the third of these wraps around to the first
    for (const std::size_t position : {0U, 1U, 2U, 3U})
        positions.findOrInsert(14U << 28U, position, [](std::size_t) { return false; });

    positions.erase(14U << 28U, [](std::size_t position) { return position == 0; });

    EXPECT_EQ(positions.count(), 3U);
    EXPECT_EQ(find(positions, 14U << 28U, 0), OrderedSetPositions::notFound);
    EXPECT_EQ(find(positions, 14U << 28U, 1), 1U);
    EXPECT_EQ(find(positions, 14U << 28U, 2), 2U);
    EXPECT_EQ(find(positions, 14U << 28U, 3), 3U);
}

TEST(OrderedSetPositions, ShiftFromAPositionOn)
{
    OrderedSetPositions positions;
    positions.reserve(3);
    for (const std::uint32_t position : {0U, 1U, 2U})
        positions.findOrInsert(position, position, [](std::size_t) { return false; });

    positions.shift(1, 1);

    EXPECT_EQ(positions.find(0, always), 0U);
    EXPECT_EQ(positions.find(1, always), 2U);
    EXPECT_EQ(positions.find(2, always), 3U);
}

TEST(OrderedSetPositions, AreEmptyAfterTheyWereMovedFrom)
{
    OrderedSetPositions positions;
    positions.reserve(1);
    positions.findOrInsert(5, 0, always);

    const auto taken = std::move(positions);

    EXPECT_EQ(taken.count(), 1U);
    EXPECT_EQ(positions.count(), 0U); // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(positions.find(5, always), OrderedSetPositions::notFound);
}

TEST(OrderedSetPositions, AreKeptThroughEveryGrowth)
{
    constexpr std::size_t count
        = 100'000; // from tables a quarter full, with 28 bits of a hash in each slot, to half full with 14
    OrderedSetPositions positions;
    for (std::size_t position = 0; position < count; ++position) {
        positions.reserve(position + 1);
        positions.findOrInsert(
            OrderedSetPositions::mix(position), position, [](std::size_t) { return false; });
    }

    const auto copy = positions;
    positions.clear();

    EXPECT_EQ(copy.count(), count);
    for (std::size_t position = 0; position < count; ++position)
        ASSERT_EQ(find(copy, OrderedSetPositions::mix(position), position), position);
    EXPECT_EQ(copy.find(OrderedSetPositions::mix(count), always), OrderedSetPositions::notFound);
    EXPECT_EQ(positions.find(OrderedSetPositions::mix(0), always), OrderedSetPositions::notFound);
}

TEST(OrderedSetPositions, CanBeCopiedWhileEmpty)
{
    const OrderedSetPositions empty;
    OrderedSetPositions positions = empty;

    positions.reserve(1);
    positions.findOrInsert(5, 0, always);

    EXPECT_EQ(positions.find(5, always), 0U);
    EXPECT_EQ(empty.find(5, always), OrderedSetPositions::notFound);
}

TEST(OrderedSetPositions, SpreadNumbersThatDifferInHighBitsOnly)
{
    std::unordered_set<std::uint32_t> places;
    for (std::size_t number = 0; number < 256; ++number)
        places.insert(OrderedSetPositions::mix(number << 56U) >> 22U);

    EXPECT_GT(places.size(), 200U);
}

TEST(OrderedSetPositionsDeathTest, TerminateBeforePositionsAreTooMany)
{
    OrderedSetPositions positions;

    EXPECT_DEATH(positions.reserve(std::size_t{1} << 31U),
        "Fatal error: The ordered set has too many members: file Utilities/OrderedSet, line 52");
}

TEST(HashText, TellsTextsOfEveryLengthApart)
{
    std::unordered_set<std::size_t> hashes;
    std::size_t texts = 0;
    for (std::size_t length = 0; length < 70; ++length)
        for (std::size_t changed = 0; changed <= length; ++changed) {
            auto text = std::string(length, '\0');
            if (changed < length)
                text[changed] = 'x';
            hashes.insert(detail::hashText(text));
            ++texts;
        }

    EXPECT_EQ(hashes.size(), texts);
}

TEST(HashText, SeesTheTextAlone)
{
    const std::string text = "some text and more";
    const std::string elsewhere = "xx" + text + "yy";

    EXPECT_EQ(detail::hashText(text), detail::hashText(std::string_view(elsewhere).substr(2, text.size())));
}

TEST(LongestAscent, MarksALongestSelection)
{
    EXPECT_THAT(detail::longestAscent({}), IsEmpty());
    EXPECT_THAT(detail::longestAscent({5}), ElementsAre(true));
    EXPECT_THAT(detail::longestAscent({3, 0, 1, 2}), ElementsAre(false, true, true, true));
    EXPECT_THAT(detail::longestAscent({2, 1, 0}), ElementsAre(false, false, true));
}
