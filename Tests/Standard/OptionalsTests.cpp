#include "Orrenby/Standard/Optionals.hpp"

#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;

TEST(Optionals, WorkWithTheirValues)
{
    //! [Working with optional values]
    const std::optional<std::string> name = "owl";
    std::string greeting;

    withValue(name, [&](const std::string& value) { greeting = "Hello " + value; });

    EXPECT_EQ(greeting, "Hello owl");
    EXPECT_FALSE(isEmpty(name));
    //! [Working with optional values]
}

TEST(WithValue, DoesNothingWithoutAValue)
{
    int calls = 0;

    withValue(std::optional<int>(), [&](int) { ++calls; });

    EXPECT_EQ(calls, 0);
}

TEST(WithValue, PassesOnWhatIsThrown)
{
    EXPECT_THROW(
        withValue(std::optional(1), [](int) { throw std::runtime_error("no"); }), std::runtime_error);
}

TEST(IsEmpty, HoldsWithoutACollectionAndForOneWithoutElements)
{
    EXPECT_TRUE(isEmpty(std::optional<std::vector<int>>()));
    EXPECT_TRUE(isEmpty(std::optional(std::vector<int>())));
    EXPECT_FALSE(isEmpty(std::optional(std::vector<int>{1})));
}
