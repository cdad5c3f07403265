#include "Examples/Fieldbook/SignIn/SignInWorker.hpp"

#include "Examples/Fieldbook/Tests/ToldNews.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::ElementsAre;

class SignInWorkerTest : public ::testing::Test {
protected:
    static void post(orrenby::Any address)
    {
        orrenby::NotificationCenter::defaultCenter()->post(
            userShouldSignIn, {}, {{addressKey, std::move(address)}});
    }

    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
    orrenby::Ref<SignInWorker> worker = orrenby::make<SignInWorker>(session);
    std::vector<FeedNews> told;
    orrenby::Streams::AnyCancellable subscription = hear(worker->news(), told);
};

TEST_F(SignInWorkerTest, TellsWhoSignsIn)
{
    worker->start();

    post("ada@hut.example");

    EXPECT_THAT(told, ElementsAre(FeedNews(SignedIn{"ada@hut.example"_email})));
    EXPECT_EQ(session.user, "ada@hut.example"_email);
}

TEST_F(SignInWorkerTest, TellsWhySomebodyIsRefusedAndKeepsWhoIsSignedIn)
{
    worker->start();
    post("ada@hut.example");
    told.clear();

    post("ada@hut");

    EXPECT_THAT(
        told, ElementsAre(FeedNews(SignInRefused{"\"ada@hut\", character 8: The domain has no dot."})));
    EXPECT_EQ(session.user, "ada@hut.example"_email);
}

TEST_F(SignInWorkerTest, TellsTheUserOfTheSessionAtTheStart)
{
    session.user = "ada@hut.example"_email;

    worker->start();
    EXPECT_THAT(told, ElementsAre());
    loop.drain();

    EXPECT_THAT(told, ElementsAre(FeedNews(SignedIn{"ada@hut.example"_email})));
}

TEST_F(SignInWorkerTest, IgnoresWhatIsNoText)
{
    worker->start();

    post(3);
    orrenby::NotificationCenter::defaultCenter()->post(userShouldSignIn);

    EXPECT_THAT(told, ElementsAre());
}

TEST_F(SignInWorkerTest, SignsNobodyInOnceItHasStopped)
{
    session.user = "ada@hut.example"_email;
    worker->start();

    worker->stop();
    post("bo@hut.example");
    loop.drain();

    EXPECT_THAT(told, ElementsAre());
    EXPECT_EQ(session.user, "ada@hut.example"_email);
}

} // namespace
