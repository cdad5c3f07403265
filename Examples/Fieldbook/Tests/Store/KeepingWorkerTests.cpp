#include "Examples/Fieldbook/Store/KeepingWorker.hpp"

#include "Examples/Fieldbook/Store/Recall.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/Printout.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Report rope = {"Rope frayed", "Quay", "Nils", Severity::high, std::nullopt};
const Report crane = {"Crane stuck", "Quay", "Nils", Severity::low, std::nullopt};

class KeepingWorkerTest : public ::testing::Test {
protected:
    /// The memory of another run on the same store.
    Memory later() const
    {
        return Memory(
            orrenby::make<orrenby::NSManagedObjectContext>(session.memory->context()->persistentStore()));
    }

    OwnFolder folder;
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, "folder", Course::watch};
    orrenby::Streams::PassthroughSubject<FeedNews, FolderLost> news;
    orrenby::Ref<KeepingWorker> worker = orrenby::make<KeepingWorker>(session, news.eraseToAnyPublisher());
};

TEST_F(KeepingWorkerTest, WritesWhatIsToldInTheNextTurn)
{
    worker->start();

    news.send(FeedNews(Added{"a.json", rope}));
    news.send(FeedNews(Added{"b.json", rope}));
    news.send(FeedNews(Changed{"b.json", crane}));
    EXPECT_THAT(later().reports(), IsEmpty());
    loop.drain();

    EXPECT_THAT(later().reports(),
        ElementsAre(RememberedReport{"a.json", 1, rope}, RememberedReport{"b.json", 2, crane}));
}

TEST_F(KeepingWorkerTest, WritesThatReportsAreGoneOrUnreadable)
{
    worker->start();
    news.send(FeedNews(Added{"a.json", rope}));
    news.send(FeedNews(Added{"b.json", rope}));
    loop.drain();

    news.send(FeedNews(Removed{"a.json", rope}));
    news.send(FeedNews(Unreadable{"b.json", "torn"}));
    loop.drain();

    EXPECT_THAT(later().reports(),
        ElementsAre(
            RememberedReport{"a.json", 1, std::nullopt}, RememberedReport{"b.json", 2, std::nullopt}));
}

TEST_F(KeepingWorkerTest, WritesTheSettingsOfTheBeginningAndTheirChanges)
{
    session.settings->language = "fr";
    worker->start();
    loop.drain();
    EXPECT_EQ(later().setting(settingNames::language), "fr");
    EXPECT_EQ(later().setting(settingNames::order), "number");

    session.settings->sortOrder = SortOrder::byPlace;
    session.settings->isDetailed = false;
    session.settings->language = "de";
    news.send(FeedNews(SignedIn{"ada@hut.example"_email}));
    loop.drain();

    EXPECT_EQ(later().setting(settingNames::order), "place");
    EXPECT_EQ(later().setting(settingNames::details), "off");
    EXPECT_EQ(later().setting(settingNames::language), "de");
    EXPECT_EQ(later().setting(settingNames::user), "ada@hut.example");
}

TEST_F(KeepingWorkerTest, WritesWhenItStopsWhatIsStillToBeWritten)
{
    worker->start();
    news.send(FeedNews(Added{"a.json", rope}));

    worker->stop();

    EXPECT_THAT(later().reports(), ElementsAre(RememberedReport{"a.json", 1, rope}));
}

TEST_F(KeepingWorkerTest, WritesNothingWhileItIsStopped)
{
    worker->start();
    worker->stop();

    news.send(FeedNews(Added{"a.json", rope}));
    session.settings->sortOrder = SortOrder::byPlace;
    loop.drain();

    EXPECT_THAT(later().reports(), IsEmpty());
    EXPECT_EQ(later().setting(settingNames::order), "number");
}

TEST_F(KeepingWorkerTest, SaysOnceThatTheStoreIsFullAndGoesOn)
{
    const Printout output;
    auto screen = Terminal(output.descriptor(), false);
    auto full = Session{loop, screen, trace, "folder", Course::watch};
    full.memory = std::make_shared<Memory>(orrenby::make<orrenby::NSManagedObjectContext>(
        orrenby::PersistentStore::open(session.memory->context()->persistentStore()->model(),
            {.path = folder.file("store"), .maximumPageCount = 16})));
    const auto keeping = orrenby::make<KeepingWorker>(full, news.eraseToAnyPublisher());
    keeping->start();
    auto endless = rope;
    endless.body = std::string(200'000, 'x');

    news.send(FeedNews(Added{"a.json", endless}));
    loop.drain();
    news.send(FeedNews(Added{"b.json", endless}));
    loop.drain();
    keeping->stop();

    EXPECT_EQ(output.text(), "! the store was not written: there is no room left\n");
}

} // namespace
