#include "Orrenby/Foundation/NSError.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/World/Bundle.hpp"
#include "Orrenby/Standard/NestedError.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace app {

enum class LoadFailure { Offline = 3 };

} // namespace app

template <> inline constexpr bool orrenby::isErrorValue<app::LoadFailure> = true;

using namespace orrenby;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const auto descriptionKey = std::string(NSLocalizedDescriptionKey);

class SyncError : public GlobalError<SyncError> {
public:
    std::int64_t code() const { return 8; }
    std::string description() const override { return "sync"; }
};

class StoreError : public NSError {
public:
    StoreError()
        : NSError("StoreDomain", 5, {{"row", 12}})
    {}
};

class DeepStoreError : public StoreError {};

class UndeclaredError : public Error {
public:
    std::string description() const override { return "undeclared"; }
    std::unique_ptr<Error> clone() const override { return std::make_unique<UndeclaredError>(*this); }
};

/// All entries that are made while it lives.
class Entries {
public:
    Entries()
    {
        Log::setUseEmoji(false);
        Log::onEvent([this](Log::Level, const Log::DeferredEvent& event) { m_events.push_back(event()); });
        Log::onCriticalError([this](const Log::Event&, const NSError& error) { m_errors.push_back(error); });
    }
    ~Entries()
    {
        Log::onEvent({});
        Log::onCriticalError({});
    }

    const std::vector<Log::Event>& events() const { return m_events; }
    const std::vector<NSError>& errors() const { return m_errors; }

private:
    std::vector<Log::Event> m_events;
    std::vector<NSError> m_errors;
};

NSError refusal(const std::string& file, const std::string& printedValue)
{
    return NSError("NSErrorValidatingInitializerEncounteredSwiftError " + file, 0,
        {{"Swift.Error", printedValue},
            {descriptionKey, "NSError validating initializer encountered a Swift.Error"}});
}

Log::Event refusalEvent(int line)
{
    return Log::Event("C", "NSError", line, "init(validating:file:)", "[MAIN]",
        "NSError validating initializer encountered a Swift.Error");
}

} // namespace

TEST(MakeNSError, PutsTheDescriptionIntoTheUserInformation)
{
    //! [Making an error]
    const auto error = makeNSError({
        .domain = "com.example.sync",
        .code = 4,
        .description = "Nothing was saved.",
        .userInfo = Dictionary{{"attempts", 3}},
    });
    //! [Making an error]

    EXPECT_EQ(
        error, NSError("com.example.sync", 4, {{"attempts", 3}, {descriptionKey, "Nothing was saved."}}));
}

TEST(MakeNSError, DescribesByTheDomainForWantOfADescription)
{
    EXPECT_EQ(makeNSError({.domain = "D", .code = -1}), NSError("D", -1, {{descriptionKey, "D"}}));
}

TEST(MakeNSError, ReplacesADescriptionInTheUserInformation)
{
    const auto userInfo = Dictionary{{descriptionKey, "old"}, {"k", 1}};

    const auto described = makeNSError({.domain = "D", .description = "new", .userInfo = userInfo});
    const auto undescribed = makeNSError({.domain = "D", .userInfo = userInfo});

    EXPECT_EQ(described.userInfo(), (Dictionary{{descriptionKey, "new"}, {"k", 1}}));
    EXPECT_EQ(undescribed.userInfo(), (Dictionary{{descriptionKey, "D"}, {"k", 1}}));
}

TEST(MakeNSError, TakesAnEmptyDescriptionAsPresent)
{
    EXPECT_EQ(makeNSError({.domain = "D", .description = ""}).userInfo(), (Dictionary{{descriptionKey, ""}}));
}

TEST(MakeNSError, MakesSomethingFromNothing)
{
    EXPECT_EQ(makeNSError({}), NSError("", 0, {{descriptionKey, ""}}));
}

TEST(MakeNSError, TakesLiteralsOnly)
{
    static_assert(!std::is_convertible_v<std::string, OptionalStaticText>);
    static_assert(!std::is_convertible_v<const char*, OptionalStaticText>);
    static_assert(std::is_convertible_v<StaticText, OptionalStaticText>);
    EXPECT_FALSE((std::is_convertible_v<std::string, StaticText>));
}

TEST(ValidatedNSError, CopiesAPlatformError)
{
    const auto entries = Entries();
    //! [Validating a value]
    const auto original = NSError("D", 1, {{"k", 2}});
    const auto copy = validatedNSError(original, "Feed");
    //! [Validating a value]

    ASSERT_TRUE(copy);
    EXPECT_EQ(*copy, original);
    EXPECT_FALSE(copy->isSame(original));
    EXPECT_THAT(entries.events(), IsEmpty());
}

TEST(ValidatedNSError, CopiesSubclassesOfThePlatformError)
{
    const auto expected = NSError("StoreDomain", 5, {{"row", 12}});

    EXPECT_EQ(validatedNSError(StoreError(), "Feed"), expected);
    EXPECT_EQ(validatedNSError(DeepStoreError(), "Feed"), expected);
}

TEST(ValidatedNSError, TakesWhatDeclaresItself)
{
    const auto entries = Entries();
    Bundle::main().setIdentifier("com.example.app");

    const auto error = validatedNSError(SyncError(), "Feed");

    EXPECT_EQ(error, NSError("com.example.app.SyncError", 8, {{descriptionKey, "sync"}}));
    EXPECT_THAT(entries.events(), IsEmpty());
}

TEST(ValidatedNSError, RefusesAnErrorThatDeclaresNothingWithOneCriticalEntry)
{
    const auto entries = Entries();

    const auto error = validatedNSError(std::runtime_error("torn"), "Feed");

    EXPECT_EQ(error, std::nullopt);
    EXPECT_THAT(entries.events(), ElementsAre(refusalEvent(53)));
    EXPECT_THAT(entries.errors(), ElementsAre(refusal("Feed", "runtime_error(torn)")));
}

TEST(ValidatedNSError, RefusesUndeclaredErrorsOfEveryForm)
{
    const auto entries = Entries();

    EXPECT_EQ(validatedNSError(UndeclaredError(), "A"), std::nullopt);
    EXPECT_EQ(validatedNSError(app::LoadFailure::Offline, "B"), std::nullopt);
    EXPECT_EQ(validatedNSError(AnyError(std::runtime_error("torn")), "C"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::make_exception_ptr(7), "D"), std::nullopt);

    EXPECT_THAT(entries.errors(),
        ElementsAre(refusal("A", "UndeclaredError(undeclared)"), refusal("B", "LoadFailure(3)"),
            refusal("C", "runtime_error(torn)"), refusal("D", "Int32")));
}

TEST(ValidatedNSError, GivesNothingForWhatIsNoErrorAndKeepsSilent)
{
    const auto entries = Entries();

    EXPECT_EQ(validatedNSError(5, "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError("text", "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::string("text"), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(Any(), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(Any("text"), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(AnyError(5), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::exception_ptr(), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::optional<int>(5), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::make_shared<std::string>("text"), "Feed"), std::nullopt);
    EXPECT_THAT(entries.events(), IsEmpty());
}

TEST(ValidatedNSError, LooksIntoAny)
{
    const auto entries = Entries();
    const auto original = NSError("D", 1, {{"k", 2}});

    EXPECT_EQ(validatedNSError(Any(original), "A"), original);
    EXPECT_EQ(validatedNSError(Any(StoreError()), "A"), NSError("StoreDomain", 5, {{"row", 12}}));
    EXPECT_EQ(validatedNSError(Any(AnyError(original)), "A"), original);
    EXPECT_THAT(entries.events(), IsEmpty());

    EXPECT_EQ(validatedNSError(Any(std::runtime_error("torn")), "A"), std::nullopt);
    EXPECT_EQ(validatedNSError(Any(app::LoadFailure::Offline), "B"), std::nullopt);
    EXPECT_THAT(
        entries.errors(), ElementsAre(refusal("A", "runtime_error(torn)"), refusal("B", "LoadFailure(3)")));
}

TEST(ValidatedNSError, LooksIntoReferencesAndThrownExceptions)
{
    const auto original = NSError("D", 1);

    EXPECT_EQ(validatedNSError(std::make_shared<NSError>(original), "A"), original);
    EXPECT_EQ(validatedNSError(std::shared_ptr<Error>(original.clone()), "A"), original);
    EXPECT_EQ(validatedNSError(std::make_exception_ptr(original), "A"), original);
    EXPECT_EQ(validatedNSError(std::shared_ptr<Error>(), "A"), std::nullopt);
}

TEST(ValidatedNSError, GivesAFreshCopyHoweverTheErrorIsHeld)
{
    const auto original = NSError("D", 1);

    EXPECT_FALSE(validatedNSError(Any(original), "A")->isSame(original));
    EXPECT_FALSE(validatedNSError(AnyError(original), "A")->isSame(original));
    EXPECT_FALSE(validatedNSError(std::make_exception_ptr(original), "A")->isSame(original));
}

TEST(ValidatedNSError, SeesAnExceptionByItsDynamicType)
{
    const auto original = StoreError();
    const std::exception& exception = original;

    EXPECT_EQ(validatedNSError(exception, "Feed"), original);
}

TEST(ValidatedNSError, TakesAnErrorThatMayBeAbsent)
{
    const auto entries = Entries();
    const auto original = NSError("D", 1);

    EXPECT_EQ(validatedNSError(std::optional<NSError>(), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::optional<std::runtime_error>(), "Feed"), std::nullopt);
    EXPECT_EQ(validatedNSError(std::optional(original), "Feed"), original);
    EXPECT_THAT(entries.events(), IsEmpty());

    EXPECT_EQ(validatedNSError(std::optional(std::runtime_error("torn")), "Feed"), std::nullopt);
    EXPECT_THAT(entries.errors(), ElementsAre(refusal("Feed", "runtime_error(torn)")));
}

TEST(ValidatedNSError, RefusesInSilenceWhenNobodyListens)
{
    EXPECT_EQ(validatedNSError(std::runtime_error("torn"), "Feed"), std::nullopt);
}
