#include "Examples/Fieldbook/Remote/FetchWorker.hpp"

#include "Examples/Fieldbook/Report/ReportEncoding.hpp"
#include "Examples/Fieldbook/Service/DirectService.hpp"
#include "Examples/Fieldbook/Tests/ToldNews.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/Log/CaptureHandler.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

Report titled(const char* title) { return {title, "Quay", "Nils", Severity::low, {}}; }

/// A worker and a service without sockets, in virtual time.
class FetchWorkerTest : public ::testing::Test {
protected:
    FetchWorkerTest()
    {
        orrenby::Log::onEvent(log);
        session.service = orrenby::URL::make("http://hut.example");
        session.makeTransport = [this] { return service.transport(); };
        worker->start();
    }

    /// From now on this is the answer to everything. Who asked stands in `asked`.
    void answer(ServiceResponse response)
    {
        service.start([this, response = std::move(response)](const ServiceRequest& request) {
            asked.push_back(request.method + ' ' + request.path);
            return response;
        });
    }

    /// The lines about the service that were told since the last call.
    std::vector<std::string> lines()
    {
        std::vector<std::string> result;
        for (const auto& each : std::exchange(news, {}))
            if (const auto* const said = std::get_if<ServiceSays>(&each))
                result.push_back("@ " + said->text);
            else if (const auto* const garbled = std::get_if<ServiceGarbled>(&each))
                result.push_back("! " + garbled->problem);
        return result;
    }

    orrenby::Log::CaptureHandler log;
    orrenby::testing::VirtualWorld world;
    EventLoop loop;
    DirectService service{loop};
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
    std::vector<std::string> asked;
    std::vector<FeedNews> news;
    orrenby::Ref<FetchWorker> worker = orrenby::make<FetchWorker>(session);
    orrenby::Streams::AnyCancellable subscription = hear(worker->news(), news);
};

TEST_F(FetchWorkerTest, TellsTheReportsOfTheService)
{
    //! [Asking for the list]
    answer({.body = encodedReports({titled("Rope frayed"), titled("Crane stuck")})});

    worker->refresh();
    world.advance(0.1);

    EXPECT_THAT(asked, ElementsAre("GET /reports"));
    EXPECT_THAT(news,
        ElementsAre(FeedNews(ServiceSays{"2 reports came in"}),
            FeedNews(Added{"service/1", titled("Rope frayed")}),
            FeedNews(Added{"service/2", titled("Crane stuck")})));
    //! [Asking for the list]
}

TEST_F(FetchWorkerTest, TellsWhatIsDifferentWhenItIsAskedAgain)
{
    answer({.body = encodedReports({titled("Rope frayed"), titled("Crane stuck")})});
    worker->refresh();
    world.advance(0.1);
    news.clear();

    answer({.body = encodedReports({titled("Rope mended")})});
    worker->refresh();
    world.advance(0.1);

    EXPECT_THAT(news,
        ElementsAre(FeedNews(ServiceSays{"1 report came in"}),
            FeedNews(Changed{"service/1", titled("Rope mended")}),
            FeedNews(Removed{"service/2", titled("Crane stuck")})));
}

TEST_F(FetchWorkerTest, MissesAMalformedReportTellsEverythingThatIsWrongWithItAndTakesTheOthers)
{
    answer({.body = R"([
        {"title": "Rope frayed", "place": "Quay", "observer": "Nils", "severity": "low"},
        {"title": "", "place": "Quay", "observer": "Nils", "severity": "quite bad"},
        {"title": "Crane stuck", "place": "Quay", "observer": "Nils", "severity": "low"}
    ])"});

    worker->refresh();
    world.advance(0.1);

    ASSERT_THAT(news, SizeIs(5));
    EXPECT_EQ(news[0], FeedNews(ServiceSays{"2 of 3 reports came in"}));
    EXPECT_EQ(news[1], FeedNews(Added{"service/1", titled("Rope frayed")}));
    EXPECT_EQ(news[2], FeedNews(Added{"service/3", titled("Crane stuck")}));
    EXPECT_THAT(lines(),
        ElementsAre("@ 2 of 3 reports came in",
            "! Index 1 > title, line 3, column 19: Expected a text but found an empty one",
            "! Index 1 > severity, line 3, column 72: No severity (low, medium or high) has the raw value \"quite "
            "bad\""));
    EXPECT_THAT(log.entries(), SizeIs(2));
}

TEST_F(FetchWorkerTest, SaysThatAnAnswerIsNoList)
{
    answer({.body = R"({"reports": []})"});

    worker->refresh();
    world.advance(100);

    EXPECT_THAT(lines(),
        ElementsAre("! no list of reports: line 1, column 1: Expected Array<Report> but found an object"));
    EXPECT_THAT(asked, SizeIs(1));
}

TEST_F(FetchWorkerTest, TakesAnEmptyList)
{
    answer({.body = "[]"});

    worker->refresh();
    world.advance(0.1);

    EXPECT_THAT(lines(), ElementsAre("@ 0 reports came in"));
}

TEST_F(FetchWorkerTest, AsksLaterAndLaterWhereNobodyListensAndGivesUpInTheEnd)
{
    worker->refresh();
    world.advance(13.9);
    EXPECT_THAT(lines(),
        ElementsAre("@ no connection: nobody listens; attempt 2 in 2 s", "@ attempt 2",
            "@ no connection: nobody listens; attempt 3 in 4 s", "@ attempt 3",
            "@ no connection: nobody listens; attempt 4 in 8 s"));

    world.advance(0.2);
    EXPECT_THAT(
        lines(), ElementsAre("@ attempt 4", "! given up after 4 attempts: no connection: nobody listens"));
}

TEST_F(FetchWorkerTest, RecoversWithTheService)
{
    worker->refresh();
    world.advance(1);
    lines();

    answer({.body = "[]"});
    world.advance(1.1);

    EXPECT_THAT(lines(), ElementsAre("@ attempt 2", "@ 0 reports came in"));
}

TEST_F(FetchWorkerTest, LeavesABusyServiceAloneForAsLongAsItWants)
{
    answer(
        {.status = 429, .body = R"({"problem": "Too many requests."})", .headers = {{"Retry-After", "6"}}});
    worker->refresh();
    world.advance(5.9);
    EXPECT_THAT(lines(), ElementsAre("@ status 429, \"Too many requests.\"; attempt 2 in 6 s"));

    answer({.body = "[]"});
    world.advance(0.2);

    EXPECT_THAT(lines(), ElementsAre("@ attempt 2", "@ 0 reports came in"));
}

TEST_F(FetchWorkerTest, GivesUpAServiceThatWantsToBeLeftAloneForTooLong)
{
    answer({.status = 503, .headers = {{"Retry-After", "301"}}});

    worker->refresh();
    world.advance(0.1);

    EXPECT_THAT(lines(), ElementsAre("! given up after 1 attempt: status 503"));
}

TEST_F(FetchWorkerTest, DoesNotAskAgainWhereItIsRefused)
{
    answer({.status = 404, .body = R"({"problem": "There is nothing here."})"});

    worker->refresh();
    world.advance(100);

    EXPECT_THAT(lines(), ElementsAre("! refused: status 404, \"There is nothing here.\""));
    EXPECT_THAT(asked, SizeIs(1));
}

TEST_F(FetchWorkerTest, BeginsAnewWhenItIsAskedWhileItWaits)
{
    worker->refresh();
    world.advance(2.1);
    lines();

    worker->refresh();
    world.advance(0.1);
    EXPECT_THAT(lines(), ElementsAre("@ no connection: nobody listens; attempt 2 in 2 s"));

    world.advance(1.8);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(FetchWorkerTest, TellsNothingTwiceThatIsRememberedFromTheLastRun)
{
    worker->stop();
    session.remembered = {{"service/1", titled("Rope frayed")}, {"station/1", titled("Ice")}};
    worker->start();
    answer({.body = encodedReports({titled("Rope frayed")})});

    worker->refresh();
    world.advance(0.1);

    EXPECT_THAT(news, ElementsAre(FeedNews(ServiceSays{"1 report came in"})));
}

TEST_F(FetchWorkerTest, CallsWhoWaitsForItOnceTheAnswerIsThere)
{
    int count = 0;
    worker->waitForAnswer([&] { ++count; });
    EXPECT_EQ(count, 1);

    worker->refresh();
    worker->waitForAnswer([&] { ++count; });
    world.advance(1);
    EXPECT_EQ(count, 1);

    answer({.body = "[]"});
    world.advance(2);
    EXPECT_EQ(count, 2);
}

TEST_F(FetchWorkerTest, CallsOnlyWhoWaitedLast)
{
    std::vector<std::string> called;
    answer({.body = "[]"});
    worker->refresh();

    worker->waitForAnswer([&] { called.emplace_back("first"); });
    worker->waitForAnswer([&] { called.emplace_back("last"); });
    world.advance(0.1);

    EXPECT_THAT(called, ElementsAre("last"));
}

TEST_F(FetchWorkerTest, CallsNobodyOnceItHasStopped)
{
    int count = 0;
    answer({.body = "[]"});
    worker->refresh();
    worker->waitForAnswer([&] { ++count; });

    worker->stop();
    world.advance(0.1);

    EXPECT_EQ(count, 0);
}

TEST_F(FetchWorkerTest, LeavesNothingBehindWhenItStops)
{
    worker->refresh();
    world.advance(0.1);
    ASSERT_FALSE(session.remote.expired());
    lines();

    worker->stop();
    world.advance(100);

    EXPECT_THAT(lines(), IsEmpty());
    EXPECT_TRUE(session.remote.expired());
    EXPECT_EQ(world.pendingCount(), 0U);
}

TEST_F(FetchWorkerTest, AsksNobodyWhileItDoesNotWork)
{
    answer({.body = "[]"});
    worker->stop();

    worker->refresh();
    world.advance(0.1);

    EXPECT_THAT(asked, IsEmpty());
}

} // namespace
