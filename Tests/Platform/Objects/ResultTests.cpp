#include "Orrenby/Platform/Objects/Result.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

class Reason : public std::exception {
public:
    explicit Reason(int code = 0)
        : m_code(code)
    {}
    const char* what() const noexcept override { return "reason"; }
    int code() const { return m_code; }
    friend bool operator==(const Reason& first, const Reason& second)
    {
        return first.m_code == second.m_code;
    }

private:
    int m_code;
};

using Outcome = Result<int, Reason>;
using Same = Result<std::string, std::string>;

template <class R>
concept HasEmptySuccess = requires
{
    R::success();
};

} // namespace

static_assert(HasEmptySuccess<Result<Void, Reason>>);
static_assert(!HasEmptySuccess<Outcome>);
static_assert(!std::is_default_constructible_v<std::hash<Outcome>>); // a reason has no hash
static_assert(std::is_same_v<decltype(Outcome::success(1).map([](int) { return std::string(); })),
    Result<std::string, AnyError>>);
static_assert(std::is_same_v<decltype(Outcome::success(1).void_()), Result<Void, Reason>>);

TEST(Result, HoldsASuccessOrAFailure)
{
    std::vector<std::string> log;
    //! [Working with an outcome]
    const auto outcome = Result<int, Reason>::success(20);
    outcome.onSuccess([&](int value) { log.push_back("got " + std::to_string(value)); }).onFailure([&] {
        log.push_back("failed");
    });

    const auto text = outcome.map([](int value) { return std::to_string(2 * value); });
    const std::string printed = describe(text);
    //! [Working with an outcome]

    EXPECT_THAT(log, ElementsAre("got 20"));
    EXPECT_EQ(text.value(), "40");
    EXPECT_EQ(printed, "success(\"40\")");
}

TEST(Result, TellsWhichCaseHolds)
{
    const auto success = Outcome::success(1);
    const auto failure = Outcome::failure(Reason(2));

    EXPECT_TRUE(success.isSuccess());
    EXPECT_FALSE(success.isFailure());
    EXPECT_EQ(success.value(), 1);
    EXPECT_EQ(success.error(), std::nullopt);
    EXPECT_TRUE(failure.isFailure());
    EXPECT_FALSE(failure.isSuccess());
    EXPECT_EQ(failure.value(), std::nullopt);
    EXPECT_EQ(failure.error(), Reason(2));
}

TEST(Result, KeepsCasesOfOneTypeApart)
{
    EXPECT_EQ(Same::success("a").value(), "a");
    EXPECT_EQ(Same::success("a").error(), std::nullopt);
    EXPECT_EQ(Same::failure("a").error(), "a");
    EXPECT_EQ(Same::failure("a").value(), std::nullopt);
    EXPECT_NE(Same::success("a"), Same::failure("a"));
}

TEST(Result, UnwrapsASuccess)
{
    const auto outcome = Outcome::success(5);

    EXPECT_EQ(outcome.unwrap(), 5);
    EXPECT_THAT((Result<std::unique_ptr<int>, Reason>::success(std::make_unique<int>(7)).unwrap()),
        ::testing::Pointee(7));
}

TEST(Result, ThrowsItsFailureWhenUnwrapped)
{
    const auto outcome = Outcome::failure(Reason(3));

    EXPECT_THAT([&] { outcome.unwrap(); }, testing::Throws<Reason>(testing::Property(&Reason::code, 3)));
}

TEST(Result, ThrowsAFailureThatIsNoExceptionAsItself)
{
    EXPECT_THROW(Same::failure("bad").unwrap(), std::string);
}

TEST(Result, ThrowsWhatAGeneralErrorHolds)
{
    const auto outcome = Result<int, AnyError>::failure(AnyError(Reason(4)));

    EXPECT_THAT([&] { outcome.unwrap(); }, testing::Throws<Reason>(testing::Property(&Reason::code, 4)));
}

TEST(Result, ThrowsWhatAnExceptionPointerHolds)
{
    const auto outcome = Result<int, std::exception_ptr>::failure(std::make_exception_ptr(Reason(6)));

    EXPECT_THROW(outcome.unwrap(), Reason);
}

TEST(Result, CallsOnSuccessOnlyOnSuccess)
{
    int calls = 0;
    const auto failure = Outcome::failure(Reason(1));

    const auto& same = failure.onSuccess([&] { ++calls; }).onSuccess([&](int) { ++calls; });

    EXPECT_EQ(calls, 0);
    EXPECT_EQ(&same, &failure);
}

TEST(Result, CallsBothFormsAndReturnsItself)
{
    std::vector<int> seen;
    const auto success = Outcome::success(1);
    const auto failure = Outcome::failure(Reason(2));

    const auto& sameSuccess = success.onSuccess([&] { seen.push_back(0); }).onSuccess([&](int value) {
        seen.push_back(value);
    });
    const auto& sameFailure = failure.onFailure([&] { seen.push_back(9); })
                                  .onFailure([&](const Reason& reason) { seen.push_back(reason.code()); });

    EXPECT_THAT(seen, ElementsAre(0, 1, 9, 2));
    EXPECT_EQ(&sameSuccess, &success);
    EXPECT_EQ(&sameFailure, &failure);
}

TEST(Result, CanBeChainedFromATemporary)
{
    int calls = 0;
    const auto outcome = Outcome::success(3).onSuccess([&] { ++calls; }).onFailure([&] { ++calls; });

    EXPECT_EQ(outcome, Outcome::success(3));
    EXPECT_EQ(calls, 1);
}

TEST(Result, LetsThrowsOfItsCallablesThrough)
{
    EXPECT_THROW(Outcome::success(1).onSuccess([] { throw std::runtime_error("x"); }), std::runtime_error);
    EXPECT_THROW(
        Outcome::failure(Reason(1)).onFailure([] { throw std::runtime_error("x"); }), std::runtime_error);
}

TEST(Result, ReplacesItsSuccessByNothing)
{
    EXPECT_EQ(Outcome::success(1).void_(), (Result<Void, Reason>::success()));
    EXPECT_EQ(Outcome::failure(Reason(2)).void_(), (Result<Void, Reason>::failure(Reason(2))));
}

TEST(Result, MapsItsSuccess)
{
    const auto mapped = Outcome::success(2).map([](int value) { return value * 1.5; });

    EXPECT_EQ(mapped.value(), 3.0);
}

TEST(Result, HoldsWhatATransformThrows)
{
    const auto mapped = Outcome::success(2).map([](int) -> int { throw Reason(8); });

    ASSERT_TRUE(mapped.isFailure());
    ASSERT_NE(mapped.error()->cast<Reason>(), nullptr);
    EXPECT_EQ(mapped.error()->cast<Reason>()->code(), 8);
}

TEST(Result, KeepsItsFailureWhenMapped)
{
    int calls = 0;
    const auto mapped = Outcome::failure(Reason(5)).map([&](int) { return ++calls; });

    ASSERT_NE(mapped.error()->cast<Reason>(), nullptr);
    EXPECT_EQ(mapped.error()->cast<Reason>()->code(), 5);
    EXPECT_EQ(calls, 0);
}

TEST(Result, MapsTwiceWithoutWrappingTheErrorTwice)
{
    const auto mapped = Outcome::failure(Reason(5)).map([](int value) { return value; }).map([](int value) {
        return value;
    });

    EXPECT_NE(mapped.error()->cast<Reason>(), nullptr);
}

TEST(Result, MapsToNothingWhenTheTransformHasNoResult)
{
    int seen = 0;

    EXPECT_TRUE(Outcome::success(2).map([&](int value) { seen = value; }).isSuccess());
    EXPECT_EQ(seen, 2);
}

TEST(Result, PrintsItsCaseAndContent)
{
    EXPECT_EQ(describe(Outcome::success(1)), "success(1)");
    EXPECT_EQ(debugDescribe(Outcome::failure(Reason(1))), "failure(Reason(reason))");
    EXPECT_EQ(describe(Same::failure("bad")), "failure(\"bad\")");
    EXPECT_EQ((typeName<Result<long, Reason>>()), "Result<Int, Reason>");
}

TEST(Result, IsWrittenToStreams)
{
    std::ostringstream stream;
    stream << Outcome::success(1);

    EXPECT_EQ(stream.str(), "success(1)");
}

TEST(Result, HashesByItsCaseAndContent)
{
    const std::hash<Same> hash;

    EXPECT_EQ(hash(Same::success("a")), hash(Same::success("a")));
    EXPECT_NE(hash(Same::success("a")), hash(Same::success("b")));
    EXPECT_NE(hash(Same::success("a")), hash(Same::failure("a")));
    EXPECT_EQ((std::unordered_set{Same::failure("a"), Same::failure("a"), Same::success("a")}.size()), 2U);
}

TEST(Result, CanNeverFailWithNever)
{
    const auto outcome = Result<int, Never>::success(1);

    EXPECT_TRUE(outcome.isSuccess());
    EXPECT_EQ(outcome.unwrap(), 1);
    EXPECT_FALSE(outcome.error().has_value());
}
