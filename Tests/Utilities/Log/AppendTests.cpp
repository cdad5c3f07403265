#include "Orrenby/Utilities/Log/Append.hpp"

#include "LogFixture.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using testing::ElementsAre;

namespace {

constexpr auto always = [] { return false; };

class Paused : public Loggable {
public:
    std::string message() const override { return "paused"; }
};

template <class T> void logFromATemplate(T item) { Log::info(item); }

} // namespace

using LogAppend = LogFixture;

TEST_F(LogAppend, MakesAnEntryWithASiteSpelledOut)
{
    useCodes();

    Log::_append(
        always, Log::Level::warning, [] { return AnyLoggable("request failed"); },
        [] {
            return Dictionary{{"attempt", 2}};
        },
        CallSite("Utilities/Feed", 120, "load(from:)"));

    ASSERT_EQ(capture.count(), 1U);
    EXPECT_EQ(capture.entries()[0].level, Log::Level::warning);
    EXPECT_EQ(capture.entries()[0].event,
        Log::Event("W", "Feed", 120, "load(from:)", "[MAIN]", "request failed", {{"attempt", 2}}));
}

TEST_F(LogAppend, LeavesASpelledOutNameAsItIs)
{
    Log::onCriticalError(capture);

    Log::_append(always, Log::Level::critical, "text", Dictionary{}, CallSite("Feed", 120, "load<T>(from:)"));
    Log::_append(always, Log::Level::critical, "text", Dictionary{}, CallSite("Feed", 121, "<(_:_:)"));

    ASSERT_EQ(capture.count(), 2U);
    EXPECT_EQ(capture.entries()[0].event.function(), "load<T>(from:)");
    EXPECT_EQ(capture.entries()[1].event.function(), "<(_:_:)");
    EXPECT_EQ(capture.criticalErrors()[0].error.code(), 0);
}

TEST_F(LogAppend, GivesThePlainNameOfTheFunctionThatLogs)
{
    logFromATemplate(1);

    ASSERT_EQ(capture.count(), 1U);
    EXPECT_EQ(capture.entries()[0].event.function(), "logFromATemplate");
}

TEST_F(LogAppend, TestsTheLevelThenTheConditionAndEvaluatesTheRestOnDemand)
{
    std::vector<std::string> steps;
    const auto append = [&](Log::Level level, bool isSuppressed) {
        Log::_append(
            [&, isSuppressed] {
                steps.push_back("condition");
                return isSuppressed;
            },
            level,
            [&] {
                steps.push_back("item");
                return "text";
            },
            [&] {
                steps.push_back("properties");
                return Dictionary{};
            });
    };
    Log::setLevel(Log::Level::warning);

    append(Log::Level::event, false);
    EXPECT_THAT(steps, ElementsAre());

    append(Log::Level::warning, true);
    EXPECT_THAT(steps, ElementsAre("condition"));

    steps.clear();
    append(Log::Level::warning, false);
    EXPECT_THAT(steps, ElementsAre("condition", "item", "properties"));
}

TEST_F(LogAppend, EvaluatesTheConditionAloneWithoutAHandler)
{
    int conditions = 0;
    int evaluations = 0;
    Log::onEvent(nullptr);

    for (const Log::Level level : {Log::Level::debug, Log::Level::critical})
        Log::_append(
            [&] {
                ++conditions;
                return false;
            },
            level, [&] { return ++evaluations; },
            [&] {
                return Dictionary{{"n", ++evaluations}};
            });

    EXPECT_EQ(conditions, 2);
    EXPECT_EQ(evaluations, 0);
}

TEST_F(LogAppend, ReadsTheHandlerAfterTheCondition)
{
    Log::onEvent(nullptr);

    Log::_append(
        [&] {
            Log::onEvent(capture);
            return false;
        },
        Log::Level::info, "late", Dictionary{});

    EXPECT_THAT(capture.messages(), ElementsAre("late"));
}

TEST_F(LogAppend, GivesACriticalEntryToTheCriticalHandlerFirstAndEvaluatesOnce)
{
    std::vector<std::string> calls;
    int evaluations = 0;
    Log::onCriticalError(
        [&](const Log::Event& event, const NSError&) { calls.push_back("critical " + event.message()); });
    Log::onEvent(
        [&](Log::Level, const Log::DeferredEvent& event) { calls.push_back("event " + event().message()); });

    Log::_append(
        always, Log::Level::critical, [&] { return ++evaluations; },
        [&] {
            return Dictionary{{"n", ++evaluations}};
        });

    EXPECT_THAT(calls, ElementsAre("critical 1", "event 1"));
    EXPECT_EQ(evaluations, 2); // item and properties, once each
}

TEST_F(LogAppend, DeliversToTheHandlerThatWasInstalledBeforeTheCriticalHandlerRan)
{
    auto other = Log::CaptureHandler();
    Log::onCriticalError([&](const Log::Event&, const NSError&) { Log::onEvent(other); });

    Log::_append(always, Log::Level::critical, "first", Dictionary{});

    EXPECT_EQ(capture.count(), 1U);
    EXPECT_EQ(other.count(), 0U);
}

TEST_F(LogAppend, GivesTheItemsOwnErrorToTheCriticalHandler)
{
    const auto error = NSError("Feed", 3);
    bool isSame = false;
    Log::onCriticalError([&](const Log::Event&, const NSError& given) { isSame = given.isSame(error); });

    Log::_append(always, Log::Level::critical, error, Dictionary{});
    EXPECT_TRUE(isSame);

    isSame = false;
    Log::_append(always, Log::Level::critical, AnyLoggable(error), Dictionary{});
    EXPECT_TRUE(isSame);
}

TEST_F(LogAppend, MakesUpAnErrorForAnItemWithoutOne)
{
    Log::onCriticalError(capture);
    const auto description = std::string(NSLocalizedDescriptionKey);

    Log::_append(always, Log::Level::critical, "text", Dictionary{}, CallSite("a/Feed.x", 12, "load"));
    Log::_append(
        always, Log::Level::critical, StaticText("text"), Dictionary{}, CallSite("a/Feed.x", 12, "load"));
    Log::_append(always, Log::Level::critical, AnyLoggable(StaticText("text")), Dictionary{},
        CallSite("a/Feed.x", 12, "load(from:)"));

    std::vector<NSError> errors;
    for (const auto& critical : capture.criticalErrors())
        errors.push_back(critical.error);
    EXPECT_THAT(errors,
        ElementsAre(NSError("Feed", 12, {{description, "text"}}),
            NSError("Feed text", 12, {{description, "text"}}),
            NSError("Feed text", 0, {{description, "text"}})));
}

TEST_F(LogAppend, AsksForAnErrorOnlyWhenSomebodyWantsIt)
{
    struct Counting : Loggable {
        mutable int asked = 0;
        std::string message() const override { return "m"; }
        std::optional<NSError> error() const override
        {
            ++asked;
            return std::nullopt;
        }
    };
    const auto item = Counting();

    Log::_append(always, Log::Level::critical, item, Dictionary{});
    EXPECT_EQ(item.asked, 0);

    Log::onCriticalError(capture);
    Log::_append(always, Log::Level::critical, item, Dictionary{});
    EXPECT_EQ(item.asked, 1);
}

TEST_F(LogAppend, CallsTheCriticalHandlerWithoutAnEventHandler)
{
    Log::onEvent(nullptr);
    Log::onCriticalError(capture);

    Log::_append(always, Log::Level::critical, "alone", Dictionary{});
    Log::_append(always, Log::Level::error, "not critical", Dictionary{});

    ASSERT_EQ(capture.criticalErrors().size(), 1U);
    EXPECT_EQ(capture.criticalErrors()[0].event.message(), "alone");
    EXPECT_EQ(capture.count(), 0U);
}

TEST_F(LogAppend, LetsAHandlerLogItself)
{
    std::vector<std::string> messages;
    Log::onEvent([&](Log::Level level, const Log::DeferredEvent& event) {
        if (level == Log::Level::error)
            Log::info("from the handler");
        messages.push_back(event().message());
    });

    Log::_append(always, Log::Level::error, "outer", Dictionary{});

    EXPECT_THAT(messages, ElementsAre("from the handler", "outer"));
}

TEST_F(LogAppend, PassesOnWhatAHandlerThrows)
{
    Log::onEvent([](Log::Level, const Log::DeferredEvent&) { throw std::runtime_error("handler"); });

    EXPECT_THROW(Log::_append(always, Log::Level::info, "text", Dictionary{}), std::runtime_error);
}

TEST_F(LogAppend, PassesOnWhatTheCriticalHandlerThrowsBeforeTheEventHandlerIsCalled)
{
    Log::onCriticalError([](const Log::Event&, const NSError&) { throw std::runtime_error("handler"); });
    int evaluations = 0;
    const auto item = [&] {
        ++evaluations;
        return "text";
    };

    EXPECT_THROW(Log::_append(always, Log::Level::critical, item, Dictionary{}), std::runtime_error);

    EXPECT_EQ(evaluations, 1);
    EXPECT_EQ(capture.count(), 0U);
}

TEST_F(LogAppend, StillDeliversAfterACriticalHandlerThrew)
{
    Log::onCriticalError([](const Log::Event&, const NSError&) { throw std::runtime_error("handler"); });
    EXPECT_THROW(Log::critical("first"), std::runtime_error);
    Log::onCriticalError(nullptr);

    Log::critical("second");

    EXPECT_THAT(capture.messages(), ElementsAre("second"));
}

TEST_F(LogAppend, NamesTheQueueOfTheCallingThread)
{
    useCodes();

    Log::_append(always, Log::Level::event, "here", Dictionary{});
    std::thread([] { Log::_append(always, Log::Level::event, "there", Dictionary{}); }).join();

    ASSERT_EQ(capture.count(), 2U);
    EXPECT_EQ(capture.entries()[0].event.level(), "U");
    EXPECT_EQ(capture.entries()[0].event.queue(), "[MAIN]");
    EXPECT_EQ(capture.entries()[1].event.queue(), "[BG]");
}

TEST_F(LogAppend, DeliversOnTheCallingThreadBeforeItReturns)
{
    std::thread::id delivered;
    std::thread::id calling;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent&) { delivered = std::this_thread::get_id(); });

    std::thread([&] {
        calling = std::this_thread::get_id();
        Log::_append(always, Log::Level::info, "text", Dictionary{});
        EXPECT_EQ(delivered, calling);
    }).join();
}

TEST_F(LogAppend, TakesEntriesFromSeveralThreads)
{
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([] {
            for (int entry = 0; entry < 250; ++entry)
                Log::_append(always, Log::Level::info, entry, Dictionary{});
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(capture.count(), 1000U);
}

TEST_F(LogAppend, MakesAnEventForALoggable)
{
    const auto event = [] {
        return Log::_makeEvent(
            Log::Queue::background, Log::Level::error, Paused(),
            [] {
                return Dictionary{{"k", 1}};
            },
            "Feed", 3, "load()");
    };

    EXPECT_EQ(event(),
        Log::Event(
            "\xE2\x9B\x94\xEF\xB8\x8F", "Feed", 3, "load()", "\xF0\x9F\x9A\xA6", "paused", {{"k", 1}}));
    useCodes();
    EXPECT_EQ(event(), Log::Event("E", "Feed", 3, "load()", "[BG]", "paused", {{"k", 1}}));
}

TEST(LogFilename, IsTheLastComponentWithoutItsExtension)
{
    EXPECT_EQ(detail::logFilename("Feed"), "Feed");
    EXPECT_EQ(detail::logFilename("x/Feed.ext"), "Feed");
    EXPECT_EQ(detail::logFilename("a/b/Feed.ext"), "Feed");
    EXPECT_EQ(detail::logFilename("/a.b/Feed"), "Feed");
    EXPECT_EQ(detail::logFilename("Feed.test.cpp"), "Feed.test");
}

TEST(LogFilename, KeepsDotsThatStartNoExtension)
{
    EXPECT_EQ(detail::logFilename("a/.hidden"), ".hidden");
    EXPECT_EQ(detail::logFilename("a/Feed."), "Feed.");
    EXPECT_EQ(detail::logFilename("."), ".");
    EXPECT_EQ(detail::logFilename(".."), "..");
}

TEST(LogFilename, IgnoresSlashesAtTheEnd)
{
    EXPECT_EQ(detail::logFilename("a/Feed.ext/"), "Feed");
    EXPECT_EQ(detail::logFilename("a/Feed//"), "Feed");
    EXPECT_EQ(detail::logFilename("///"), "");
    EXPECT_EQ(detail::logFilename(""), "");
}
