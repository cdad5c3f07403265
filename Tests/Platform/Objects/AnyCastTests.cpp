#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace orrenby;

TEST(Any, KeepsKindsApart)
{
    EXPECT_EQ(Any(1).cast<double>(), std::nullopt);
    EXPECT_EQ(Any(1).cast<bool>(), std::nullopt);
    EXPECT_EQ(Any(true).cast<int>(), std::nullopt);
    EXPECT_EQ(Any(1.0).cast<float>(), std::nullopt);
    EXPECT_EQ(Any(1.0F).cast<double>(), std::nullopt);
    EXPECT_EQ(Any("1").cast<int>(), std::nullopt);
    EXPECT_EQ(Any(1).cast<std::string>(), std::nullopt);
    EXPECT_NE(Any(1), Any(1.0));
    EXPECT_NE(Any(1), Any(true));
    EXPECT_NE(Any(1.0), Any(1.0F));
    EXPECT_NE(Any(), Any(0));
}

TEST(Any, GivesIntegersInEveryWidthThatTheyFit)
{
    EXPECT_EQ(Any(200).cast<std::uint8_t>(), 200);
    EXPECT_EQ(Any(200).cast<std::int8_t>(), std::nullopt);
    EXPECT_EQ(Any(-1).cast<unsigned>(), std::nullopt);
    EXPECT_EQ(Any(std::uint8_t(7)).cast<std::int64_t>(), 7);
    EXPECT_EQ(*Any(7).get<std::int64_t>(), 7);
}

TEST(Any, GivesEachNumberAsItsOwnKindOnly)
{
    EXPECT_EQ(Any(1.5F).cast<float>(), 1.5F);
    EXPECT_EQ(Any(1.5F).cast<double>(), std::nullopt);
    EXPECT_EQ(Any(1.5).cast<double>(), 1.5);
    EXPECT_EQ(Any(1.5).cast<float>(), std::nullopt);
    EXPECT_EQ(Any(1.0F).cast<int>(), std::nullopt);
    EXPECT_EQ(Any(1.0).cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(Any("1").cast<std::uint64_t>(), std::nullopt);
    EXPECT_EQ(Any(Date(1)).cast<double>(), std::nullopt);
}

TEST(Any, LosesNoLargeUnsignedInteger)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    constexpr auto largestSigned = std::numeric_limits<std::int64_t>::max();
    const Any value = largest;

    EXPECT_EQ(value.kind(), Any::Kind::Opaque);
    EXPECT_EQ(value.cast<std::uint64_t>(), largest);
    EXPECT_EQ(value.cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(value.description(), "18446744073709551615");
    EXPECT_EQ(value.typeName(), "UInt64");
    EXPECT_EQ(Any(std::uint64_t(largestSigned)).kind(), Any::Kind::Int);
    EXPECT_EQ(Any(std::uint64_t(largestSigned) + 1).kind(), Any::Kind::Opaque);
}

TEST(Any, CastsALargeUnsignedNumberOfTheProgramToNothingElse)
{
    EXPECT_EQ(Any(std::uint64_t(1) << 63).cast<double>(), std::nullopt);
    EXPECT_EQ(Any(std::uint64_t(1) << 63).cast<float>(), std::nullopt);
    EXPECT_EQ(Any(1e19).cast<std::uint64_t>(), std::nullopt);
}

TEST(Any, CastsListsAndDictionariesElementByElement)
{
    const Any list = std::vector<int>{1, 2};
    const Any mixed = Array{1, "two"};
    const Any dictionary = Dictionary{{"k", 1.5}};

    EXPECT_EQ(list.cast<std::vector<int>>(), (std::vector{1, 2}));
    EXPECT_EQ(mixed.cast<std::vector<int>>(), std::nullopt);
    EXPECT_EQ(mixed.cast<Array>(), (Array{1, "two"}));
    EXPECT_EQ(Any(1).cast<std::vector<int>>(), std::nullopt);
    EXPECT_EQ(
        (dictionary.cast<std::map<std::string, double>>()), (std::map<std::string, double>{{"k", 1.5}}));
    EXPECT_EQ((dictionary.cast<std::map<std::string, int>>()), std::nullopt);
}
