#include "Examples/Fieldbook/Feed/AnalyticsWorker.hpp"

#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

const Report flood = {"Flood", "Quay", "Nils", Severity::high, {}};
const Report calm = {"Calm", "Quay", "Ada", Severity::low, {}};

/// A worker on news that the test makes up.
class AnalyticsWorkerTest : public ::testing::Test {
protected:
    AnalyticsWorkerTest() { worker->start(); }

    void tell(FeedNews element) const { news.send(std::move(element)); }
    Tally tally() const { return session.tally.value(); }

    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
    orrenby::Streams::PassthroughSubject<FeedNews, FolderLost> news;
    orrenby::Ref<AnalyticsWorker> worker = orrenby::make<AnalyticsWorker>(
        session, news.eraseToAnyPublisher());
};

TEST_F(AnalyticsWorkerTest, CountsReportsBySeverityObserverAndPlace)
{
    tell(Added{"a", flood});
    tell(Added{"b", calm});

    auto expected = Tally();
    expected.added = 2;
    expected.bySeverity = {1, 0, 1};
    expected.byObserver = {{"Ada", 1}, {"Nils", 1}};
    expected.byPlace = {{"Quay", 2}};
    EXPECT_EQ(tally(), expected);
}

TEST_F(AnalyticsWorkerTest, CountsAChangedReportAsWhatItSaysNow)
{
    tell(Added{"a", flood});
    tell(Changed{"a", calm});

    auto expected = Tally();
    expected.added = 1;
    expected.changed = 1;
    expected.bySeverity = {1, 0, 0};
    expected.byObserver = {{"Ada", 1}};
    expected.byPlace = {{"Quay", 1}};
    EXPECT_EQ(tally(), expected);
}

TEST_F(AnalyticsWorkerTest, NoLongerCountsWhatBecameUnreadable)
{
    tell(Added{"a", flood});
    tell(Unreadable{"a", "torn"});

    auto expected = Tally();
    expected.added = 1;
    expected.unreadable = 1;
    expected.unreadableFiles = {"a"};
    EXPECT_EQ(tally(), expected);
}

TEST_F(AnalyticsWorkerTest, CountsNothingTwiceOnceEverythingIsRemoved)
{
    tell(Added{"a", flood});
    tell(Unreadable{"b", "torn"});
    tell(Removed{"a", flood});
    tell(Removed{"b", {}});

    auto expected = Tally();
    expected.added = 1;
    expected.unreadable = 1;
    expected.removed = 2;
    EXPECT_EQ(tally(), expected);
}

TEST_F(AnalyticsWorkerTest, StopsCountingWhenItStops)
{
    worker->stop();

    tell(Added{"a", flood});

    EXPECT_EQ(tally(), Tally());
}

} // namespace
