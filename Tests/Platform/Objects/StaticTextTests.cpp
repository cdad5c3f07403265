#include "Orrenby/Platform/Objects/StaticText.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

namespace {
constexpr char staticArray[] = "array\0hidden";
}

static_assert(std::is_constructible_v<std::string_view, StaticText>);
static_assert(!std::is_constructible_v<StaticText, std::string>, "run-time text does not compile");
static_assert(!std::is_constructible_v<StaticText, const char*>);
static_assert(!std::is_constructible_v<StaticText, std::string_view>);

TEST(StaticText, KeepsALiteral)
{
    const StaticText text = "Flow ended";

    EXPECT_EQ(text.view(), "Flow ended");
    EXPECT_EQ(std::string(std::string_view(text)), "Flow ended");
}

TEST(StaticText, EndsAtTheFirstNUL)
{
    EXPECT_EQ(StaticText("a\0b").view(), "a");
    EXPECT_EQ(StaticText(staticArray).view(), "array");
}

TEST(StaticText, MayBeEmpty) { EXPECT_EQ(StaticText("").view(), ""); }

TEST(StaticText, ComparesByItsText)
{
    EXPECT_EQ(StaticText("a"), StaticText("a"));
    EXPECT_NE(StaticText("a"), StaticText("b"));
}
