#include "Examples/Fieldbook/Application/MainFlow.hpp"

#include "Examples/Fieldbook/Application/LifeTrace.hpp"
#include "Examples/Fieldbook/Feed/FeedFlow.hpp"
#include "Examples/Fieldbook/Service/DirectService.hpp"
#include "Examples/Fieldbook/Settings/SettingsFlow.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/Printout.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

/// A main flow on a folder with one report, and a service without sockets, in virtual time.
class MainFlowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder.file(
            "a.json", R"({"title": "Rope frayed", "place": "Quay", "observer": "Nils", "severity": "low"})");
        session.folder = folder.path();
        session.service = orrenby::URL::make("http://hut.example");
        session.makeTransport = [this] { return service.transport(); };
        flow = orrenby::make<MainFlow>(
            session, links, MainFlowListener{[this] { ++toldCount; }, [this] { ++lostCount; }});
        flow->start();
    }
    void TearDown() override
    {
        flow.reset();
        world.runUntilIdle();
    }

    std::string printed() const { return output.text(); }

    /// What is printed because of this line.
    std::string answerTo(const char* line)
    {
        const auto before = printed();
        flow->obey(line);
        return printed().substr(before.size());
    }

    OwnFolder folder;
    Printout output;
    orrenby::testing::VirtualWorld world;
    EventLoop loop;
    DirectService service{loop};
    Terminal terminal{output.descriptor(), false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
    DeepLinks links;
    int toldCount = 0;
    int lostCount = 0;
    orrenby::Ref<MainFlow> flow;
};

TEST_F(MainFlowTest, AttachesTheFeedAndTellsWhenAllOfTheBeginningIsTold)
{
    EXPECT_NE(flow->firstSubFlow<FeedFlow>(), nullptr);
    EXPECT_EQ(toldCount, 0);

    world.advance(0.1);

    EXPECT_EQ(toldCount, 1);
    EXPECT_THAT(printed(), EndsWith("+ low     #1 Rope frayed, Quay (Nils)\n= 1 report file so far\n"));
}

TEST_F(MainFlowTest, TellsWhenTheFolderIsLost)
{
    flow.reset();
    session.folder = folder.file("missing");
    flow = orrenby::make<MainFlow>(
        session, links, MainFlowListener{[this] { ++toldCount; }, [this] { ++lostCount; }});
    flow->start();
    world.advance(0.1);

    EXPECT_EQ(toldCount, 0);
    EXPECT_EQ(lostCount, 1);
}

TEST_F(MainFlowTest, ShowsOnePageAtATimeBesideTheFeed)
{
    flow->obey("compose");
    EXPECT_NE(flow->firstSubFlow<ComposeFlow>(), nullptr);

    flow->obey("settings");
    EXPECT_EQ(flow->firstSubFlow<ComposeFlow>(), nullptr);
    EXPECT_NE(flow->firstSubFlow<SettingsFlow>(), nullptr);

    flow->obey("compose");
    EXPECT_EQ(flow->firstSubFlow<SettingsFlow>(), nullptr);
    EXPECT_NE(flow->firstSubFlow<FeedFlow>(), nullptr);
}

TEST_F(MainFlowTest, LetsThePageTakeItsLinesFirst)
{
    EXPECT_THAT(answerTo("discard"), HasSubstr("= no such command; "));
    flow->obey("compose");

    EXPECT_EQ(answerTo("discard"), "= discarded\n");
    EXPECT_EQ(flow->firstSubFlow<ComposeFlow>(), nullptr);
    EXPECT_THAT(answerTo("discard"), HasSubstr("= no such command; "));
}

TEST_F(MainFlowTest, PutsWhatIsTypedIntoTheSettings)
{
    const orrenby::testing::LocaleOverride place;

    flow->obey("sort place");
    flow->obey("details off");
    flow->obey("language de");

    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::byPlace);
    EXPECT_FALSE(session.settings->isDetailed.get());
    EXPECT_EQ(session.settings->language.get(), "de");
}

TEST_F(MainFlowTest, HasNothingUploadedOfNobody)
{
    world.advance(0.1);

    EXPECT_EQ(answerTo("upload"), "! nobody is signed in: sign in ADDRESS\n");
}

TEST_F(MainFlowTest, AsksTheServiceForItsReports)
{
    service.start([](const ServiceRequest&) {
        return ServiceResponse{
            .body = R"([{"title": "Crane stuck", "place": "Quay", "observer": "Nils", "severity": "high"}])"};
    });
    world.advance(0.1);

    flow->obey("refresh");
    world.advance(0.1);

    EXPECT_THAT(printed(), EndsWith("@ service  1 report came in\n+ high    #2 Crane stuck, Quay (Nils)\n"));
}

TEST_F(MainFlowTest, IsIdleOnceTheServiceHasAnswered)
{
    int idleCount = 0;
    flow->waitUntilIdle([&] { ++idleCount; });
    EXPECT_EQ(idleCount, 1);

    flow->refresh();
    flow->waitUntilIdle([&] { ++idleCount; });
    world.advance(1);
    EXPECT_EQ(idleCount, 1);

    service.start([](const ServiceRequest&) { return ServiceResponse{.body = "[]"}; });
    world.advance(2);
    EXPECT_EQ(idleCount, 2);
}

TEST_F(MainFlowTest, DoesNotUploadWhatCameFromTheService)
{
    std::vector<std::string> asked;
    service.start([&](const ServiceRequest& request) {
        asked.push_back(request.method + ' ' + request.path);
        return ServiceResponse{.status = request.method == "GET" ? 200 : 201,
            .body = request.method == "GET"
                ? R"([{"title": "Crane stuck", "place": "Quay", "observer": "Nils", "severity": "high"}])"
                : R"({"token": "t"})"};
    });
    session.user = orrenby::EmailAddress::make({.stringValue = "ada@hut.example"});
    world.advance(0.1);
    flow->obey("refresh");
    world.advance(0.1);

    EXPECT_THAT(answerTo("upload"), ::testing::StartsWith("= 1 to upload\n"));
    world.advance(1);

    EXPECT_THAT(asked, ::testing::ElementsAre("GET /reports", "POST /session", "PUT /reports/1"));
}

TEST_F(MainFlowTest, LeavesNothingBehind)
{
    flow->obey("refresh");
    flow->obey("compose");
    world.advance(0.1);

    flow.reset();
    world.runUntilIdle();

    EXPECT_TRUE(isNothingLive()) << describeLiveParts();
    EXPECT_FALSE(links.send({"fieldbook://report/1"}));
}

} // namespace
