#include "Orrenby/Utilities/Log/AnyLoggable.hpp"

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <system_error>

using namespace orrenby;
using Element = AnyLoggable::Element;

namespace {

class Paused : public Loggable {
public:
    std::string message() const override { return "paused"; }
};

class Declared : public CustomNSError<Declared> {
public:
    static std::string errorDomain() { return "DeclaredDomain"; }
    std::int64_t errorCode() const { return 9; }
    std::string description() const override { return "declared"; }
};

class Described : public CustomNSError<Described> {
public:
    Dictionary errorUserInfo() const { return {{std::string(NSLocalizedDescriptionKey), "told"}}; }
    std::string description() const override { return "described"; }
};

class Undeclared : public Error {
public:
    std::string description() const override { return "undeclared"; }
    std::unique_ptr<Error> clone() const override { return std::make_unique<Undeclared>(*this); }
};

class LoggedFailure : public std::runtime_error, public Loggable {
public:
    LoggedFailure()
        : std::runtime_error("what")
    {}
    std::string message() const override { return "logged failure"; }
};

enum class Failure { timedOut = 4 };

struct Foreign {
    int number;
};

class ForeignFailure : public std::exception {
public:
    const char* what() const noexcept override { return "what"; }
};

class Unmovable {
public:
    Unmovable() = default;
    Unmovable(const Unmovable&) = delete;
    std::string description() const { return "stays"; }
};

struct Seen {
    Element element;
    std::string message;
    std::optional<NSError> error;
    friend bool operator==(const Seen&, const Seen&) = default;
    friend void PrintTo(const Seen& seen, std::ostream* stream)
    {
        *stream << static_cast<int>(seen.element) << " " << seen.message << " "
                << (seen.error ? seen.error->description() : "no error");
    }
};

template <class Value> Seen seen(Value&& value)
{
    const auto loggable = AnyLoggable(std::forward<Value>(value));
    return {loggable.element(), loggable.message(), loggable.error()};
}

NSError described(std::string_view domain, std::int64_t code, std::string_view text)
{
    return NSError(domain, code, {{std::string(NSLocalizedDescriptionKey), text}});
}

} // namespace

template <> inline constexpr bool orrenby::isErrorValue<Failure> = true;

template <> struct orrenby::LoggableConformance<Foreign> {
    static std::string message(const Foreign& value) { return "foreign " + std::to_string(value.number); }
    static std::optional<NSError> error(const Foreign& value) { return NSError("Foreign", value.number); }
};

template <> struct orrenby::LoggableConformance<ForeignFailure> {
    static std::string message(const ForeignFailure&) { return "foreign failure"; }
    static std::optional<NSError> error(const ForeignFailure&) { return std::nullopt; }
};

TEST(AnyLoggable, AdaptsAnyValue)
{
    //! [Adapting any value]
    EXPECT_EQ(AnyLoggable("request failed").message(), "request failed");
    EXPECT_EQ(AnyLoggable(std::vector{1, 2}).message(), "[1, 2]");
    EXPECT_EQ(AnyLoggable(NSError("Feed", 3)).message(), "Domain: Feed Code: 3");
    //! [Adapting any value]
}

TEST(AnyLoggable, HoldsTextsAsLoggable)
{
    const auto* pointer = "pointer";

    EXPECT_EQ(seen("literal"), (Seen{Element::loggable, "literal", {}}));
    EXPECT_EQ(seen(pointer), (Seen{Element::loggable, "pointer", {}}));
    EXPECT_EQ(seen(std::string("text")), (Seen{Element::loggable, "text", {}}));
    EXPECT_EQ(seen(std::string_view("view")), (Seen{Element::loggable, "view", {}}));
    EXPECT_EQ(seen(StaticText("static")), (Seen{Element::loggable, "static", {}}));
    EXPECT_EQ(seen(std::string()), (Seen{Element::loggable, "", {}}));
}

TEST(AnyLoggable, KeepsItsOwnCopyOfAText)
{
    auto text = std::string("before");
    const auto loggable = AnyLoggable(std::string_view(text));

    text = "after ";

    EXPECT_EQ(loggable.message(), "before");
}

TEST(AnyLoggable, HoldsOtherLoggablesAsLoggable)
{
    EXPECT_EQ(seen(Paused()), (Seen{Element::loggable, "paused", {}}));
    EXPECT_EQ(seen(Dictionary{{"k", 1}}), (Seen{Element::loggable, "[\"k\": 1]", {}}));
    EXPECT_EQ(seen(Result<int, NSError>::success(1)), (Seen{Element::loggable, "success(1)", {}}));
    EXPECT_EQ(seen(LoggedFailure()), (Seen{Element::loggable, "logged failure", {}}));
}

TEST(AnyLoggable, HoldsAPlatformErrorAsLoggableAndGivesTheVeryObject)
{
    const auto error = NSError("D", 2);
    const auto loggable = AnyLoggable(error);

    EXPECT_EQ(loggable.element(), Element::loggable);
    EXPECT_EQ(loggable.message(), "Domain: D Code: 2");
    EXPECT_TRUE(loggable.error()->isSame(error));
}

TEST(AnyLoggable, HoldsErrorsThatDeclareADomainAsCustomErrors)
{
    EXPECT_EQ(seen(Declared()),
        (Seen{Element::customError, "Domain: DeclaredDomain Code: 9", NSError("DeclaredDomain", 9)}));
    EXPECT_EQ(seen(Described()), (Seen{Element::customError, "told", described("Described", 1, "told")}));
}

TEST(AnyLoggable, HoldsOtherErrorsInFull)
{
    EXPECT_EQ(seen(std::runtime_error("broke")),
        (Seen{Element::error, "runtime_error(broke)", described("runtime_error", 1, "broke")}));
    EXPECT_EQ(seen(Undeclared()),
        (Seen{Element::error, "Undeclared(undeclared)", described("Undeclared", 1, "undeclared")}));
    EXPECT_EQ(seen(Failure::timedOut), (Seen{Element::error, "Failure(4)", NSError("Failure", 4)}));
}

TEST(AnyLoggable, HoldsEverythingElseAsUnknown)
{
    EXPECT_EQ(seen(5), (Seen{Element::unknown, "5", {}}));
    EXPECT_EQ(seen(true), (Seen{Element::unknown, "true", {}}));
    EXPECT_EQ(seen(std::vector<std::string>{"a"}), (Seen{Element::unknown, "[\"a\"]", {}}));
    EXPECT_EQ(seen(std::optional<int>()), (Seen{Element::unknown, "none", {}}));
}

TEST(AnyLoggable, LooksThroughAnyErrors)
{
    EXPECT_EQ(seen(AnyError(Declared())), seen(Declared()));
    EXPECT_EQ(seen(AnyError(NSError("D", 2))), seen(NSError("D", 2)));
    EXPECT_EQ(seen(AnyError(LoggedFailure())), seen(LoggedFailure()));
    EXPECT_EQ(seen(AnyError(Undeclared())), seen(Undeclared()));
    EXPECT_EQ(seen(AnyError(Failure::timedOut)), seen(Failure::timedOut));
    EXPECT_EQ(seen(AnyError(std::string("text"))).element, Element::error);
    EXPECT_EQ(seen(AnyError(std::string("text"))).message, "\"text\"");
}

TEST(AnyLoggable, LooksThroughCaughtExceptions)
{
    EXPECT_EQ(seen(std::make_exception_ptr(Declared())), seen(Declared()));
    EXPECT_EQ(seen(std::make_exception_ptr(std::runtime_error("broke"))), seen(std::runtime_error("broke")));
    EXPECT_EQ(seen(std::make_exception_ptr(5)).element, Element::error);
    EXPECT_EQ(seen(std::exception_ptr()), (Seen{Element::unknown, "none", {}}));
}

TEST(AnyLoggable, SeesAnExceptionByItsDynamicClass)
{
    const auto declared = Declared();
    const auto broken = std::system_error(std::make_error_code(std::errc::broken_pipe));
    const std::exception& declaredBase = declared;
    const Error& errorBase = declared;
    const std::runtime_error& brokenBase = broken;

    EXPECT_EQ(seen(declaredBase), seen(declared));
    EXPECT_EQ(seen(errorBase), seen(declared));
    EXPECT_EQ(seen(brokenBase), seen(broken));
    EXPECT_EQ(seen(broken).error->domain(), "generic");
}

TEST(AnyLoggable, OutlivesAnExceptionThatItSawAsABaseClass)
{
    auto declared = std::make_unique<Declared>();
    const auto loggable = AnyLoggable(static_cast<const std::exception&>(*declared));

    declared.reset();

    EXPECT_EQ(loggable.element(), Element::customError);
    EXPECT_EQ(loggable.message(), "Domain: DeclaredDomain Code: 9");
    EXPECT_EQ(loggable.error(), NSError("DeclaredDomain", 9));
}

TEST(AnyLoggable, LooksThroughReferencesToTheDynamicClass)
{
    EXPECT_EQ(seen(Ref<Loggable>(std::make_shared<Paused>())), seen(Paused()));
    EXPECT_EQ(seen(Ref<std::exception>(std::make_shared<Declared>())), seen(Declared()));
    EXPECT_EQ(seen(Ref<const Error>(std::make_shared<Undeclared>())), seen(Undeclared()));
    EXPECT_EQ(seen(std::make_shared<NSError>("D", 2)), seen(NSError("D", 2)));
    EXPECT_EQ(seen(std::make_shared<int>(5)), (Seen{Element::unknown, "5", {}}));
    EXPECT_EQ(seen(Ref<Loggable>()), (Seen{Element::unknown, "none", {}}));
}

TEST(AnyLoggable, UnwrapsAnAny)
{
    EXPECT_EQ(seen(Any("text")), (Seen{Element::loggable, "text", {}}));
    EXPECT_EQ(seen(Any(Dictionary{{"k", 1}})), (Seen{Element::loggable, "[\"k\": 1]", {}}));
    EXPECT_EQ(seen(Any(NSError("D", 2))), seen(NSError("D", 2)));
    EXPECT_EQ(seen(Any(Declared())), seen(Declared()));
    EXPECT_EQ(seen(Any(AnyError(Declared()))), seen(Declared()));
    EXPECT_EQ(seen(Any(std::make_exception_ptr(Declared()))), seen(Declared()));
    EXPECT_EQ(seen(Any(std::runtime_error("broke"))), seen(std::runtime_error("broke")));
    EXPECT_EQ(seen(Any(Paused())), seen(Paused()));
    EXPECT_EQ(seen(Any(Ref<Loggable>(std::make_shared<Paused>()))), seen(Paused()));
    EXPECT_EQ(seen(Any(Failure::timedOut)).element, Element::error);
    EXPECT_EQ(seen(Any(5)), (Seen{Element::unknown, "5", {}}));
    EXPECT_EQ(seen(Any()), (Seen{Element::unknown, "<null>", {}}));
}

TEST(AnyLoggable, FollowsTheConformanceOfWhatAnAnyHolds)
{
    const auto expected = Seen{Element::loggable, "foreign 3", NSError("Foreign", 3)};

    EXPECT_EQ(seen(Foreign{3}), expected);
    EXPECT_EQ(seen(Any(Foreign{3})), expected);
    EXPECT_EQ(seen(Any(std::optional(Foreign{3}))), expected);
    EXPECT_EQ(seen(Any(std::make_shared<Foreign>(Foreign{3}))), expected);
    EXPECT_EQ(seen(Any(std::make_shared<const Foreign>(Foreign{3}))), expected);
    EXPECT_EQ(seen(*Dictionary{{"k", Foreign{3}}}.find("k")), expected);
}

TEST(AnyLoggable, TakesTheOutcomesAndMapsOfAnAnyForLoggable)
{
    using Outcome = Result<int, NSError>;

    EXPECT_EQ(seen(Any(Outcome::success(1))), seen(Outcome::success(1)));
    EXPECT_EQ(seen(Any(Outcome::failure(NSError("D", 2)))), seen(Outcome::failure(NSError("D", 2))));
    EXPECT_EQ(seen(Any(std::map<int, int>{{1, 2}})), seen(std::map<int, int>{{1, 2}}));
    EXPECT_EQ(seen(Any(std::make_shared<std::string>("text"))), (Seen{Element::loggable, "text", {}}));
    EXPECT_EQ(seen(Any(std::make_shared<Dictionary>())), (Seen{Element::loggable, "[:]", {}}));
}

TEST(AnyLoggable, FollowsTheConformanceOfAnExceptionOnlyWhereItsClassIsKnown)
{
    const auto expected = Seen{Element::loggable, "foreign failure", {}};
    const auto asReference = seen(std::make_shared<ForeignFailure>());

    EXPECT_EQ(seen(ForeignFailure()), expected);
    EXPECT_EQ(seen(Any(ForeignFailure())), expected);
    EXPECT_EQ(asReference.element, Element::error);
    EXPECT_EQ(seen(Any(std::make_shared<ForeignFailure>())), asReference);
    EXPECT_EQ(seen(AnyError(ForeignFailure())).element, Element::error);
}

TEST(AnyLoggable, KeepsTheValueThatAnAnyHoldsWhateverItIsLoggedAs)
{
    const Any foreign = Foreign{3};
    const Any outcome = Result<int, NSError>::success(1);

    ASSERT_NE(foreign.get<Foreign>(), nullptr);
    EXPECT_EQ(foreign.get<Foreign>()->number, 3);
    EXPECT_EQ(foreign.typeName(), "Foreign");
    EXPECT_EQ((outcome.cast<Result<int, NSError>>()), (Result<int, NSError>::success(1)));
}

TEST(AnyLoggable, IsTakenOverByAnotherOne)
{
    const auto first = AnyLoggable(Declared());
    const Loggable& base = first;

    EXPECT_EQ(seen(AnyLoggable(first)), seen(Declared()));
    EXPECT_EQ(seen(base), seen(Declared()));
    EXPECT_EQ(seen(Any(first)), seen(Declared()));
}

TEST(AnyLoggable, ReadsAValueThatCannotBeCopiedAtOnce)
{
    const auto unmovable = Unmovable();

    EXPECT_EQ(seen(unmovable), (Seen{Element::unknown, "Unmovable(stays)", {}}));
}

TEST(AnyLoggable, AsksAnObjectAtEachCall)
{
    struct Counter : Loggable {
        int count = 0;
        std::string message() const override { return std::to_string(count); }
    };
    const auto counter = std::make_shared<Counter>();
    const auto loggable = AnyLoggable(counter);

    counter->count = 2;

    EXPECT_EQ(loggable.message(), "2");
}
