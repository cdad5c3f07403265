#include "Orrenby/Platform/Objects/Deferred.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

namespace {

struct Options {
    Deferred<bool> criticalWhen = {};
    Deferred<std::string> message = {};
};

bool isCritical(const Options& options) { return options.criticalWhen.get(); }

} // namespace

TEST(Deferred, TakesAValueOrACallable)
{
    int tests = 0;
    //! [Deferring an argument]
    const bool given = isCritical({.criticalWhen = true});
    const bool computed = isCritical({.criticalWhen = [&] { return ++tests > 0; }});
    //! [Deferring an argument]

    EXPECT_TRUE(given);
    EXPECT_TRUE(computed);
    EXPECT_EQ(tests, 1);
}

TEST(Deferred, IsTheEmptyValueByDefault)
{
    EXPECT_FALSE(isCritical({}));
    EXPECT_EQ(Options().message.get(), "");
}

TEST(Deferred, EvaluatesNothingUntilAsked)
{
    int evaluations = 0;
    const Options options = {.criticalWhen = [&] { return ++evaluations > 0; }};
    EXPECT_EQ(evaluations, 0);

    options.criticalWhen.get();
    options.criticalWhen();
    EXPECT_EQ(evaluations, 2);
}

TEST(Deferred, CallsALambdaWithoutCapturesInsteadOfConvertingIt)
{
    EXPECT_FALSE(isCritical({.criticalWhen = [] { return false; }}));
}

TEST(Deferred, ConvertsValuesAndResults)
{
    const Options value = {.message = "text"};
    const Options result = {.message = [] { return "made"; }};

    EXPECT_EQ(value.message.get(), "text");
    EXPECT_EQ(result.message.get(), "made");
}

TEST(Deferred, OutlivesTheExpressionItWasMadeIn)
{
    const std::string word = "kept";
    Options options = {.message = [word] { return word + " alive"; }};
    const Options moved = std::move(options);

    EXPECT_EQ(moved.message.get(), "kept alive");
}

static_assert(!std::is_convertible_v<std::string, Deferred<bool>>);
static_assert(!std::is_convertible_v<int (*)(int), Deferred<std::string>>);
