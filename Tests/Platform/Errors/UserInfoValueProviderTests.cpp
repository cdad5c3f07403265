#include "Orrenby/Platform/Errors/UserInfoValueProvider.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>

using namespace orrenby;

namespace {

UserInfoValueProvider answering(std::string answer)
{
    return [answer](const NSError&, std::string_view) { return answer; };
}

/// Asks for another provider at its end.
struct AskingAtItsEnd {
    ~AskingAtItsEnd() { *hasAsked = !NSError::userInfoValueProvider("elsewhere"); }
    bool* hasAsked;
};

} // namespace

TEST(UserInfoValueProvider, IsNoneByDefault)
{
    const auto provider = UserInfoValueProvider();

    EXPECT_FALSE(provider);
    EXPECT_TRUE(provider(NSError("D", 1), "key").isNull());
}

TEST(UserInfoValueProvider, AnswersWithErrorAndKey)
{
    const UserInfoValueProvider provider = [](const NSError& error, std::string_view key) {
        return error.domain() + std::to_string(error.code()) + std::string(key);
    };

    EXPECT_TRUE(provider);
    EXPECT_EQ(provider(NSError("D", 1), "key"), Any("D1key"));
}

TEST(UserInfoValueProvider, IsKeptForEachDomain)
{
    NSError::setUserInfoValueProvider("A", answering("from a"));
    NSError::setUserInfoValueProvider("B", answering("from b"));

    EXPECT_EQ(NSError::userInfoValueProvider("A")(NSError("A", 1), ""), Any("from a"));
    EXPECT_EQ(NSError::userInfoValueProvider("B")(NSError("B", 1), ""), Any("from b"));
    EXPECT_FALSE(NSError::userInfoValueProvider("C"));
}

TEST(UserInfoValueProvider, IsReplacedAndRemoved)
{
    NSError::setUserInfoValueProvider("A", answering("first"));
    NSError::setUserInfoValueProvider("A", answering("second"));
    EXPECT_EQ(NSError::userInfoValueProvider("A")(NSError("A", 1), ""), Any("second"));

    NSError::setUserInfoValueProvider("A", {});

    EXPECT_FALSE(NSError::userInfoValueProvider("A"));
}

TEST(UserInfoValueProvider, MayUseTheRegistryWhileItIsRemoved)
{
    bool hasAsked = false;
    auto asking = std::shared_ptr<AskingAtItsEnd>(new AskingAtItsEnd{&hasAsked});
    NSError::setUserInfoValueProvider(
        "A", [held = std::move(asking)](const NSError&, std::string_view) { return held->hasAsked; });

    NSError::setUserInfoValueProvider("A", {});

    EXPECT_TRUE(hasAsked);
}

TEST(UserInfoValueProvider, StaysUsableAfterItsRemoval)
{
    NSError::setUserInfoValueProvider("A", answering("kept"));
    const auto provider = NSError::userInfoValueProvider("A");

    NSError::setUserInfoValueProvider("A", {});

    EXPECT_EQ(provider(NSError("A", 1), ""), Any("kept"));
}

TEST(UserInfoValueProvider, IsSetAndReadFromSeveralThreads)
{
    auto thread = std::thread([] {
        for (int round = 0; round < 1'000; ++round)
            NSError::setUserInfoValueProvider(
                "A", round % 2 == 0 ? answering("here") : UserInfoValueProvider());
    });

    for (int round = 0; round < 1'000; ++round) {
        const auto answer = NSError::userInfoValueProvider("A")(NSError("A", 1), "");
        ASSERT_TRUE(answer.isNull() || answer == Any("here"));
    }
    thread.join();
}
