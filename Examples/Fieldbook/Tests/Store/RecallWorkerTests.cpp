#include "Examples/Fieldbook/Store/RecallWorker.hpp"

#include "Examples/Fieldbook/Folder/FolderWorker.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/ToldNews.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Report rope = {"Rope frayed", "Quay", "Nils", Severity::high, std::nullopt};
const Report crane = {"Crane stuck", "Quay", "Nils", Severity::low, std::nullopt};
constexpr auto ropeText
    = R"({"title": "Rope frayed", "place": "Quay", "observer": "Nils", "severity": "high"})";

class RecallWorkerTest : public ::testing::Test {
protected:
    void remember(const std::string& file, int number, const Report& report)
    {
        session.catalogue.restore(file, number);
        session.remembered.emplace(file, report);
    }

    OwnFolder folder;
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, folder.path(), Course::watch};
    orrenby::Ref<RecallWorker> worker = orrenby::make<RecallWorker>(session);
    std::vector<FeedNews> told;
    orrenby::Streams::AnyCancellable handle = hear(worker->news(), told);
};

TEST_F(RecallWorkerTest, TellsNothingWhereNothingIsRemembered)
{
    worker->start();
    loop.drain();

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(RecallWorkerTest, TellsWhatIsRememberedInTheOrderOfTheNumbers)
{
    remember("a.json", 7, rope);
    remember("b.json", 3, crane);

    worker->start();
    EXPECT_THAT(told, IsEmpty());
    loop.drain();

    EXPECT_THAT(told,
        ElementsAre(FeedNews(Recalled{2}), FeedNews(Remembered{"b.json", crane}),
            FeedNews(Remembered{"a.json", rope})));
}

TEST_F(RecallWorkerTest, TellsNothingAgainWhenItIsStartedAgain)
{
    remember("a.json", 7, rope);
    worker->start();
    loop.drain();
    told.clear();

    worker->stop();
    worker->start();
    loop.drain();

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(RecallWorkerTest, LeavesToTheFolderOnlyWhatIsDifferentNow)
{
    folder.file("same.json", ropeText);
    folder.file("changed.json", ropeText);
    folder.file("new.json", ropeText);
    folder.file("torn.json", "{");
    for (const auto* const file : {"same.json", "torn.json", "station/1"})
        session.remembered.emplace(file, rope);
    session.remembered.emplace("changed.json", crane);
    session.remembered.emplace("gone.json", crane);
    const auto follower = orrenby::make<FolderWorker>(session);
    std::vector<FeedNews> news;
    const auto subscription = hear(follower->news(), news);

    follower->start();
    loop.drain();

    ASSERT_EQ(news.size(), 6U);
    EXPECT_EQ(news[1], FeedNews(Removed{"gone.json", crane}));
    EXPECT_EQ(news[2], FeedNews(Changed{"changed.json", rope}));
    EXPECT_EQ(news[3], FeedNews(Added{"new.json", rope}));
    EXPECT_TRUE(std::holds_alternative<Unreadable>(news[4]));
    EXPECT_EQ(news[5], FeedNews(Scanned{4}));
    follower->stop();
}

} // namespace
