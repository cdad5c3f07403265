#include "Orrenby/Testing/LogCapture.hpp"

#include "Orrenby/Utilities/Log.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace orrenby;
using orrenby::testing::LogCapture;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

TEST(LogCapture, CapturesWhatIsLogged)
{
    //! [Capturing the log]
    const auto log = LogCapture();

    Log::info("connected");
    Log::critical("lost", {{"after", 3}});

    EXPECT_THAT(log.lines(), ElementsAre("Info: connected", R"(Critical: lost ["after": 3])"));
    EXPECT_TRUE(log.contains(Log::Level::info, "connected"));
    EXPECT_EQ(log.criticalErrors().size(), 1U);
    //! [Capturing the log]

    EXPECT_THAT(log.messages(), ElementsAre("connected", "lost"));
    EXPECT_THAT(log.messages(Log::Level::critical), ElementsAre("lost"));
    EXPECT_EQ(log.count(), 2U);
    EXPECT_EQ(log.count(Log::Level::warning), 0U);
    EXPECT_EQ(log.entries().front().event.level(), "I");
    EXPECT_EQ(log.description(), R"(["Info: connected", "Critical: lost [\"after\": 3]"])");
}

TEST(LogCapture, PutsBackHandlersAndSettings)
{
    const auto outer = Log::CaptureHandler();
    Log::onEvent(outer);
    Log::onCriticalError(outer);
    Log::setLevel(Log::Level::warning);
    Log::setUseEmoji(true);
    {
        const auto log = LogCapture();
        Log::critical("inside");
    }

    Log::critical("outside");
    Log::info("below the level");

    EXPECT_THAT(outer.messages(), ElementsAre("outside"));
    EXPECT_EQ(outer.criticalErrors().size(), 1U);
    EXPECT_TRUE(Log::useEmoji());
    EXPECT_EQ(Log::level(), Log::Level::warning);
}

TEST(LogCapture, LeavesNoHandlerWhereNoneWas)
{
    Log::onEvent(nullptr);
    Log::onCriticalError(nullptr);
    {
        const auto log = LogCapture();
    }

    const auto wasEvaluated = [] {
        bool evaluated = false;
        Log::critical([&] {
            evaluated = true;
            return StaticText("x");
        });
        return evaluated;
    }();

    EXPECT_FALSE(wasEvaluated);
}

TEST(LogCapture, Nests)
{
    const auto outer = LogCapture();
    Log::info("before");
    {
        const auto inner = LogCapture();
        Log::info("inside");
        EXPECT_THAT(inner.messages(), ElementsAre("inside"));
    }
    Log::info("after");

    EXPECT_THAT(outer.messages(), ElementsAre("before", "after"));
}

TEST(LogCapture, CapturesFromTheLevelOn)
{
    const auto log = LogCapture({.level = Log::Level::warning});

    Log::info("dropped");
    Log::warning("kept");

    EXPECT_THAT(log.lines(), ElementsAre("Warning: kept"));
}

TEST(LogCapture, MayUseEmoji)
{
    const auto log = LogCapture({.useEmoji = true});

    Log::info("a");

    EXPECT_EQ(log.entries().front().event.level(), Log::Level(Log::Level::info).emoji());
}

TEST(LogCapture, ForgetsWhenItIsCleared)
{
    auto log = LogCapture();
    Log::critical("a");

    log.clear();

    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_THAT(log.criticalErrors(), IsEmpty());
}

TEST(LogCapture, CanBePrinted)
{
    const auto log = LogCapture();
    std::ostringstream stream;
    Log::info("connected");

    stream << log;

    EXPECT_EQ(stream.str(), R"(["Info: connected"])");
}

} // namespace
