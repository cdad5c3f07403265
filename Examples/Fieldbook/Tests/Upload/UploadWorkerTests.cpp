#include "Examples/Fieldbook/Upload/UploadWorker.hpp"

#include "Examples/Fieldbook/Service/Mood.hpp"
#include "Examples/Fieldbook/Tests/Loopback.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/SessionTest.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using namespace fieldbook;
using namespace std::chrono_literals;
using orrenby::operator""_email;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

class UploadWorkerTest : public SessionTest {
protected:
    void SetUp() override
    {
        session.folder = folder.path();
        session.secondLength = 0;
        session.user = "ada@hut.example"_email;
        session.catalogue.put("a.json", titled("Rope frayed"));
        session.catalogue.put("station/1", titled("Ice on the steps"));
        worker = orrenby::make<UploadWorker>(session);
    }
    void TearDown() override
    {
        worker.reset();
        loop.drain();
    }

    static Report titled(const char* title)
    {
        return {.title = Line{title}, .place = Line{"Quay"}, .observer = Line{"Nils"}, .body = {}};
    }

    void uploadAndWait()
    {
        worker->uploadAll();
        wait();
    }

    void wait()
    {
        const auto patience = loop.after(30s, [this] { loop.stop(); });
        // Where nothing is on its way this calls at once, before the loop runs.
        bool isDone = false;
        worker->waitForUploads([&] {
            isDone = true;
            loop.stop();
        });
        if (!isDone)
            loop.run();
        EXPECT_TRUE(isDone);
    }

    OwnFolder folder;
    orrenby::Ref<UploadWorker> worker;
};

/// Sends to a service of the test, where the machine lets it listen.
class ServedUploadWorkerTest : public UploadWorkerTest {
protected:
    explicit ServedUploadWorkerTest(ReportService::Mood mood = isAlwaysTaken)
        : service(mood)
    {}

    void SetUp() override
    {
        UploadWorkerTest::SetUp();
        auto started = ServiceServer::start(
            [this](const ServiceRequest& request) { return service.handle(request); });
        if (const auto problem = started.error())
            GTEST_SKIP() << *problem;
        server = std::move(started).unwrap();
        if (const auto problem = whyUnreachable(server->port()))
            GTEST_SKIP() << *problem;
        session.service = orrenby::URL::make(server->address());
    }

    ReportService service;
    std::unique_ptr<ServiceServer> server;
};

class MoodyServiceUploadWorkerTest : public ServedUploadWorkerTest {
protected:
    MoodyServiceUploadWorkerTest()
        : ServedUploadWorkerTest(isTakenWhenMoody)
    {}
};

TEST_F(ServedUploadWorkerTest, SendsEveryReportOnceAndThePhotosBesideTheirFiles)
{
    folder.file("a.png", std::string("\x89PNG\r\n\0", 7));
    worker->start();

    uploadAndWait();
    uploadAndWait();

    const auto received = service.received();
    ASSERT_THAT(received, SizeIs(2));
    EXPECT_EQ(received[0].report, titled("Rope frayed"));
    ASSERT_TRUE(received[0].photo);
    EXPECT_EQ(received[0].photo->content, std::string("\x89PNG\r\n\0", 7));
    EXPECT_EQ(received[1].report, titled("Ice on the steps"));
    EXPECT_EQ(received[1].photo, std::nullopt);
    EXPECT_EQ(session.uploads.sent, 2);
    EXPECT_THAT(printed(), HasSubstr("= 2 to upload\n^ #1 sent\n^ #2 sent\n= nothing to upload\n"));
}

TEST_F(MoodyServiceUploadWorkerTest, TriesAgainAndTellsWhy)
{
    worker->start();

    uploadAndWait();

    EXPECT_THAT(printed(),
        HasSubstr("^ #1 status 503, \"Too busy.\"; attempt 2 in 2 s\n^ #1 attempt 2\n^ #1 sent\n"));
    EXPECT_EQ(session.uploads.sent, 2);
}

TEST_F(ServedUploadWorkerTest, SignsInAgainForSomebodyElse)
{
    worker->start();
    uploadAndWait();
    session.user = "bo@hut.example"_email;
    session.catalogue.put("b.json", titled("Ladder gone"));

    uploadAndWait();

    ASSERT_THAT(service.received(), SizeIs(3));
    EXPECT_EQ(service.received()[0].sender, "ada@hut.example"_email);
    EXPECT_EQ(service.received()[2].sender, "bo@hut.example"_email);
}

TEST_F(UploadWorkerTest, SaysThatNobodyIsSignedIn)
{
    session.user.reset();
    worker->start();

    uploadAndWait();

    EXPECT_THAT(printed(), HasSubstr("! nobody is signed in: sign in ADDRESS\n"));
    EXPECT_EQ(session.uploads.sent, 0);
}

TEST_F(ServedUploadWorkerTest, GivesUpWhereNobodyListens)
{
    server.reset();
    worker->start();

    uploadAndWait();

    EXPECT_EQ(session.uploads.givenUp, 2);
    EXPECT_THAT(printed(), HasSubstr("^ #1 given up after 4 attempts: no connection: "));
}

TEST_F(ServedUploadWorkerTest, TakesUpWhatItHadToLeaveWhenItIsStartedAgain)
{
    worker->start();
    worker->uploadAll();

    worker->stop();
    worker->start();
    uploadAndWait();

    EXPECT_THAT(service.received(), SizeIs(2));
    EXPECT_EQ(session.uploads.sent, 2);
}

TEST_F(ServedUploadWorkerTest, GoesOnWithWhatAnotherRunLeft)
{
    {
        auto before = ReportOutbox(session.memory);
        const auto put = before.put(
            {{{4, titled("Ladder gone"), {}, "gone.json"}}, session.service, "bo@hut.example"_email});
        ASSERT_EQ(before.begin(put.queued.at(0)), 1); // and was killed
    }
    session.user.reset();
    worker->start();

    worker->resume();
    wait();

    ASSERT_THAT(service.received(), SizeIs(1));
    EXPECT_EQ(service.received()[0].sender, "bo@hut.example"_email);
    EXPECT_THAT(printed(), HasSubstr("= 1 upload goes on\n^ #4 attempt 2\n^ #4 sent\n"));
}

TEST_F(UploadWorkerTest, SaysNothingWhereNothingIsLeft)
{
    worker->start();

    worker->resume();

    EXPECT_THAT(printed(), Not(HasSubstr("=")));
}

TEST_F(ServedUploadWorkerTest, SendsNothingAgainThatAnEarlierRunSent)
{
    worker->start();
    uploadAndWait();
    worker = orrenby::make<UploadWorker>(session);
    worker->start();

    uploadAndWait();

    EXPECT_EQ(session.uploads.sent, 2);
    EXPECT_THAT(printed(), HasSubstr("= nothing to upload\n"));
}

TEST_F(ServedUploadWorkerTest, SaysHowManyAreLeftForTheNextRun)
{
    server.reset();
    session.isMemoryKept = true;
    worker->start();

    uploadAndWait();

    EXPECT_THAT(
        printed(), HasSubstr("= 2 reports left in the outbox: sent with the next start, or with upload\n"));
    EXPECT_EQ(session.uploads.waiting, 2U);
}

TEST_F(ServedUploadWorkerTest, StartsAServiceOfItsOwn)
{
    session.service.reset();
    worker->start();

    uploadAndWait();

    EXPECT_EQ(session.uploads.sent, 2);
    EXPECT_THAT(service.received(), IsEmpty());
}

} // namespace
