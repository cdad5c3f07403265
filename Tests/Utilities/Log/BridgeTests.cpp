#include "Orrenby/Utilities/Log/Bridge.hpp"

#include "LogFixture.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using testing::ElementsAre;

using LogBridge = LogFixture;

TEST_F(LogBridge, AppendsAnObject)
{
    Log::_objc_append(Log::Level::info, Any("text"));
    Log::_objc_append(Log::Level::warning, NSError("Feed", 3));
    Log::_objc_append(Log::Level::error, 5);

    EXPECT_THAT(capture.messages(), ElementsAre("text", "Domain: Feed Code: 3", "5"));
    EXPECT_EQ(capture.count(Log::Level::warning), 1U);
}

TEST_F(LogBridge, GivesTheErrorOfACriticalObject)
{
    Log::onCriticalError(capture);

    Log::_objc_append(Log::Level::critical, NSError("Feed", 3));

    ASSERT_EQ(capture.criticalErrors().size(), 1U);
    EXPECT_EQ(capture.criticalErrors()[0].error, NSError("Feed", 3));
}

TEST_F(LogBridge, AppendsTheTextOfAClosureAndCallsItOnce)
{
    int calls = 0;

    Log::_objc_append(Log::Level::info, [&] { return std::to_string(++calls); });
    Log::_objc_append(Log::Level::info, UniqueFunction<std::string()>([] { return "held"; }));

    EXPECT_THAT(capture.messages(), ElementsAre("1", "held"));
    EXPECT_EQ(calls, 1);
}

TEST_F(LogBridge, DoesNotCallAClosureBelowTheLevel)
{
    int calls = 0;
    Log::setLevel(Log::Level::warning);

    Log::_objc_append(Log::Level::info, [&] { return std::to_string(++calls); });
    Log::_objc_assert(false, Log::Level::info, [&] { return std::to_string(++calls); });

    EXPECT_EQ(calls, 0);
    EXPECT_EQ(capture.count(), 0U);
}

TEST_F(LogBridge, AssertsAtTheGivenLevel)
{
    Log::_objc_assert(true, Log::Level::error, [] { return "holds"; });
    Log::_objc_assert(false, Log::Level::error, [] { return "fails"; });

    EXPECT_THAT(capture.messages(Log::Level::error), ElementsAre("fails"));
    EXPECT_EQ(capture.count(), 1U);
}

TEST_F(LogBridge, NamesTheCallersPlace)
{
    const int line = __LINE__ + 1;
    Log::_objc_append(Log::Level::info, [] { return "text"; });
    Log::_objc_append(Log::Level::info, Any("text"), CallSite("Feed.m", 7, "-[Feed load]"));

    ASSERT_EQ(capture.count(), 2U);
    EXPECT_EQ(capture.entries()[0].event.filename(), "BridgeTests");
    EXPECT_EQ(capture.entries()[0].event.line(), line);
    EXPECT_EQ(capture.entries()[1].event.function(), "-[Feed load]");
}
