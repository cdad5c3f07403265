#include "Examples/Fieldbook/Feed/FeedContext.hpp"

#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;

/// Notes what it is to show.
class NotingScreen : public FeedScreen {
public:
    void show(const FeedNews& element) override { news.push_back(element); }
    void show(const FolderLost& failure) override { failures.push_back(failure); }

    std::vector<FeedNews> news;
    std::vector<FolderLost> failures;
};

class FeedContextTest : public ::testing::Test {
protected:
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, "missing folder", Course::watch};
    std::shared_ptr<NotingScreen> screen = std::make_shared<NotingScreen>();
    orrenby::Ref<FolderWorker> folder = orrenby::make<FolderWorker>(session);
    orrenby::Ref<StationWorker> station = orrenby::make<StationWorker>(session);
    orrenby::Ref<FeedContext> context = orrenby::make<FeedContext>(session, screen,
        FeedContext::Sources{orrenby::make<RecallWorker>(session), station,
            orrenby::make<SignInWorker>(session), folder, orrenby::make<FetchWorker>(session)});
};

TEST_F(FeedContextTest, ShowsNothingBeforeItIsActive) { EXPECT_THAT(screen->news, ElementsAre()); }

TEST_F(FeedContextTest, ShowsTheCurrentNewsAsSoonAsItIsActive)
{
    context->activate();

    EXPECT_THAT(screen->news, ElementsAre(FeedNews(Opened{"missing folder"})));
}

TEST_F(FeedContextTest, ShowsTheFailureOfTheFolder)
{
    context->activate();
    loop.drain();

    EXPECT_THAT(screen->failures, ElementsAre(FolderLost{"No such file or directory"}));
}

TEST_F(FeedContextTest, ShowsWhatTheStationSaysBeforeTheFolderIsLookedAt)
{
    session.station = "missing file";

    context->activate();
    loop.drain();

    EXPECT_THAT(screen->news,
        ElementsAre(FeedNews(Opened{"missing folder"}),
            FeedNews(StationGarbled{"no answer: missing file: no such file"})));
    EXPECT_EQ(screen->failures.size(), 1U);
}

TEST_F(FeedContextTest, RunsItsWorkersAndSubscriptionsWhileItIsActive)
{
    context->activate();
    EXPECT_TRUE(folder->isWorking());
    EXPECT_TRUE(station->isWorking());
    EXPECT_TRUE(context->analytics()->isWorking());
    EXPECT_EQ(orrenby::Streams::liveSubscriptionCount(),
        19); // three times five streams as one; one to the tally

    context->deactivate();
    EXPECT_FALSE(folder->isWorking());
    EXPECT_FALSE(station->isWorking());
    EXPECT_FALSE(context->analytics()->isWorking());
    EXPECT_EQ(orrenby::Streams::liveSubscriptionCount(), 0);
}

} // namespace
