#include "Orrenby/Standard/NestedError.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/World/Bundle.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <string>

using namespace orrenby;

namespace {

//! [Declaring a nested error]
class Loader {
public:
    class Reason : public NestedError<Reason> {
    public:
        enum class Case { Offline = 3, Refused = 5 };
        using ParentType = Loader;

        Reason(Case value)
            : m_case(value)
        {}

        Case rawValue() const { return m_case; }
        std::string description() const override { return m_case == Case::Offline ? "offline" : "refused"; }

        friend bool operator==(const Reason&, const Reason&) = default;

    private:
        Case m_case;
    };
};
//! [Declaring a nested error]

class TopError : public GlobalError<TopError> {
public:
    explicit TopError(std::int64_t code)
        : m_code(code)
    {}
    std::int64_t code() const { return m_code; }
    std::string description() const override { return "top"; }

private:
    std::int64_t m_code;
};

class NumberedError : public GlobalError<NumberedError> {
public:
    int rawValue() const { return -7; }
    std::string description() const override { return "numbered"; }
};

/// Says everything that can be said.
class FullError : public GlobalError<FullError> {
public:
    std::int64_t code() const { return 2; }
    std::string description() const override { return "full"; }
    std::optional<NSError> underlyingError() const { return underlying; }
    Dictionary additionalUserInfo() const { return additional; }

    std::optional<NSError> underlying;
    Dictionary additional;
};

class RenamedError : public NestedError<RenamedError> {
public:
    static constexpr std::string_view printedTypeName = "Renamed";
    using ParentType = std::string;
    std::int64_t code() const { return 1; }
    std::string description() const override { return "renamed"; }
};

const auto descriptionKey = std::string(NSLocalizedDescriptionKey);
const auto underlyingKey = std::string(NSUnderlyingErrorKey);

} // namespace

TEST(NestedError, HasTheDomainOfParentAndTypeWithoutABundleIdentifier)
{
    Bundle::main().setIdentifier(std::nullopt);

    EXPECT_EQ(Loader::Reason::errorDomain(), "Loader.Reason");
    EXPECT_EQ(TopError::errorDomain(), "TopError");
}

TEST(NestedError, HasADomainThatBeginsWithTheBundleIdentifier)
{
    Bundle::main().setIdentifier("com.example.app");

    EXPECT_EQ(Loader::Reason::errorDomain(), "com.example.app.Loader.Reason");
    EXPECT_EQ(TopError::errorDomain(), "com.example.app.TopError");
}

TEST(NestedError, TakesAnEmptyBundleIdentifierAsPresent)
{
    Bundle::main().setIdentifier("");

    EXPECT_EQ(Loader::Reason::errorDomain(), ".Loader.Reason");
    EXPECT_EQ(TopError::errorDomain(), ".TopError");
}

TEST(NestedError, FollowsTheBundleIdentifier)
{
    Bundle::main().setIdentifier("com.example.app");
    const auto before = TopError(1).nsError();

    Bundle::main().setIdentifier(std::nullopt);

    EXPECT_EQ(before.domain(), "com.example.app.TopError");
    EXPECT_EQ(TopError(1).nsError().domain(), "TopError");
}

TEST(NestedError, UsesThePrintedNamesOfItsTypes) { EXPECT_EQ(RenamedError::errorDomain(), "String.Renamed"); }

TEST(NestedError, TakesTheRawValueAsItsCode)
{
    EXPECT_EQ(Loader::Reason(Loader::Reason::Case::Offline).code(), 3);
    EXPECT_EQ(Loader::Reason(Loader::Reason::Case::Refused).errorCode(), 5);
    EXPECT_EQ(NumberedError().nsError().code(), -7);
}

TEST(NestedError, TakesTheDeclaredCode)
{
    EXPECT_EQ(TopError(0).errorCode(), 0);
    EXPECT_EQ(TopError(std::numeric_limits<std::int64_t>::max()).nsError().code(),
        std::numeric_limits<std::int64_t>::max());
}

TEST(NestedError, PutsItsDescriptionIntoTheUserInformation)
{
    EXPECT_EQ(TopError(1).errorUserInfo(), (Dictionary{{descriptionKey, "top"}}));
}

TEST(NestedError, ReplacesAnAdditionalDescription)
{
    auto error = FullError();
    error.additional = {{descriptionKey, "additional"}, {"k", 1}};

    EXPECT_EQ(error.errorUserInfo(), (Dictionary{{descriptionKey, "full"}, {"k", 1}}));
}

TEST(NestedError, AddsJustDescriptionAndUnderlyingErrorToTheAdditionalEntries)
{
    const auto cause = NSError("Cause", 9);
    auto error = FullError();
    error.underlying = cause;
    error.additional = {{"a", 1}, {"b", "two"}};

    const auto expected = Dictionary{
        {"a", 1}, {"b", "two"}, {descriptionKey, "full"}, {underlyingKey, cause}};
    EXPECT_EQ(error.errorUserInfo(), expected);
    EXPECT_EQ(error.nsError(), NSError("FullError", 2, expected));
    EXPECT_TRUE(error.nsError().underlyingError()->isSame(cause));
}

TEST(NestedError, ReplacesAnAdditionalUnderlyingErrorOnlyByAPresentOne)
{
    auto error = FullError();
    error.additional = {{underlyingKey, NSError("Additional", 1)}};
    EXPECT_EQ(error.nsError().underlyingError(), NSError("Additional", 1));

    error.underlying = NSError("Cause", 9);

    EXPECT_EQ(error.nsError().underlyingError(), NSError("Cause", 9));
}

TEST(NestedError, DeclaresItselfHoweverItIsHeld)
{
    const auto expected = NSError("Loader.Reason", 5, {{descriptionKey, "refused"}});
    const auto reason = Loader::Reason(Loader::Reason::Case::Refused);

    EXPECT_EQ(reason.customNSError(), expected);
    EXPECT_EQ(AnyError(reason).customNSError(), expected);
    EXPECT_EQ(reason.clone()->nsError(), expected);
}

TEST(NestedError, ComparesAsTheTypeDeclares)
{
    using Case = Loader::Reason::Case;

    EXPECT_TRUE(Loader::Reason(Case::Offline) == Loader::Reason(Case::Offline));
    EXPECT_FALSE(Loader::Reason(Case::Offline) == Loader::Reason(Case::Refused));
}

TEST(NestedError, IsThrownAndCaughtByType)
{
    try {
        throw Loader::Reason(Loader::Reason::Case::Offline);
    } catch (const Loader::Reason& reason) {
        EXPECT_EQ(reason.rawValue(), Loader::Reason::Case::Offline);
    }
}
