#include "Orrenby/Platform/Observing/NotificationName.hpp"

#include <gtest/gtest.h>
#include <unordered_set>

using namespace orrenby;

namespace {

TEST(NotificationName, IsMadeOfAnyText)
{
    const NotificationName literal = "Saved";
    const NotificationName text = std::string("Saved");
    const NotificationName view = std::string_view("Saved!").substr(0, 5);

    EXPECT_EQ(literal, text);
    EXPECT_EQ(literal, view);
    EXPECT_EQ(literal.rawValue(), "Saved");
}

TEST(NotificationName, ComparesByteByByte)
{
    EXPECT_NE(NotificationName("Saved"), NotificationName("saved"));
    EXPECT_NE(NotificationName("Saved"), NotificationName("Saved "));
    EXPECT_NE(NotificationName("\u00e9"), NotificationName("e\u0301"));
    EXPECT_EQ(NotificationName(""), NotificationName(std::string()));
}

TEST(NotificationName, CanBeAKey)
{
    const auto names = std::unordered_set<NotificationName>{"a", "b", "a"};

    EXPECT_EQ(names.size(), 2U);
    EXPECT_EQ(names.count("b"), 1U);
}

} // namespace
