#include "Orrenby/Utilities/Log/Settings.hpp"

#include "LogFixture.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <thread>

using namespace orrenby;
using testing::ElementsAre;

using LogSettings = LogFixture;

TEST(LogSettingsAtFirst, PassEverythingAndShowEmoji)
{
    EXPECT_EQ(Log::level(), Log::Level::debug);
    EXPECT_TRUE(Log::useEmoji());
}

TEST_F(LogSettings, InstallAHandler)
{
    //! [Installing a handler]
    std::vector<std::string> lines;
    Log::onEvent([&](Log::Level level, const Log::DeferredEvent& event) {
        if (level >= Log::Level::warning)
            lines.push_back(event().message());
    });

    Log::warning("request failed");
    //! [Installing a handler]

    EXPECT_THAT(lines, ElementsAre("request failed"));
}

TEST_F(LogSettings, KeepTheLastHandlerOnly)
{
    const auto second = Log::CaptureHandler();

    Log::onEvent(second);
    Log::info("text");

    EXPECT_EQ(capture.count(), 0U);
    EXPECT_EQ(second.count(), 1U);
}

TEST_F(LogSettings, KeepTheLastCriticalHandlerOnly)
{
    const auto second = Log::CaptureHandler();
    Log::onCriticalError(capture);

    Log::onCriticalError(second);
    Log::critical("text");

    EXPECT_TRUE(capture.criticalErrors().empty());
    EXPECT_EQ(second.criticalErrors().size(), 1U);
}

TEST_F(LogSettings, RemoveAHandlerWithAnEmptyOne)
{
    Log::onEvent(nullptr);
    Log::onCriticalError({});

    Log::critical("text");

    EXPECT_EQ(capture.count(), 0U);
}

TEST_F(LogSettings, LetAHandlerReplaceItself)
{
    const auto owned = std::make_shared<int>(5);
    int seen = 0;
    Log::onEvent([&, owned](Log::Level, const Log::DeferredEvent&) {
        Log::onEvent(nullptr);
        seen = *owned;
    });

    Log::info("once");
    Log::info("twice");

    EXPECT_EQ(seen, 5);
}

TEST_F(LogSettings, ReportANewLevelThatLetsDebugThrough)
{
    useCodes();
    Log::setLevel(Log::Level::debug);

    ASSERT_EQ(capture.count(), 1U);
    EXPECT_EQ(capture.entries()[0].level, Log::Level::debug);
    const auto event = capture.entries()[0].event;
    EXPECT_EQ(event, Log::Event("D", "Log", event.line(), "level", "[MAIN]", "Log.level = Debug"));
    EXPECT_GT(event.line(), 0);
}

TEST_F(LogSettings, DropTheReportOfAHigherLevel)
{
    Log::setLevel(Log::Level::warning);

    EXPECT_EQ(Log::level(), Log::Level::warning);
    EXPECT_EQ(capture.count(), 0U);
}

TEST_F(LogSettings, ReportTheChoiceOfEmojiInItsNewForm)
{
    Log::setUseEmoji(false);
    Log::setUseEmoji(true);

    ASSERT_EQ(capture.count(), 2U);
    const auto off = capture.entries()[0].event;
    const auto on = capture.entries()[1].event;
    EXPECT_EQ(off, Log::Event("D", "Log", off.line(), "useEmoji", "[MAIN]", "Log.useEmoji = false"));
    EXPECT_EQ(on,
        Log::Event(
            "\xF0\x9F\x94\x98", "Log", off.line(), "useEmoji", "\xF0\x9F\x9A\x80", "Log.useEmoji = true"));
}

TEST_F(LogSettings, ReportTheSettingsAlsoWhenNothingChanges)
{
    Log::setLevel(Log::Level::debug);
    Log::setUseEmoji(true);

    EXPECT_THAT(capture.messages(), ElementsAre("Log.level = Debug", "Log.useEmoji = true"));
}

TEST_F(LogSettings, CanBeReadAndChangedWhileOthersLog)
{
    std::atomic<bool> isDone = false;
    auto logging = std::thread([&] {
        while (!isDone)
            Log::error("text");
    });

    for (int change = 0; change < 200; ++change) {
        Log::setLevel(change % 2 == 0 ? Log::Level::critical : Log::Level::error);
        Log::onEvent(Log::CaptureHandler());
    }
    isDone = true;
    logging.join();

    EXPECT_EQ(Log::level(), Log::Level::error);
}
