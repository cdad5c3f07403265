#include "Examples/Fieldbook/Upload/UploadOperation.hpp"

#include "Examples/Fieldbook/Store/StoreFile.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using orrenby::operator""_url;
using orrenby::testing::VirtualWorld;
using Step = UploadProgress::Step;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Answer taken = {201, "{}"};
const Answer busy = {503, R"({"problem": "Too busy."})"};

/// Answers half a second after it was asked: with a token, and to reports with what it is told to.
class AnsweringTransport : public Transport {
public:
    explicit AnsweringTransport(EventLoop& loop)
        : m_loop(loop)
    {}

    News send(orrenby::URLRequest request, orrenby::BodyStream body) override
    {
        const auto token = request.httpHeader("X-Auth-Token").value_or("nobody");
        asked.push_back(request.httpMethod() + ' ' + std::string(request.url().path()) + ' ' + token);
        const bool isReport = request.httpMethod() == "PUT";
        if (isReport)
            keys.push_back(request.httpHeader("Idempotency-Key").value_or(""));
        const auto answer = isReport ? nextAnswer() : makeToken();
        const auto progress = isReport ? bytes : std::vector<BytesSent>();
        lengths.push_back(body.length());
        return orrenby::Streams::create<TransportNews, TransportFailure>(
            [this, answer, progress](
                orrenby::Streams::PassthroughSubject<TransportNews, TransportFailure> subject) {
                auto timer = std::make_shared<EventLoop::Watch>();
                *timer = m_loop.after(std::chrono::milliseconds(500), [subject, answer, progress, this] {
                    if (failure)
                        return subject.send(*failure);
                    for (const auto& part : progress)
                        subject.send(TransportNews(part));
                    subject.send(TransportNews(answer));
                });
                return [timer] { *timer = {}; };
            });
    }

    std::vector<Answer> answers; ///< The last one from then on.
    std::vector<BytesSent> bytes;
    std::optional<TransportFailure> failure;
    bool isGivingTokens = true;
    std::vector<std::string> asked;
    std::vector<std::string> keys;
    std::vector<std::uint64_t> lengths;

private:
    Answer makeToken()
    {
        return {201, isGivingTokens ? R"({"token": "t)" + std::to_string(++m_tokenCount) + "\"}" : "{}"};
    }

    Answer nextAnswer()
    {
        const auto answer = answers.front();
        if (answers.size() > 1)
            answers.erase(answers.begin());
        return answer;
    }

    EventLoop& m_loop;
    int m_tokenCount = 0;
};

class UploadOperationTest : public ::testing::Test {
protected:
    /// What a test left unfinished would keep itself, and the store, for ever.
    ~UploadOperationTest() override { queue.cancelAllOperations(); }

    /// Uploads in a queue of the main thread. `steps` is what was told, and when.
    orrenby::Ref<UploadOperation> upload(std::vector<Answer> answers, std::optional<Photo> photo = {})
    {
        transport.answers = std::move(answers);
        queue.setUnderlyingQueue(orrenby::DispatchQueue::main());
        auto report = Report{
            .title = Line{"Rope frayed"}, .place = Line{"Quay"}, .observer = Line{"Nils"}, .body = {}};
        const auto put = destination->outbox->put(
            {{{7, std::move(report), std::move(photo), "a.json"}}, destination->service, destination->user});
        return upload(put.queued.at(0));
    }
    orrenby::Ref<UploadOperation> upload(const QueuedReport& report)
    {
        auto operation = orrenby::make<UploadOperation>(destination, report, progress);
        queue.addOperation(operation);
        return operation;
    }

    /// The only report that waits.
    QueuedReport waiting() const { return destination->outbox->waiting().at(0); }

    using Told = std::pair<double, Step>;
    VirtualWorld world;
    EventLoop loop;
    std::shared_ptr<Memory> memory = StoreFile::inMemory()->memory();
    AnsweringTransport transport{loop};
    orrenby::OperationQueue queue;
    UploadOperation::Progress progress;
    orrenby::Ref<UploadDestination> destination = std::make_shared<UploadDestination>(
        UploadDestination{loop, transport, "http://127.0.0.1:1"_url, "ada@hut.example"_email,
            std::make_shared<ReportOutbox>(memory), "t0"});
    std::vector<Told> steps;
    std::vector<UploadProgress> told;
    orrenby::Streams::AnyCancellable handle = progress.asPublisher().bind([this](const UploadProgress& step) {
        steps.emplace_back(world.elapsed(), step.step);
        told.push_back(step);
    });
};

TEST_F(UploadOperationTest, IsSentAtOnceWhenTheServiceTakesIt)
{
    const auto operation = upload({taken});

    world.runAll();

    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::isSent)));
    EXPECT_THAT(transport.asked, ElementsAre("PUT /reports/7 t0"));
    EXPECT_TRUE(operation->isFinished());
}

TEST_F(UploadOperationTest, SignsInFirstWhereNobodyHas)
{
    destination->token.clear();
    upload({taken});

    world.runAll();

    EXPECT_THAT(transport.asked, ElementsAre("POST /session nobody", "PUT /reports/7 t1"));
    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(1, Step::isSent)));
    EXPECT_EQ(destination->token, "t1");
}

TEST_F(UploadOperationTest, IsRefusedWhereSigningInBringsNoToken)
{
    destination->token.clear();
    transport.isGivingTokens = false;
    upload({taken});

    world.runAll();

    EXPECT_THAT(transport.asked, ElementsAre("POST /session nobody"));
    EXPECT_EQ(told.back().step, Step::isRefused);
    EXPECT_EQ(told.back().reason, "no token in the answer");
}

TEST_F(UploadOperationTest, RenewsATokenThatTheServiceHasForgotten)
{
    upload({{401, "{}"}, taken});

    world.runAll();

    EXPECT_THAT(
        transport.asked, ElementsAre("PUT /reports/7 t0", "POST /session nobody", "PUT /reports/7 t1"));
    EXPECT_EQ(told.back().step, Step::isSent);
}

TEST_F(UploadOperationTest, IsRefusedWhenANewTokenIsNoBetter)
{
    upload({{401, R"({"problem": "Nobody is signed in with this token."})"}});

    world.runAll();

    EXPECT_EQ(transport.asked.size(), 3U);
    EXPECT_EQ(told.back().step, Step::isRefused);
    EXPECT_EQ(told.back().reason, "status 401, \"Nobody is signed in with this token.\"");
}

TEST_F(UploadOperationTest, WaitsLongerAfterEachFailure)
{
    upload({busy, busy, taken});

    world.runAll();

    EXPECT_THAT(steps,
        ElementsAre(Told(0, Step::begins), Told(0.5, Step::waits), Told(2.5, Step::begins),
            Told(3, Step::waits), Told(7, Step::begins), Told(7.5, Step::isSent)));
    EXPECT_EQ(told[1].reason, "status 503, \"Too busy.\"");
}

TEST_F(UploadOperationTest, GivesUpWhenTheScheduleIsOver)
{
    const auto operation = upload({busy});

    world.runAll();

    EXPECT_EQ(steps.back(), Told(16, Step::isGivenUp));
    EXPECT_EQ(told.back().attempt, 4);
    EXPECT_TRUE(operation->isFinished());
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST_F(UploadOperationTest, WaitsAsLongAsTheServiceAsks)
{
    upload({{429, "{}", {{"Retry-After", "7"}}}, taken});

    world.runAll();

    EXPECT_THAT(steps,
        ElementsAre(
            Told(0, Step::begins), Told(0.5, Step::waits), Told(7.5, Step::begins), Told(8, Step::isSent)));
    EXPECT_EQ(told[1].seconds, 7);
}

TEST_F(UploadOperationTest, WaitsNoLessThanPlannedWhereTheServiceAsksForLess)
{
    upload({{503, "{}", {{"Retry-After", "1"}}}, taken});

    world.runAll();

    EXPECT_THAT(steps,
        ElementsAre(
            Told(0, Step::begins), Told(0.5, Step::waits), Told(2.5, Step::begins), Told(3, Step::isSent)));
}

TEST_F(UploadOperationTest, GivesUpAServiceThatAsksForTooLong)
{
    upload({{429, "{}", {{"Retry-After", "301"}}}, taken});

    world.runAll();

    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::isGivenUp)));
}

TEST_F(UploadOperationTest, DoesNotAskAgainWhenTheServiceDoesNotWantTheReport)
{
    upload({{400, "no JSON"}});

    world.runAll();

    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::isRefused)));
    EXPECT_EQ(told.back().reason, "status 400");
}

TEST_F(UploadOperationTest, TriesAgainWhereNobodyListens)
{
    transport.failure = {TransportFailure::Kind::noConnection, "nobody listens"};
    upload({taken});
    world.advance(2);
    EXPECT_EQ(told.back().reason, "no connection: nobody listens");

    transport.failure = {};
    world.runAll();

    EXPECT_EQ(steps.back(), Told(3, Step::isSent));
}

TEST_F(UploadOperationTest, IsRefusedWhenItsBodyCannotBeRead)
{
    transport.failure = {TransportFailure::Kind::bodyUnreadable, "the photo shrank"};
    upload({taken});

    world.runAll();

    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::isRefused)));
    EXPECT_EQ(told.back().reason, "the photo shrank");
}

TEST_F(UploadOperationTest, IsRefusedWithoutItsPhoto)
{
    const OwnFolder folder;
    folder.file("missing.png", "PNG");
    upload({taken}, Photo{folder.file("missing.png"), "image/png"});
    std::filesystem::remove(folder.file("missing.png"));

    world.runAll();

    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0, Step::isRefused)));
    EXPECT_THAT(told.back().reason, ::testing::HasSubstr("missing.png"));
    EXPECT_THAT(transport.asked, IsEmpty());
}

TEST_F(UploadOperationTest, TellsOfEachQuarterOnceAndNotOfTheLast)
{
    transport.bytes = {{10, 100}, {25, 100}, {49, 100}, {80, 100}, {99, 100}, {100, 100}};
    upload({taken});

    world.runAll();

    std::vector<int> percents;
    for (const auto& step : told)
        if (step.step == Step::sends)
            percents.push_back(step.percent);
    EXPECT_THAT(percents, ElementsAre(25, 75));
}

TEST_F(UploadOperationTest, IsCountedBeforeAnythingIsSent)
{
    upload({taken});
    world.advance(0.25);

    const auto entry = memory->context()->fetch<orrenby::OutboxEntry>(orrenby::Outbox::request()).at(0);
    EXPECT_EQ(entry->state(), orrenby::OutboxState::Sending);
    EXPECT_EQ(entry->attempts(), 1);
    EXPECT_FALSE(memory->context()->hasChanges());
}

TEST_F(UploadOperationTest, LeavesTheOutboxWhenItIsSent)
{
    upload({taken});

    world.runAll();

    EXPECT_THAT(memory->context()->fetch<orrenby::OutboxEntry>(orrenby::Outbox::request()), IsEmpty());
    EXPECT_EQ(memory->sendingOf("a.json"), Sending::done);
}

TEST_F(UploadOperationTest, StaysInTheOutboxWhenTheScheduleIsOverAndGoesOnCounting)
{
    upload({busy});
    world.runAll();
    EXPECT_EQ(waiting().entry->attempts(), 4);
    EXPECT_EQ(waiting().entry->reason(), "status 503, \"Too busy.\"");

    transport.answers = {taken};
    upload(waiting());
    world.runAll();

    EXPECT_EQ(steps.back(), Told(16.5, Step::isSent));
    EXPECT_EQ(told.back().attempt, 5);
}

TEST_F(UploadOperationTest, WaitsForTheMomentThatAnEarlierRunHasNoted)
{
    upload({taken})->cancel();
    steps.clear();
    const auto before = waiting();
    ASSERT_TRUE(destination->outbox->begin(before));
    destination->outbox->wait(before, orrenby::Date::now() + 3, "status 503");

    upload(waiting());
    world.runAll();

    EXPECT_THAT(steps.front(), Told(3, Step::begins));
    EXPECT_EQ(told.back().attempt, 2);
}

TEST_F(UploadOperationTest, IsNotInTheOutboxToBeSentWhenItIsRefused)
{
    upload({{400, "{}"}});

    world.runAll();

    EXPECT_THAT(destination->outbox->waiting(), IsEmpty());
    EXPECT_EQ(memory->sendingOf("a.json"), Sending::notAsked);
}

TEST_F(UploadOperationTest, BearsOneKeyInAllItsAttempts)
{
    upload({busy, busy, taken});

    world.runAll();

    ASSERT_EQ(transport.keys.size(), 3U);
    EXPECT_EQ(transport.keys[0].size(), 36U);
    EXPECT_EQ(transport.keys[1], transport.keys[0]);
    EXPECT_EQ(transport.keys[2], transport.keys[0]);
}

TEST_F(UploadOperationTest, EndsAtOnceWhenItIsCancelledWhileItWaits)
{
    const auto operation = upload({busy});
    world.advance(1);

    operation->cancel();
    world.runAll();

    EXPECT_TRUE(operation->isFinished());
    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::waits)));
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST_F(UploadOperationTest, EndsAtOnceWhenItIsCancelledWhileItSends)
{
    const auto operation = upload({taken});
    world.advance(0.25);

    operation->cancel();
    world.runAll();

    EXPECT_TRUE(operation->isFinished());
    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins)));
    EXPECT_EQ(waiting().entry->attempts(), 1);
}

} // namespace
