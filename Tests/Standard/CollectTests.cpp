#include "Orrenby/Standard/Collect.hpp"

#include <gmock/gmock.h>
#include <ranges>
#include <string>

using namespace orrenby;

namespace {

using Outcome = Result<int, std::string>;
using Collected = Result<std::vector<int>, std::string>;

} // namespace

TEST(Collect, GivesAllValuesOrTheFirstFailure)
{
    //! [Collecting outcomes]
    const std::vector<Result<int, std::string>> good{Outcome::success(1), Outcome::success(2)};
    const std::vector<Result<int, std::string>> bad{
        Outcome::success(1), Outcome::failure("first"), Outcome::failure("second")};

    EXPECT_EQ(collect(good), Collected::success({1, 2}));
    EXPECT_EQ(bad | collect(), Collected::failure("first"));
    //! [Collecting outcomes]
}

TEST(Collect, IsASuccessOfNothing) { EXPECT_EQ(collect(std::vector<Outcome>()), Collected::success({})); }

TEST(Collect, AsksForNothingAfterTheFirstFailure)
{
    int asked = 0;
    const auto outcomes = std::views::iota(0, 10) | std::views::transform([&](int value) {
        ++asked;
        return value == 3 ? Outcome::failure("three") : Outcome::success(value);
    });

    EXPECT_EQ(collect(outcomes), Collected::failure("three"));
    EXPECT_EQ(asked, 4);
}
