#include "Orrenby/Utilities/Log/ErrorInfo.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <system_error>

using namespace orrenby;
using testing::ElementsAre;

namespace {

enum class LoadFailure { offline = 3 };

} // namespace

template <> inline constexpr bool orrenby::isErrorValue<LoadFailure> = true;

TEST(LogErrorInfo, SparesFailedLoads)
{
    //! [Sparing failed loads]
    const auto cancelled = NSError(NSURLErrorDomain, -999);

    EXPECT_TRUE(matches(cancelled, Log::nonCriticalErrors()));
    EXPECT_TRUE(cancelled | matches(Log::nonCriticalErrors()));
    //! [Sparing failed loads]
}

TEST(LogErrorInfo, ListsNonCriticalErrorsInOrder)
{
    EXPECT_THAT(Log::nonCriticalErrors(),
        ElementsAre(Log::ErrorInfo("NSURLErrorDomain", -999), Log::ErrorInfo("NSURLErrorDomain", -1005),
            Log::ErrorInfo("NSURLErrorDomain", -1009), Log::ErrorInfo("NSURLErrorDomain", -1200),
            Log::ErrorInfo("NSURLErrorDomain", -1001)));
}

TEST(LogErrorInfo, DoesNotMatchAnotherCodeOfTheDomain)
{
    EXPECT_FALSE(matches(NSError(NSURLErrorDomain, -1002), Log::nonCriticalErrors()));
}

TEST(LogErrorInfo, DoesNotMatchAnotherDomainWithTheCode)
{
    EXPECT_FALSE(matches(NSError("Other", -999), Log::nonCriticalErrors()));
}

TEST(LogErrorInfo, MatchesNothingInAnEmptyList)
{
    EXPECT_FALSE(matches(NSError(NSURLErrorDomain, -999), {}));
}

TEST(LogErrorInfo, MatchesErrorsOfAllKindsAsPlatformErrors)
{
    const auto broken = std::system_error(std::make_error_code(std::errc::broken_pipe));
    const auto pipe = std::vector{Log::ErrorInfo("generic", static_cast<int>(std::errc::broken_pipe))};
    const std::exception& base = broken;

    EXPECT_TRUE(matches(broken, pipe));
    EXPECT_TRUE(matches(base, pipe));
    EXPECT_TRUE(matches(AnyError(broken), pipe));
    EXPECT_TRUE(matches(std::make_exception_ptr(broken), pipe));
    EXPECT_TRUE(std::make_exception_ptr(broken) | matches(pipe));
    EXPECT_TRUE(matches(LoadFailure::offline, {Log::ErrorInfo("LoadFailure", 3)}));
    EXPECT_FALSE(matches(std::runtime_error("x"), pipe));
}
