#include "Orrenby/Platform/Objects/Never.hpp"

#include <gmock/gmock.h>
#include <optional>
#include <unordered_set>

using namespace orrenby;

static_assert(!std::is_default_constructible_v<Never>);
static_assert(!std::is_aggregate_v<Never>, "or braces would make one");
static_assert(std::equality_comparable<Never>);
static_assert(Void{} == Void{});

TEST(Never, HasNoValueYetCanBeATypeArgument)
{
    const std::optional<Never> nothing;

    EXPECT_FALSE(nothing.has_value());
    EXPECT_TRUE(nothing == std::nullopt);
}

TEST(Void, HasExactlyOneValue)
{
    EXPECT_EQ((std::unordered_set<Void>{Void(), Void()}.size()), 1U);
    EXPECT_FALSE(Void() < Void());
}
