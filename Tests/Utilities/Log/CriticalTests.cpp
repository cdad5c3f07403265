#include "Orrenby/Utilities/Log/Entries.hpp"

#include "LogFixture.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>

using namespace orrenby;
using testing::ElementsAre;

namespace {

const auto description = std::string(NSLocalizedDescriptionKey);

template <class Item> constexpr bool canBeCritical = requires(Item item) { Log::critical(item); };
template <class Item> constexpr bool canBeAsserted = requires(Item item) { Log::assert_(false, item); };
template <class Item> constexpr bool canBecomeCritical = requires(Item item)
{
    Log::error(item, Log::ErrorOptions{});
};

using DeferredText = std::string (*)();
using DeferredStaticText = StaticText (*)();
using DeferredError = NSError (*)();

static_assert(!canBeCritical<std::string> && !canBeAsserted<std::string> && !canBecomeCritical<std::string>);
static_assert(!canBeCritical<std::string_view> && !canBeCritical<const char*> && !canBeCritical<char*>);
static_assert(
    !canBeCritical<DeferredText> && !canBeAsserted<DeferredText> && !canBecomeCritical<DeferredText>);
static_assert(!canBeCritical<int> && !canBeCritical<AnyLoggable>);
static_assert(canBeCritical<StaticText> && canBeAsserted<StaticText> && canBecomeCritical<StaticText>);
static_assert(canBeCritical<NSError> && canBeAsserted<NSError> && canBecomeCritical<NSError>);
static_assert(
    canBeCritical<std::runtime_error> && canBeCritical<AnyError> && canBeCritical<std::exception_ptr>);
static_assert(
    canBeCritical<DeferredStaticText> && canBeCritical<DeferredError> && canBeAsserted<DeferredError>);

} // namespace

class LogCritical : public LogFixture {
protected:
    LogCritical() { Log::onCriticalError(capture); }

    std::vector<NSError> errors() const
    {
        std::vector<NSError> result;
        for (const auto& critical : capture.criticalErrors())
            result.push_back(critical.error);
        return result;
    }

    std::vector<Dictionary> properties() const
    {
        std::vector<Dictionary> result;
        for (const auto& entry : capture.entries())
            result.push_back(entry.event.properties());
        return result;
    }
};

using LogErrorCriticalWhen = LogCritical;
using LogAssert = LogCritical;

TEST_F(LogCritical, ReportsWhatMustNotHappen)
{
    const auto amount = -1;
    //! [Reporting what must not happen]
    Log::critical("negative amount", {{"amount", amount}});
    Log::assert_(amount >= 0, "negative amount", [&] { return Dictionary{{"amount", amount}}; });
    //! [Reporting what must not happen]

    EXPECT_THAT(capture.messages(Log::Level::critical), ElementsAre("negative amount", "negative amount"));
    EXPECT_THAT(properties(), ElementsAre(Dictionary{{"amount", -1}}, Dictionary{{"amount", -1}}));
}

TEST_F(LogCritical, ReachesTheCriticalHandlerWithAMadeUpErrorForAStaticText)
{
    const int line = __LINE__ + 1;
    Log::critical("broken");

    EXPECT_THAT(errors(), ElementsAre(NSError("CriticalTests broken", line, {{description, "broken"}})));
}

TEST_F(LogCritical, ReachesTheCriticalHandlerWithTheErrorItself)
{
    Log::critical(NSError("Feed", 3));
    Log::critical([] { return NSError("Feed", 4); });
    Log::critical(AnyError(NSError("Feed", 5)));
    Log::critical(std::make_exception_ptr(NSError("Feed", 6)));
    Log::critical(std::runtime_error("broke"));

    EXPECT_THAT(errors(),
        ElementsAre(NSError("Feed", 3), NSError("Feed", 4), NSError("Feed", 5), NSError("Feed", 6),
            NSError("runtime_error", 1, {{description, "broke"}})));
}

TEST_F(LogCritical, TakesPropertiesInEveryForm)
{
    const auto kept = Dictionary{{"k", 1}};
    const auto error = NSError("Feed", 3);

    Log::critical("text", {});
    Log::critical("text", {{"k", 1}});
    Log::critical("text", {{"k", 1}, {"l", "two"}});
    Log::critical("text", kept);
    Log::critical("text", [&] { return kept; });
    Log::critical(error, {{"k", 1}});
    Log::critical(error, [&] { return kept; });
    Log::critical([&] { return error; }, {{"k", 1}});

    EXPECT_THAT(properties(),
        ElementsAre(Dictionary{}, kept, Dictionary{{"k", 1}, {"l", "two"}}, kept, kept, kept, kept, kept));
}

TEST_F(LogCritical, EvaluatesItemAndPropertiesOnce)
{
    int items = 0;
    int properties = 0;

    Log::critical(
        [&] {
            ++items;
            return NSError("Feed", 3);
        },
        [&] {
            ++properties;
            return Dictionary{};
        });

    EXPECT_EQ(capture.count(), 1U);
    EXPECT_EQ(capture.criticalErrors().size(), 1U);
    EXPECT_EQ(items, 1);
    EXPECT_EQ(properties, 1);
}

TEST_F(LogCritical, GivesBothHandlersTheSameEvent)
{
    Log::critical("text", {{"k", 1}});

    ASSERT_EQ(capture.count(), 1U);
    ASSERT_EQ(capture.criticalErrors().size(), 1U);
    EXPECT_EQ(capture.criticalErrors()[0].event, capture.entries()[0].event);
}

TEST_F(LogErrorCriticalWhen, IsCriticalWhenTheConditionHolds)
{
    Log::error("text", {.criticalWhen = true});
    Log::error(NSError("Feed", 3), {.criticalWhen = [] { return true; }});

    EXPECT_EQ(capture.count(Log::Level::critical), 2U);
    EXPECT_EQ(capture.criticalErrors().size(), 2U);
    EXPECT_EQ(errors()[1], NSError("Feed", 3));
}

TEST_F(LogErrorCriticalWhen, IsAnErrorOtherwise)
{
    Log::error("text", {.criticalWhen = false});
    Log::error("text", {});
    Log::error([] { return NSError("Feed", 3); }, {.criticalWhen = [] { return false; }});

    EXPECT_EQ(capture.count(Log::Level::error), 3U);
    EXPECT_TRUE(capture.criticalErrors().empty());
}

TEST_F(LogErrorCriticalWhen, AsksTheConditionBeforeTheLevelAndTheItemAfterIt)
{
    int conditions = 0;
    int items = 0;
    const auto item = [&] {
        ++items;
        return NSError("Feed", 3);
    };
    Log::setLevel(Log::Level::critical);

    Log::error(item, {.criticalWhen = [&] { return ++conditions > 1; }});
    EXPECT_EQ(conditions, 1);
    EXPECT_EQ(items, 0);

    Log::error(item, {.criticalWhen = [&] { return ++conditions > 1; }});
    EXPECT_EQ(conditions, 2);
    EXPECT_EQ(items, 1);
    EXPECT_EQ(capture.count(Log::Level::critical), 1U);
}

TEST_F(LogErrorCriticalWhen, NamesTheCallersPlace)
{
    const int line = __LINE__ + 1;
    Log::error("text", {.criticalWhen = true});

    ASSERT_EQ(capture.count(), 1U);
    EXPECT_EQ(capture.entries()[0].event.line(), line);
    EXPECT_EQ(capture.entries()[0].event.filename(), "CriticalTests");
}

TEST_F(LogAssert, MakesNoEntryWhenTheConditionHolds)
{
    int evaluations = 0;

    Log::assert_(true, "text");
    Log::assert_([] { return true; }, "text", [&] { return Dictionary{{"n", ++evaluations}}; });

    EXPECT_EQ(capture.count(), 0U);
    EXPECT_EQ(evaluations, 0);
}

TEST_F(LogAssert, MakesACriticalEntryWhenItDoesNot)
{
    Log::assert_(false, "plain");
    Log::assert_([] { return false; }, "callable", {{"k", 1}});
    Log::assert_(false, NSError("Feed", 3));
    Log::assert_(false, NSError("Feed", 3), {{"k", 1}});
    Log::assert_(
        false, [] { return NSError("Feed", 3); },
        [] {
            return Dictionary{{"k", 1}};
        });

    EXPECT_THAT(capture.messages(Log::Level::critical),
        ElementsAre(
            "plain", "callable", "Domain: Feed Code: 3", "Domain: Feed Code: 3", "Domain: Feed Code: 3"));
    EXPECT_THAT(properties(),
        ElementsAre(
            Dictionary{}, Dictionary{{"k", 1}}, Dictionary{}, Dictionary{{"k", 1}}, Dictionary{{"k", 1}}));
    EXPECT_EQ(capture.criticalErrors().size(), 5U);
}

TEST_F(LogAssert, EvaluatesTheConditionOnce)
{
    int conditions = 0;

    Log::assert_(
        [&] {
            ++conditions;
            return false;
        },
        "text");

    EXPECT_EQ(conditions, 1);
}

TEST_F(LogAssert, TakesWhateverCountsAsTrueOrFalse)
{
    const auto present = std::make_unique<int>(1);
    const auto absent = std::unique_ptr<int>();

    Log::assert_(present, "present");
    Log::assert_(absent, "absent");

    EXPECT_THAT(capture.messages(), ElementsAre("absent"));
}
