#include "Orrenby/Platform/Errors/NSError.hpp"

#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <thread>
#include <unordered_set>

using namespace orrenby;

namespace {

const auto descriptionKey = std::string(NSLocalizedDescriptionKey);
const auto underlyingKey = std::string(NSUnderlyingErrorKey);

class StoreError : public NSError {
public:
    explicit StoreError(std::int64_t code)
        : NSError("StoreDomain", code)
    {}
    std::unique_ptr<Error> clone() const override { return std::make_unique<StoreError>(*this); }
};

} // namespace

TEST(NSError, HoldsDomainCodeAndUserInformation)
{
    //! [Reading a platform error]
    const auto cause = NSError(NSURLErrorDomain, -1009);
    const auto error = NSError("com.example.sync", 4,
        {{std::string(NSLocalizedDescriptionKey), "Nothing was saved."},
            {std::string(NSUnderlyingErrorKey), cause}});

    const bool isOffline = error.underlyingError() == cause;
    const auto message = error.localizedDescription();
    //! [Reading a platform error]

    EXPECT_EQ(error.domain(), "com.example.sync");
    EXPECT_EQ(error.code(), 4);
    EXPECT_EQ(error.userInfo().size(), 2u);
    EXPECT_TRUE(isOffline);
    EXPECT_EQ(message, "Nothing was saved.");
}

TEST(NSError, KeepsExtremeCodesAndEmptyDomains)
{
    const auto error = NSError("", std::numeric_limits<std::int64_t>::min());

    EXPECT_EQ(error.domain(), "");
    EXPECT_EQ(error.code(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(error.description(), "Error Domain= Code=-9223372036854775808");
}

TEST(NSError, ComparesByDomainCodeAndUserInformation)
{
    const auto error = NSError("D", 1, {{"a", 1}, {"b", 2}});

    EXPECT_EQ(error, NSError("D", 1, {{"b", 2}, {"a", 1}}));
    EXPECT_FALSE(error == NSError("E", 1, {{"a", 1}, {"b", 2}}));
    EXPECT_FALSE(error == NSError("D", 2, {{"a", 1}, {"b", 2}}));
    EXPECT_FALSE(error == NSError("D", 1, {{"a", 1}, {"b", 3}}));
    EXPECT_FALSE(error == NSError("D", 1));
}

TEST(NSError, ComparesUnderlyingErrorsByValue)
{
    const auto first = NSError("D", 1, {{underlyingKey, NSError("Cause", 2)}});
    const auto second = NSError("D", 1, {{underlyingKey, NSError("Cause", 2)}});
    const auto third = NSError("D", 1, {{underlyingKey, NSError("Cause", 3)}});

    EXPECT_EQ(first, second);
    EXPECT_FALSE(first == third);
}

TEST(NSError, SharesOneObjectWithItsCopies)
{
    const auto error = NSError("D", 1);
    const auto copy = error;

    EXPECT_TRUE(copy.isSame(error));
    EXPECT_TRUE(error.nsError().isSame(error));
    EXPECT_FALSE(NSError("D", 1).isSame(error));
}

TEST(NSError, TakesOverAnotherObjectByAssignment)
{
    auto error = NSError("D", 1);
    EXPECT_STREQ(error.what(), "Error Domain=D Code=1");

    error = NSError("E", 2);

    EXPECT_STREQ(error.what(), "Error Domain=E Code=2");
}

TEST(NSError, StaysWholeWhenItIsMovedFrom)
{
    auto error = NSError("D", 1);

    const auto taken = std::move(error);

    EXPECT_EQ(taken, NSError("D", 1));
    EXPECT_EQ(error.domain(), "D"); // NOLINT(bugprone-use-after-move): the point of this test
}

TEST(NSError, PrintsWhatItKnows)
{
    EXPECT_EQ(NSError("D", -3).description(), "Error Domain=D Code=-3");
    EXPECT_EQ(NSError("D", 1, {{"k", 2}}).description(), "Error Domain=D Code=1 UserInfo=[\"k\": 2]");
    EXPECT_EQ(NSError("D", 1, {{descriptionKey, "gone"}}).description(),
        "Error Domain=D Code=1 \"gone\" UserInfo=[\"NSLocalizedDescription\": \"gone\"]");
    EXPECT_EQ(NSError("D", 1).debugDescription(), "NSError(Error Domain=D Code=1)");
}

TEST(NSError, NamesDomainAndCodeForWantOfADescription)
{
    EXPECT_EQ(NSError("D", 7).localizedDescription(), "The operation could not be completed. (D error 7.)");
    EXPECT_EQ(NSError("D", 7, {{descriptionKey, 5}}).localizedDescription(),
        "The operation could not be completed. (D error 7.)");
}

TEST(NSError, TakesAnEmptyDescriptionAsOne)
{
    EXPECT_EQ(NSError("D", 7, {{descriptionKey, ""}}).localizedDescription(), "");
}

TEST(NSError, AsksTheProviderOfItsDomainForAMissingDescription)
{
    NSError::setUserInfoValueProvider("ProvidedDomain", [](const NSError& error, std::string_view key) {
        return key == NSLocalizedDescriptionKey ? Any("code " + std::to_string(error.code())) : Any();
    });

    EXPECT_EQ(NSError("ProvidedDomain", 5).localizedDescription(), "code 5");
    EXPECT_EQ(NSError("ProvidedDomain", 5, {{descriptionKey, "own"}}).localizedDescription(), "own");
    EXPECT_EQ(NSError("OtherDomain", 5).localizedDescription(),
        "The operation could not be completed. (OtherDomain error 5.)");
}

TEST(NSError, HasNoUnderlyingErrorUnlessOneIsGiven)
{
    EXPECT_EQ(NSError("D", 1).underlyingError(), std::nullopt);
    EXPECT_EQ(NSError("D", 1, {{underlyingKey, "a text"}}).underlyingError(), std::nullopt);
}

TEST(NSError, DeclaresItself)
{
    const auto error = NSError("D", 1);

    ASSERT_TRUE(error.customNSError());
    EXPECT_TRUE(error.customNSError()->isSame(error));
}

TEST(NSError, MayBeDerivedFrom)
{
    const auto error = StoreError(3);

    const auto clone = error.clone();

    EXPECT_NE(dynamic_cast<const StoreError*>(clone.get()), nullptr);
    EXPECT_EQ(error, NSError("StoreDomain", 3));
    EXPECT_TRUE(clone->nsError().isSame(error));
    EXPECT_EQ(error.debugDescription(), "StoreError(Error Domain=StoreDomain Code=3)");
}

TEST(NSError, IsThrownAndCaught)
{
    try {
        throw StoreError(3);
    } catch (const NSError& error) {
        EXPECT_EQ(error, NSError("StoreDomain", 3));
    }
}

TEST(NSError, HashesEqualErrorsAlike)
{
    const auto errors = std::unordered_set<NSError>{NSError("D", 1), NSError("D", 2), NSError("D", 1)};

    EXPECT_EQ(errors.size(), 2u);
}

TEST(NSError, IsSharedByThreads)
{
    const auto error = NSError("D", 1, {{"k", 2}});
    std::vector<std::thread> threads;

    for (int count = 0; count < 4; ++count)
        threads.emplace_back([copy = error] {
            for (int round = 0; round < 100; ++round)
                ASSERT_EQ(NSError(copy).userInfo().size(), 1u);
        });
    for (auto& thread : threads)
        thread.join();
}
