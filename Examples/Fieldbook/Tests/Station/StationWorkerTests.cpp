#include "Examples/Fieldbook/Station/StationWorker.hpp"

#include "Examples/Fieldbook/Folder/Samples.hpp"
#include "Examples/Fieldbook/Tests/ToldNews.hpp"
#include "Orrenby/Utilities/Log/CaptureHandler.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace fieldbook;
using orrenby::Log::Level;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A worker on a response that the test writes. `news` is what it told.
class StationWorkerTest : public ::testing::Test {
protected:
    StationWorkerTest()
    {
        orrenby::Log::onEvent(log);
        session.station = folder.path() / "response";
    }

    void start(const std::string& response)
    {
        std::ofstream(*session.station, std::ios::binary) << response;
        start();
    }

    void start()
    {
        worker->start();
        loop.drain();
    }

    TemporaryCopy folder{FIELDBOOK_BUNDLE "/Station"};
    orrenby::Log::CaptureHandler log;
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, folder.path(), Course::watch};
    orrenby::Ref<StationWorker> worker = orrenby::make<StationWorker>(session);
    std::vector<FeedNews> news;
    orrenby::Streams::AnyCancellable subscription = hear(worker->news(), news);
};

TEST_F(StationWorkerTest, HandsEveryMemberToWhatItIsFor)
{
    //! [Taking a response]
    start(R"({
        "user": {"name": "Ines Calder", "post": "Chapel Bank"},
        "settings": {"sortOrder": "place", "isDetailed": false},
        "reports": [{"title": "Wasps", "place": "Gate", "observer": "Jo", "severity": "low"}],
        "announcements": ["Radio check at noon."]
    })");

    EXPECT_THAT(news,
        ElementsAre(FeedNews(StationSays{"Ines Calder is signed in at Chapel Bank"}),
            FeedNews(StationSays{"1 report came in"}),
            FeedNews(Added{"station/1", {"Wasps", "Gate", "Jo", Severity::low, {}}}),
            FeedNews(StationSays{"Radio check at noon."})));
    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::byPlace);
    EXPECT_EQ(session.settings->isDetailed.get(), false);
    //! [Taking a response]
    EXPECT_EQ(log.count(), 0U);
}

TEST_F(StationWorkerTest, LetsTheOtherMembersArriveWhenOneIsMalformed)
{
    start(R"({"settings": {"sortOrder": "age"}, "announcements": ["Radio check at noon."]})");

    EXPECT_THAT(news,
        ElementsAre(FeedNews(StationSays{"Radio check at noon."}),
            FeedNews(StationGarbled{"settings > sortOrder, line 1, column 28: No order (number, severity or "
                                    "place) has the raw value \"age\""})));
}

TEST_F(StationWorkerTest, MakesOneCriticalEntryOfAMalformedMember)
{
    start(R"({"user": {"name": "", "post": 3}})");

    ASSERT_THAT(log.entries(), SizeIs(1));
    const auto entry = log.entries()[0];
    EXPECT_EQ(entry.level, Level::critical);
    EXPECT_EQ(entry.event.properties(), (orrenby::Dictionary{{"Service Decoder Key", "user"}}));
}

TEST_F(StationWorkerTest, TellsEverythingThatIsWrongWithAMember)
{
    start(R"({"user": {"name": "", "post": 3}})");

    EXPECT_THAT(news,
        ElementsAre(FeedNews(StationGarbled{
                        "user > name, line 1, column 19: Expected a text but found an empty one"}),
            FeedNews(StationGarbled{"user > post, line 1, column 31: Expected String but found a number"})));
}

TEST_F(StationWorkerTest, TakesNoneOfAListThatHoldsOneMalformedReport)
{
    start(R"({"reports": [{"title": "Wasps", "place": "Gate", "observer": "Jo", "severity": "low"}, 7]})");

    EXPECT_THAT(news,
        ElementsAre(FeedNews(StationGarbled{
            "reports > Index 1, line 1, column 88: Expected Dictionary<String, Any> but found a number"})));
}

TEST_F(StationWorkerTest, LeavesTheSettingsThatAreNotNamed)
{
    start(R"({"settings": {"isDetailed": false}})");

    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::byNumber);
    EXPECT_EQ(session.settings->isDetailed.get(), false);
}

TEST_F(StationWorkerTest, TellsNothingOfAResponseWithoutMembers)
{
    start("{}");

    EXPECT_THAT(news, IsEmpty());
    EXPECT_EQ(log.count(), 0U);
}

TEST_F(StationWorkerTest, SaysWhereAResponseIsNoJSON)
{
    start("{\"user\": ");

    EXPECT_THAT(news,
        ElementsAre(
            FeedNews(StationGarbled{"No valid JSON: Unexpected end of the text at line 1, column 10"})));
    EXPECT_EQ(log.count(Level::error), 1U);
    EXPECT_EQ(log.count(Level::critical), 0U);
}

TEST_F(StationWorkerTest, SaysThatThereIsNoAnswer)
{
    session.station = "missing";

    start();

    EXPECT_THAT(news, ElementsAre(FeedNews(StationGarbled{"no answer: missing: no such file"})));
    EXPECT_THAT(
        log.messages(Level::error), ElementsAre("the station does not answer: missing: no such file"));
}

TEST_F(StationWorkerTest, HasNothingToDoWithoutAStation)
{
    session.station = {};

    start();

    EXPECT_THAT(news, IsEmpty());
}

TEST_F(StationWorkerTest, TakesNothingOnceItIsStopped)
{
    worker->start();
    worker->stop();

    loop.drain();

    EXPECT_THAT(news, IsEmpty());
}

TEST_F(StationWorkerTest, TakesTheResponseAnewWhenItIsStartedAgain)
{
    start(R"({"announcements": ["Radio check at noon."]})");
    worker->stop();
    news.clear();

    start();

    EXPECT_THAT(news, ElementsAre(FeedNews(StationSays{"Radio check at noon."})));
}

TEST_F(StationWorkerTest, FindsOneMemberOfTheSampleMalformed)
{
    session.station = sampleResponse();

    start();

    ASSERT_FALSE(news.empty());
    EXPECT_EQ(news.back(),
        FeedNews(StationGarbled{"settings > isDetailed, line 8, column 23: Expected Bool but found a text"}));
    EXPECT_EQ(log.count(Level::critical), 1U);
}

} // namespace
