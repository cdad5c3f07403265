#include "Orrenby/Platform/Text/NSRange.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <sstream>
#include <unordered_set>

using namespace orrenby;

namespace {

constexpr auto highest = std::numeric_limits<std::size_t>::max();

} // namespace

TEST(NSRange, NamesAStretch)
{
    //! [Naming a stretch]
    const NSRange word{.location = 2, .length = 3};

    EXPECT_EQ(word.upperBound(), 5U);
    EXPECT_TRUE(word.contains(4));
    EXPECT_EQ(describe(word), "{2, 3}");
    //! [Naming a stretch]
}

TEST(NSRange, IsEmptyAtTheStartByDefault)
{
    EXPECT_EQ(NSRange(), (NSRange{.location = 0, .length = 0}));
    EXPECT_TRUE(NSRange().isEmpty());
    EXPECT_FALSE(NSRange().contains(0));
}

TEST(NSRange, ContainsItsFirstUnitButNotItsUpperBound)
{
    constexpr NSRange range{.location = 2, .length = 3};

    EXPECT_FALSE(range.contains(1));
    EXPECT_TRUE(range.contains(2));
    EXPECT_FALSE(range.contains(5));
}

TEST(NSRange, ContainsTheLastUnitThereCanBe)
{
    EXPECT_TRUE((NSRange{.location = highest, .length = 1}.contains(highest)));
    EXPECT_FALSE((NSRange{.location = highest, .length = 1}.contains(0)));
}

TEST(NSRange, IntersectsWithWhatOverlaps)
{
    constexpr NSRange first{.location = 2, .length = 4};
    constexpr NSRange second{.location = 4, .length = 9};
    constexpr NSRange shared{.location = 4, .length = 2};

    EXPECT_EQ(first.intersection(second), shared);
    EXPECT_EQ(second.intersection(first), shared);
}

TEST(NSRange, IntersectsWithWhatLiesInIt)
{
    constexpr NSRange outer{.location = 0, .length = highest};
    constexpr NSRange inner{.location = 7, .length = 2};

    EXPECT_EQ(outer.intersection(inner), inner);
    EXPECT_EQ(inner.intersection(outer), inner);
    EXPECT_EQ(outer.intersection(outer), outer);
}

TEST(NSRange, DoesNotIntersectWithNeighboursOrEmptyRanges)
{
    constexpr NSRange range{.location = 2, .length = 2};

    EXPECT_EQ(range.intersection({.location = 4, .length = 1}), std::nullopt);
    EXPECT_EQ(range.intersection({.location = 0, .length = 2}), std::nullopt);
    EXPECT_EQ(range.intersection({.location = 3, .length = 0}), std::nullopt);
    EXPECT_EQ(NSRange().intersection(range), std::nullopt);
}

TEST(NSRange, PrintsAndHashesAsAValue)
{
    constexpr NSRange range{.location = 0, .length = 12};
    std::ostringstream printed;
    printed << range;

    EXPECT_EQ(printed.str(), "{0, 12}");
    EXPECT_EQ(debugDescribe(range), "NSRange{0, 12}");
    EXPECT_EQ((std::unordered_set<NSRange>{range, range, {1, 12}}.size()), 2U);
}
