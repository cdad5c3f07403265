#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Tests/Platform/Objects/AnyParts.hpp"
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace orrenby;

TEST(Any, GivesItsContentWithoutACopy)
{
    const Any value = std::string("a text that is longer than any small buffer");
    const Any copy = value;

    ASSERT_NE(value.get<std::string>(), nullptr);
    EXPECT_EQ(value.get<std::string>(), copy.get<std::string>());
    EXPECT_EQ(value.get<Data>(), nullptr);
    EXPECT_EQ(value.get<app::Point>(), nullptr);
}

TEST(Any, LeavesNullWhenMovedFrom)
{
    Any value = "text";
    const Any taken = std::move(value);

    EXPECT_TRUE(value.isNull()); // NOLINT(bugprone-use-after-move): the state is promised
    EXPECT_EQ(taken.text(), "text");
}

TEST(Any, SurvivesAssignmentToItself)
{
    Any value = "text";
    const Any& same = value;
    value = same;

    EXPECT_EQ(value.text(), "text");
}

TEST(Any, CanBeReplacedByAnElementOfItself)
{
    Any value = Array{"first", "second"};
    value = value.get<Array>()->front();

    EXPECT_EQ(value, Any("first"));
}

TEST(Any, SharesItsContentAcrossThreads)
{
    const Any shared = Array{"one", 2, Dictionary{{"three", 3}}};
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([shared] {
            for (int round = 0; round < 1000; ++round) {
                Any copy = shared;
                EXPECT_EQ(copy.get<Array>()->size(), 3U);
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(describe(shared), R"(["one", 2, ["three": 3]])");
}
