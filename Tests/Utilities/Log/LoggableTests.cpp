#include "Orrenby/Utilities/Log/Loggable.hpp"

#include "LogFixture.hpp"
#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include <gmock/gmock.h>
#include <map>

using namespace orrenby;
using testing::ElementsAre;

namespace {

//! [Choosing what is logged]
class Upload : public Loggable {
public:
    std::string message() const override { return "upload of 3 files"; }
    std::optional<NSError> error() const override { return NSError("Upload", 3); }
};
//! [Choosing what is logged]

class Plain : public Loggable {};

class Account : public PrintedLoggable<Account> {
public:
    std::string description() const { return "number 7"; }
};

class Refusal : public CustomNSError<Refusal>, public Loggable {
public:
    std::string description() const override { return "no"; }
};

struct Foreign {
    int number;
};

template <class T> std::string messageOf(const T& value) { return LoggableConformance<T>::message(value); }

} // namespace

template <> struct orrenby::LoggableConformance<Foreign> {
    static std::string message(const Foreign& value) { return "foreign " + std::to_string(value.number); }
    static std::optional<NSError> error(const Foreign& value) { return NSError("Foreign", value.number); }
};

using LoggableInTheLog = LogFixture;

TEST_F(LoggableInTheLog, GivesItsMessageAndItsError)
{
    Log::onCriticalError(capture);

    Log::_append([] { return false; }, Log::Level::critical, Upload(), Dictionary{});

    EXPECT_THAT(capture.messages(), ElementsAre("upload of 3 files"));
    ASSERT_EQ(capture.criticalErrors().size(), 1U);
    EXPECT_EQ(capture.criticalErrors()[0].error, NSError("Upload", 3));
}

TEST_F(LoggableInTheLog, CanBeConformedToFromOutside)
{
    Log::info(Foreign{5});

    EXPECT_THAT(capture.messages(), ElementsAre("foreign 5"));
    EXPECT_EQ(AnyLoggable(Foreign{5}).element(), AnyLoggable::Element::loggable);
    EXPECT_EQ(AnyLoggable(Foreign{5}).error(), NSError("Foreign", 5));
}

TEST(Loggable, NamesItsTypeAndHasNoErrorByDefault)
{
    EXPECT_EQ(Plain().message(), "Plain");
    EXPECT_EQ(Plain().error(), std::nullopt);
}

TEST(Loggable, PrintsInFullWhenItsTypeAsksForIt)
{
    EXPECT_EQ(Account().message(), "Account(number 7)");
    EXPECT_EQ(Account().error(), std::nullopt);
}

TEST(Loggable, PrintsAnErrorInFullByDefault)
{
    const auto refusal = Refusal();
    const Loggable& loggable = refusal;

    EXPECT_EQ(loggable.message(), "Refusal(no)");
}

TEST(Loggable, HasTextsAsTheyAre)
{
    EXPECT_EQ(messageOf(std::string("a\nb")), "a\nb");
    EXPECT_EQ(messageOf(std::string_view("view")), "view");
    EXPECT_EQ(messageOf(StaticText("static")), "static");
    EXPECT_EQ(LoggableConformance<std::string>::error(""), std::nullopt);
}

TEST(Loggable, HasPlatformErrorsWithTheirMessageAndThemselves)
{
    const auto error = NSError("D", 2);

    EXPECT_EQ(messageOf(error), "Domain: D Code: 2");
    EXPECT_TRUE(LoggableConformance<NSError>::error(error)->isSame(error));
}

TEST(Loggable, HasResultsAndDictionariesInFull)
{
    using Outcome = Result<int, NSError>;

    EXPECT_EQ(messageOf(Outcome::success(1)), "success(1)");
    EXPECT_EQ(LoggableConformance<Outcome>::error(Outcome::failure(NSError("D", 2))), std::nullopt);
    EXPECT_EQ(messageOf(Dictionary{{"k", "v"}}), "[\"k\": \"v\"]");
    EXPECT_EQ(messageOf(std::map<std::string, int>{{"k", 1}}), "[\"k\": 1]");
}
