#include "Orrenby/Platform/Objects/CallSite.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::EndsWith;

namespace {

//! [Taking the caller's place]
CallSite whereFrom(CallSite site = CallSite::current()) { return site; }
//! [Taking the caller's place]

CallSite plainFunction() { return whereFrom(); }
template <class T> CallSite templateFunction(T) { return whereFrom(); }
struct Scope {
    CallSite member() const { return whereFrom(); }
    CallSite operator<(int) const { return whereFrom(); }
};

} // namespace

static_assert(
    !std::is_default_constructible_v<CallSite>, "an empty list of properties must not read as a place");
static_assert(!std::is_aggregate_v<CallSite>);
static_assert(sizeof(CallSite) == 3 * sizeof(void*), "every call that logs passes one");

TEST(CallSite, IsThePlaceOfTheCall)
{
    const auto site = whereFrom();
    const int line = __LINE__ - 1;

    EXPECT_EQ(site.line(), line);
    EXPECT_THAT(site.file(), EndsWith("CallSiteTests.cpp"));
    EXPECT_EQ(site.function(), "TestBody");
}

TEST(CallSite, GivesThePlainNameOfEveryKindOfFunction)
{
    EXPECT_EQ(plainFunction().function(), "plainFunction");
    EXPECT_EQ(templateFunction(1).function(), "templateFunction");
    EXPECT_EQ(Scope().member().function(), "member");
    EXPECT_EQ((Scope() < 1).function(), "operator<");
}

TEST(CallSite, CanBeSpelledOut)
{
    constexpr CallSite site("Utilities/Discover", 145, "start");

    EXPECT_STREQ(site.file(), "Utilities/Discover");
    EXPECT_EQ(site.line(), 145);
    EXPECT_EQ(site.function(), "start");
}

TEST(CallSite, LeavesASpelledOutNameAsItIs)
{
    EXPECT_EQ(CallSite("Feed", 1, "load<T>(from:)").function(), "load<T>(from:)");
    EXPECT_EQ(CallSite("Feed", 1, "load<T>").function(), "load<T>");
    EXPECT_EQ(CallSite("Feed", 1, "<(_:_:)").function(), "<(_:_:)");
    EXPECT_EQ(CallSite("Feed", 1, "").function(), "");
}

TEST(CallSite, KnowsWhetherItIsSpelledOut)
{
    EXPECT_TRUE(CallSite("Feed", 1, "load").isSpelledOut());
    EXPECT_FALSE(whereFrom().isSpelledOut());
    EXPECT_FALSE(templateFunction(1).isSpelledOut());
}
