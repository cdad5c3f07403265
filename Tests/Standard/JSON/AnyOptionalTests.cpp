#include "Orrenby/Standard/JSON/AnyOptional.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using ::testing::Optional;

TEST(GetValue, GivesWhatTheOptionalHolds)
{
    EXPECT_THAT(getValue(std::optional(5)), Optional(Any(5)));
    EXPECT_THAT(getValue(std::optional<std::string>("a")), Optional(Any("a")));
}

TEST(GetValue, GivesNothingOfAnEmptyOptional) { EXPECT_EQ(getValue(std::optional<int>()), std::nullopt); }

TEST(GetValue, OpensOnlyTheOuterOfTwoOptionals)
{
    const auto inner = std::optional<std::optional<int>>(std::optional<int>());

    EXPECT_THAT(getValue(inner), Optional(Any()));
    EXPECT_THAT(getValue(std::optional(std::optional(5))), Optional(Any(5)));
}
