#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSOrderedSet.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Tests/Platform/Objects/AnyParts.hpp"
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

using namespace orrenby;

static_assert(sizeof(Any) == 16);
static_assert(std::is_nothrow_move_constructible_v<Any> && std::is_nothrow_move_assignable_v<Any>);

TEST(Any, HoldsAnyValue)
{
    //! [Holding any value]
    const Dictionary user = {{"name", "Ada"}, {"age", 36}, {"tags", Array{"math", 1.5}}};

    const std::optional<std::string> name = user["name"].cast<std::string>();
    const std::optional<double> strict = user["age"].cast<double>(); // an integer is no double
    const std::string printed = describe(user);
    //! [Holding any value]

    EXPECT_EQ(name, "Ada");
    EXPECT_EQ(strict, std::nullopt);
    EXPECT_EQ(printed, R"(["age": 36, "name": "Ada", "tags": ["math", 1.5]])");
}

TEST(Any, FindsTheKindOfSimpleValues)
{
    EXPECT_EQ(Any().kind(), Any::Kind::Null);
    EXPECT_EQ(Any(true).kind(), Any::Kind::Bool);
    EXPECT_EQ(Any(1).kind(), Any::Kind::Int);
    EXPECT_EQ(Any(std::uint8_t(1)).kind(), Any::Kind::Int);
    EXPECT_EQ(Any(1.0F).kind(), Any::Kind::Float);
    EXPECT_EQ(Any(1.0).kind(), Any::Kind::Double);
    EXPECT_EQ(Any(Date(5)).kind(), Any::Kind::Date);
    EXPECT_EQ(Any(Data()).kind(), Any::Kind::Bytes);
}

TEST(Any, FindsTheKindOfEveryText)
{
    const std::string text = "text";

    EXPECT_EQ(Any("literal").kind(), Any::Kind::Text);
    EXPECT_EQ(Any(text).kind(), Any::Kind::Text);
    EXPECT_EQ(Any(std::string_view("view")).kind(), Any::Kind::Text);
    EXPECT_EQ(Any(text.c_str()).kind(), Any::Kind::Text);
    EXPECT_EQ(Any(StaticText("static")).kind(), Any::Kind::Text);
    EXPECT_EQ(Any("literal").text(), "literal");
    EXPECT_EQ(Any(1).text(), "");
}

TEST(Any, FindsTheKindOfContainers)
{
    EXPECT_EQ(Any(Array()).kind(), Any::Kind::List);
    EXPECT_EQ(Any(std::vector<int>{1}).kind(), Any::Kind::List);
    EXPECT_EQ(Any(Dictionary()).kind(), Any::Kind::Dictionary);
    EXPECT_EQ(Any(std::map<std::string, int>{{"k", 1}}), Any(Dictionary{{"k", 1}}));
    EXPECT_EQ(Any(std::unordered_map<std::string, int>{{"k", 1}}), Any(Dictionary{{"k", 1}}));
    EXPECT_EQ(Any(NSSet{1}).kind(), Any::Kind::Set);
    EXPECT_EQ(Any(NSOrderedSet{1}).kind(), Any::Kind::Opaque);
}

TEST(Any, MakesNullOfEverythingThatHoldsNothing)
{
    const char* text = nullptr;

    EXPECT_TRUE(Any(NSNull()).isNull());
    EXPECT_TRUE(Any(nullptr).isNull());
    EXPECT_TRUE(Any(std::nullopt).isNull());
    EXPECT_TRUE(Any(std::optional<int>()).isNull());
    EXPECT_TRUE(Any(Ref<app::Shape>()).isNull());
    EXPECT_TRUE(Any(text).isNull());
    EXPECT_FALSE(Any(0).isNull());
    EXPECT_FALSE(Any("").isNull());
}

TEST(Any, SeesThroughOptionals)
{
    EXPECT_EQ(Any(std::optional<int>(5)), Any(5));
    EXPECT_EQ(Any(std::optional<std::optional<std::string>>("a")), Any("a"));
    EXPECT_EQ(Any(std::optional<Any>(Any(true))), Any(true));
}

TEST(Any, KeepsOtherValuesWithTheirType)
{
    const Any value = app::Point{3};

    EXPECT_EQ(value.kind(), Any::Kind::Opaque);
    EXPECT_EQ(value.cast<app::Point>(), app::Point{3});
    EXPECT_TRUE(value.type() == typeid(app::Point));
    EXPECT_EQ(value.typeName(), "Point");
    EXPECT_EQ(Any(app::Colour::Green).cast<app::Colour>(), app::Colour::Green);
    EXPECT_EQ(Any('c').cast<char>(), 'c');
}

TEST(Any, HoldsDeeplyNestedLists)
{
    Any value = 1;
    for (int depth = 0; depth < 512; ++depth)
        value = Array(1, value);

    EXPECT_EQ(describe(value).size(), 512U * 2 + 1);
}
