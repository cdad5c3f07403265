#include "Orrenby/Utilities/Log/ErrorMessage.hpp"

#include <gmock/gmock.h>
#include <map>
#include <string>

using namespace orrenby;

namespace {

const auto descriptionKey = std::string(NSLocalizedDescriptionKey);
const auto failureKey = std::string(NSLocalizedFailureErrorKey);
const auto reasonKey = std::string(NSLocalizedFailureReasonErrorKey);

std::string messageOf(Dictionary userInfo)
{
    return Log::errorMessage(NSError("Own", 7, std::move(userInfo)));
}

/// Answers for a domain of its own, so that cases of one process do not meet.
std::string messageFromProvider(std::string_view domain, std::map<std::string, Any, std::less<>> answers)
{
    NSError::setUserInfoValueProvider(domain, [answers](const NSError&, std::string_view key) {
        const auto answer = answers.find(key);
        return answer != answers.end() ? answer->second : Any();
    });
    return Log::errorMessage(NSError(domain, 7));
}

} // namespace

TEST(LogErrorMessage, IsTheDescription)
{
    EXPECT_EQ(messageOf({{descriptionKey, "D"}, {failureKey, "F"}, {reasonKey, "R"}}), "D");
}

TEST(LogErrorMessage, IsAnEmptyDescription) { EXPECT_EQ(messageOf({{descriptionKey, ""}}), ""); }

TEST(LogErrorMessage, IsFailureAndReasonWithoutBlanksAfterTheColons)
{
    EXPECT_EQ(messageOf({{failureKey, "F"}, {reasonKey, "R"}}), "Error:F Reason:R");
}

TEST(LogErrorMessage, IsTheFailureAlone) { EXPECT_EQ(messageOf({{failureKey, "F"}}), "F"); }

TEST(LogErrorMessage, NeedsAFailureForAReason)
{
    EXPECT_EQ(messageOf({{reasonKey, "R"}}), "Domain: Own Code: 7");
}

TEST(LogErrorMessage, PassesOverValuesThatAreNoTexts)
{
    EXPECT_EQ(messageOf({{descriptionKey, 1}, {failureKey, "F"}, {reasonKey, Any()}}), "F");
}

TEST(LogErrorMessage, IsDomainAndCodeWithoutAnyText)
{
    EXPECT_EQ(messageOf({}), "Domain: Own Code: 7");
    EXPECT_EQ(
        Log::errorMessage(NSError("", -9223372036854775807 - 1)), "Domain:  Code: -9223372036854775808");
}

TEST(LogErrorMessage, IsTheDescriptionOfTheProvider)
{
    EXPECT_EQ(messageFromProvider("Describing", {{descriptionKey, "PD"}, {failureKey, "PF"}}), "PD");
}

TEST(LogErrorMessage, IsFailureAndReasonOfTheProvider)
{
    EXPECT_EQ(messageFromProvider("Failing", {{failureKey, "PF"}, {reasonKey, "PR"}}), "Error:PF Reason:PR");
    EXPECT_EQ(messageFromProvider("FailingOnly", {{failureKey, "PF"}}), "PF");
}

TEST(LogErrorMessage, IsDomainAndCodeWhenTheProviderKnowsNothing)
{
    EXPECT_EQ(messageFromProvider("Silent", {}), "Domain: Silent Code: 7");
}

TEST(LogErrorMessage, AsksTheProviderOnlyWhenTheErrorHasNoTextItself)
{
    int calls = 0;
    NSError::setUserInfoValueProvider("Counting", [&calls](const NSError&, std::string_view) {
        ++calls;
        return Any("provided");
    });

    const auto message = Log::errorMessage(NSError("Counting", 1, {{failureKey, "F"}}));

    NSError::setUserInfoValueProvider("Counting", {});
    EXPECT_EQ(message, "F");
    EXPECT_EQ(calls, 0);
}
