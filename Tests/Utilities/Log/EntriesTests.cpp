#include "Orrenby/Utilities/Log/Entries.hpp"

#include "LogFixture.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <vector>

using namespace orrenby;
using testing::ElementsAre;

namespace {

std::vector<int> levelsOf(const Log::CaptureHandler& capture)
{
    std::vector<int> levels;
    for (const auto& entry : capture.entries())
        levels.push_back(entry.level.rawValue());
    return levels;
}

template <class Item> void logAtEveryLevel(Item&& item)
{
    Log::debug(item);
    Log::info(item);
    Log::event(item);
    Log::warning(item);
    Log::error(item);
}

} // namespace

using LogEntries = LogFixture;

TEST_F(LogEntries, TakeTextsValuesErrorsAndCallables)
{
    //! [Logging]
    const auto retries = std::vector{1, 2, 4};
    Log::debug(retries);
    Log::info([&] { return std::to_string(retries.size()) + " retries"; });
    Log::error(std::runtime_error("request failed"));
    //! [Logging]

    EXPECT_THAT(capture.messages(), ElementsAre("[1, 2, 4]", "3 retries", "runtime_error(request failed)"));
}

TEST_F(LogEntries, HaveTheLevelOfTheirName)
{
    logAtEveryLevel("text");
    Log::critical("text");

    EXPECT_THAT(levelsOf(capture), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(LogEntries, AreDroppedBelowTheLevelWithoutEvaluation)
{
    for (int level = 0; level <= 5; ++level) {
        int evaluations = 0;
        Log::setLevel(*Log::Level::make(level));
        capture.clear();

        logAtEveryLevel([&] { return ++evaluations; });

        EXPECT_EQ(capture.count(), static_cast<std::size_t>(5 - level));
        EXPECT_EQ(evaluations, 5 - level);
    }
}

TEST_F(LogEntries, AtCriticalPassEveryLevel)
{
    Log::setLevel(Log::Level::critical);

    Log::critical("text");

    EXPECT_THAT(capture.messages(), ElementsAre("text"));
}

TEST_F(LogEntries, CallNeitherItemNorHandlerForInfoAtWarning)
{
    int evaluations = 0;
    int calls = 0;
    Log::setLevel(Log::Level::warning);
    Log::onEvent([&](Log::Level, const Log::DeferredEvent& event) {
        ++calls;
        event();
    });
    const auto item = [&] { return ++evaluations; };

    Log::info(item);
    EXPECT_EQ(calls + evaluations, 0);

    Log::warning(item);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(evaluations, 1);
}

TEST_F(LogEntries, NameTheCallersPlace)
{
    const int line = __LINE__ + 1;
    Log::event("text");

    ASSERT_EQ(capture.count(), 1U);
    const auto event = capture.entries()[0].event;
    EXPECT_EQ(event.filename(), "EntriesTests");
    EXPECT_EQ(event.line(), line);
    EXPECT_EQ(event.function(), "TestBody");
}

TEST_F(LogEntries, ShowEmojiAtFirstAndCodesOnRequest)
{
    Log::event("text");
    Log::setUseEmoji(false);
    Log::event("text");

    const auto entries = capture.entries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].event.level(), "\xE2\x9D\x87\xEF\xB8\x8F");
    EXPECT_EQ(entries[0].event.queue(), "\xF0\x9F\x9A\x80");
    EXPECT_EQ(entries[2].event.level(), "U");
    EXPECT_EQ(entries[2].event.queue(), "[MAIN]");
    EXPECT_TRUE(entries[2].event.properties().empty());
}

TEST_F(LogEntries, TakeTextsOfEveryKind)
{
    char buffer[] = "buffer";
    const char* nothing = nullptr;

    Log::info("literal");
    Log::info(std::string("text"));
    Log::info(std::string_view("view"));
    Log::info(StaticText("static"));
    Log::info(buffer);
    Log::info(nothing);
    Log::info("");

    EXPECT_THAT(capture.messages(), ElementsAre("literal", "text", "view", "static", "buffer", "none", ""));
}

TEST_F(LogEntries, TakeValuesThatCannotBeCopied)
{
    struct Door {
        Door() = default;
        Door(const Door&) = delete;
        std::string description() const { return "open"; }
    };
    const auto door = Door();

    Log::info(door);
    Log::info(Door());
    Log::info([&]() -> const Door& { return door; });

    EXPECT_THAT(capture.messages(), ElementsAre("Door(open)", "Door(open)", "Door(open)"));
}

TEST_F(LogEntries, TakeCallablesThatChangeThemselves)
{
    Log::info([count = 0]() mutable { return ++count; });

    EXPECT_THAT(capture.messages(), ElementsAre("1"));
}

TEST_F(LogEntries, NeedNoHandler)
{
    int evaluations = 0;
    Log::onEvent(nullptr);

    logAtEveryLevel([&] { return ++evaluations; });
    Log::critical("text", [&] { return Dictionary{{"n", ++evaluations}}; });

    EXPECT_EQ(evaluations, 0);
}

TEST_F(LogEntries, PrintNothingByThemselves)
{
    Log::onEvent(nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    logAtEveryLevel("text");
    Log::critical("text");
    Log::onEvent([](Log::Level, const Log::DeferredEvent& event) { event(); });
    logAtEveryLevel("text");

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
