#include "Examples/Fieldbook/Settings/SettingsWorker.hpp"

#include "Examples/Fieldbook/Tests/Printout.hpp"
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace fieldbook;

class SettingsWorkerTest : public ::testing::Test {
protected:
    SettingsWorkerTest()
    {
        session.catalogue.put("a", {"Wasps", "west", "o", Severity::low, {}});
        session.catalogue.put("b", {"Flood", "east", "o", Severity::high, {}});
    }

    /// What was printed since the last look, the steps of lives apart.
    std::string printed() { return output.news(); }

    void takeAllAway()
    {
        session.catalogue.take("a");
        session.catalogue.take("b");
    }

    static void post(orrenby::Any order)
    {
        orrenby::NotificationCenter::defaultCenter()->post(
            feedShouldSort, {}, {{orderKey, std::move(order)}});
    }

    Printout output;
    EventLoop loop;
    Terminal terminal{output.descriptor(), false};
    Terminal nowhere{-1, false};
    LifeTrace trace{nowhere};
    Session session{loop, terminal, trace, "folder", Course::watch};
    orrenby::Ref<SettingsWorker> worker = orrenby::make<SettingsWorker>(session);
};

TEST_F(SettingsWorkerTest, ListsTheReportsInTheOrderThatANotificationAsksFor)
{
    worker->start();

    post("severity");

    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::bySeverity);
    EXPECT_EQ(printed(), "= by severity\n  #2 high    Flood, east\n  #1 low     Wasps, west\n");
}

TEST_F(SettingsWorkerTest, SaysInWhichOrderReportsWillBeListedWhenThereIsNoneYet)
{
    takeAllAway();
    worker->start();

    post("place");

    EXPECT_EQ(printed(), "= reports will be listed by place\n");
}

TEST_F(SettingsWorkerTest, ListsThemAgainWhenTheyAreInThatOrderAlready)
{
    worker->start();

    post("number");

    EXPECT_EQ(printed(), "= by number\n  #1 low     Wasps, west\n  #2 high    Flood, east\n");
}

TEST_F(SettingsWorkerTest, ListsTheReportsWhenSomebodyElseChangesTheOrder)
{
    worker->start();

    session.settings->sortOrder = SortOrder::byPlace;
    session.settings->sortOrder = SortOrder::byPlace;

    EXPECT_EQ(printed(), "= by place\n  #2 high    Flood, east\n  #1 low     Wasps, west\n");
}

TEST_F(SettingsWorkerTest, TellsWhichRowsMovedWhenTheOrderChangesAgain)
{
    session.catalogue.put("c", {"Ice", "north", "o", Severity::low, {}});
    worker->start();
    post("severity");
    printed();

    post("number");

    EXPECT_EQ(printed(), "= by number: 1 row moved\n  row 1 → 2   #2 high    Flood, east\n");
}

TEST_F(SettingsWorkerTest, SaysThatNoRowMovedWhenTheOtherOrderIsTheSame)
{
    worker->start();
    post("severity");
    printed();

    post("place");

    EXPECT_EQ(printed(), "= by place: no row moved\n");
}

TEST_F(SettingsWorkerTest, TellsWhatNewsDoToTheRowsOnceTheyWereListed)
{
    worker->start();
    session.catalogue.put("c", {"Ice", "north", "o", Severity::medium, {}});
    session.tally.send(Tally());
    post("severity");
    printed();

    session.catalogue.put("a", {"Hornets", "west", "o", Severity::high, {}});
    session.tally.send(Tally());

    EXPECT_EQ(printed(), "  row 3 → 1   #1\n");
}

TEST_F(SettingsWorkerTest, ListsWhatItPromisedOnceTheReportsOfTheBeginningAreKnown)
{
    takeAllAway();
    worker->start();
    post("severity");
    session.catalogue.put("b", {"Flood", "east", "o", Severity::high, {}});
    session.tally.send(Tally());
    EXPECT_EQ(printed(), "= reports will be listed by severity\n");

    orrenby::NotificationCenter::defaultCenter()->post(feedIsTold);

    EXPECT_EQ(printed(), "= by severity\n  #2 high    Flood, east\n");
}

TEST_F(SettingsWorkerTest, TellsEachRowOfAFolderThatWasEmptyAtTheBeginning)
{
    takeAllAway();
    worker->start();
    orrenby::NotificationCenter::defaultCenter()->post(feedIsTold);
    post("severity");

    session.catalogue.put("b", {"Flood", "east", "o", Severity::high, {}});
    session.tally.send(Tally());

    EXPECT_EQ(printed(), "= reports will be listed by severity\n  row 1 in    #2\n");
}

TEST_F(SettingsWorkerTest, IgnoresAnOrderThatItDoesNotKnow)
{
    worker->start();

    post("age");
    post(3);

    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::byNumber);
    EXPECT_EQ(printed(), "");
}

TEST_F(SettingsWorkerTest, SaysHowCardsWillLook)
{
    worker->start();

    session.settings->isDetailed = false;
    session.settings->isDetailed = false;

    EXPECT_EQ(printed(), "= cards are short\n");
}

TEST_F(SettingsWorkerTest, LeavesNoRegistrationBehindWhenItStops)
{
    const auto before = orrenby::NotificationCenter::defaultCenter()->observerCount();
    worker->start();
    EXPECT_EQ(session.settings->observerCount(), 2U);

    worker->stop();
    post("severity");

    EXPECT_EQ(session.settings->observerCount(), 0U);
    EXPECT_EQ(orrenby::NotificationCenter::defaultCenter()->observerCount(), before);
    EXPECT_EQ(printed(), "");
}

} // namespace
