#include "Orrenby/Utilities/Log/CaptureHandler.hpp"

#include "LogFixture.hpp"
#include <gmock/gmock.h>
#include <thread>

using namespace orrenby;
using testing::ElementsAre;

using LogCaptureHandler = LogFixture;

TEST_F(LogCaptureHandler, CapturesEntries)
{
    //! [Capturing entries]
    const auto captured = Log::CaptureHandler();
    Log::onEvent(captured);
    Log::onCriticalError(captured);

    Log::info("connected");
    Log::critical("lost");

    EXPECT_THAT(captured.messages(), ElementsAre("connected", "lost"));
    EXPECT_TRUE(captured.contains(Log::Level::critical, "lost"));
    EXPECT_EQ(captured.criticalErrors().size(), 1U);
    //! [Capturing entries]
}

TEST_F(LogCaptureHandler, CountsAndSearchesByLevel)
{
    Log::info("a");
    Log::warning("b");
    Log::info("c");

    EXPECT_EQ(capture.count(), 3U);
    EXPECT_EQ(capture.count(Log::Level::info), 2U);
    EXPECT_EQ(capture.count(Log::Level::error), 0U);
    EXPECT_THAT(capture.messages(Log::Level::info), ElementsAre("a", "c"));
    EXPECT_TRUE(capture.contains(Log::Level::warning, "b"));
    EXPECT_FALSE(capture.contains(Log::Level::info, "b"));
    EXPECT_FALSE(capture.contains(Log::Level::warning, ""));
}

TEST_F(LogCaptureHandler, SharesWhatItCapturedWithItsCopies)
{
    const auto copy = capture;

    Log::info("a");
    EXPECT_EQ(copy.count(), 1U);

    copy.clear();
    EXPECT_EQ(capture.count(), 0U);
    EXPECT_TRUE(capture.criticalErrors().empty());
}

TEST_F(LogCaptureHandler, TakesAnItemThatLogsWhileItIsEvaluated)
{
    Log::info([] {
        Log::debug("inner");
        return "outer";
    });

    EXPECT_THAT(capture.messages(), ElementsAre("inner", "outer"));
}

TEST_F(LogCaptureHandler, CanBeReadWhileOthersLog)
{
    auto logging = std::thread([] {
        for (int entry = 0; entry < 500; ++entry)
            Log::info(entry);
    });
    std::size_t last = 0;
    bool isGrowing = true;
    while (last < 500) {
        const auto count = capture.entries().size();
        isGrowing = isGrowing && count >= last;
        last = count;
    }
    logging.join();

    EXPECT_TRUE(isGrowing);
    EXPECT_EQ(capture.count(), 500U);
}
