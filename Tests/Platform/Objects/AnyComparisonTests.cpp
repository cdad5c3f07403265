#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Tests/Platform/Objects/AnyParts.hpp"
#include <deque>
#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace orrenby;

namespace {

struct Incomparable {
    int number = 0;
};

} // namespace

TEST(Any, ComparesOpaqueValuesOfOneType)
{
    EXPECT_EQ(Any(app::Point{1}), Any(app::Point{1}));
    EXPECT_NE(Any(app::Point{1}), Any(app::Point{2}));
    EXPECT_NE(Any(app::Point{1}), Any(Incomparable{1}));
    EXPECT_EQ(Any(app::Point{1}).hash(), 101U);
}

TEST(Any, EqualsOnlyACopyWhereTheTypeHasNoEquality)
{
    const Any value = Incomparable{1};
    const Any copy = value;

    EXPECT_EQ(value, copy);
    EXPECT_NE(value, Any(Incomparable{1}));
    EXPECT_NE(Any(std::deque<Incomparable>(1)), Any(std::deque<Incomparable>(1)));
    EXPECT_EQ(value.hash(), 0U);
}

TEST(Any, IsNotEqualToItselfAsNaN)
{
    const Any value = std::numeric_limits<double>::quiet_NaN();

    EXPECT_NE(value, value);
}

TEST(Any, HashesAsTheValueInside)
{
    EXPECT_EQ(Any().hash(), 0U);
    EXPECT_EQ(Any(true).hash(), Any(true).hash());
    EXPECT_NE(Any(true).hash(), Any(false).hash());
    EXPECT_EQ(Any(-7).hash(), std::hash<std::int64_t>{}(-7));
    EXPECT_EQ(Any(2.5F).hash(), std::hash<float>{}(2.5F));
    EXPECT_EQ(Any(2.5).hash(), std::hash<double>{}(2.5));
    EXPECT_EQ(Any(Date(5)).hash(), std::hash<Date>{}(Date(5)));
    EXPECT_EQ(Any("ab").hash(), std::hash<std::string>{}("ab"));
    EXPECT_EQ(Any(app::Point{3}).hash(), std::hash<app::Point>{}(app::Point{3}));
}

TEST(Any, HashesEqualValuesAlike)
{
    EXPECT_EQ(Any(0.0F).hash(), Any(-0.0F).hash());
    EXPECT_EQ(Any(0.0), Any(-0.0));
    EXPECT_EQ(Any(0.0).hash(), Any(-0.0).hash());
    EXPECT_EQ(Any(Array{1, "a"}).hash(), Any(Array{1, "a"}).hash());
    EXPECT_EQ(Any(Dictionary{{"a", 1}, {"b", 2}}).hash(), Any(Dictionary{{"b", 2}, {"a", 1}}).hash());
    EXPECT_EQ(Any(NSSet{1, 2}).hash(), Any(NSSet{2, 1}).hash());
    EXPECT_EQ(Any(dataFromText("ab")).hash(), Any(dataFromText("ab")).hash());
}
