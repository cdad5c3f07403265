#include "Examples/Fieldbook/Service/DirectService.hpp"

#include "Examples/Fieldbook/Service/ReportService.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/ReportRequest.hpp"
#include "Examples/Fieldbook/Upload/ReportRequests.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using orrenby::operator""_url;
using Kind = TransportFailure::Kind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DirectServiceTest : public ::testing::Test {
protected:
    /// What is heard stands in the members below.
    void send(orrenby::URLRequest request, orrenby::BodyStream body = {})
    {
        answer.reset();
        failure.reset();
        sent.clear();
        subscription = transport->send(std::move(request), std::move(body))
                           .sink([this](const Transport::News::Payload& payload) {
                               if (payload.isError())
                                   failure = *payload.asError();
                               else if (const auto* const bytes = std::get_if<BytesSent>(payload.asValue()))
                                   sent.push_back(bytes->sent);
                               else {
                                   answer = std::get<Answer>(*payload.asValue());
                                   answeredAt = world.elapsed();
                               }
                           });
    }
    void signIn() { send(signInRequest("http://hut.example"_url, "ada@hut.example"_email)); }

    orrenby::BodyStream bytes(std::size_t count) const
    {
        orrenby::BodyStream body;
        body.append(std::string(count, 'x'));
        return body;
    }

    orrenby::testing::VirtualWorld world;
    EventLoop loop;
    ReportService reports;
    DirectService service{loop};
    std::unique_ptr<Transport> transport = service.transport();
    orrenby::Streams::AnyCancellable subscription;
    std::optional<Answer> answer;
    std::optional<TransportFailure> failure;
    std::vector<std::uint64_t> sent;
    double answeredAt = 0;
};

TEST_F(DirectServiceTest, AnswersWhatItIsAsked)
{
    std::vector<ServiceRequest> asked;
    //! [Asking without sockets]
    service.start([&](const ServiceRequest& request) {
        asked.push_back(request);
        return ServiceResponse{.status = 201, .headers = {{"X-Mood", "good"}}};
    });
    signIn();
    world.runAll();
    //! [Asking without sockets]

    EXPECT_EQ(answer, (Answer{201, "{}", {{"X-Mood", "good"}}}));
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].method, "POST");
    EXPECT_EQ(asked[0].path, "/session");
    EXPECT_EQ(asked[0].header("content-type"), "application/json");
    EXPECT_EQ(asked[0].body, R"({"address":"ada@hut.example"})");
}

TEST_F(DirectServiceTest, BringsAReportAndItsPhotoByteForByte)
{
    service.start([this](const ServiceRequest& request) { return reports.handle(request); });
    signIn();
    world.runAll();
    const OwnFolder folder;
    const auto photo = std::string("\r\n--\0\x89PNG", 9) + std::string(40'000, '\xFF');
    const auto file = folder.file("a.png", photo);
    const auto report = Report{"Rope frayed", "Quay", "Nils", Severity::low, {}};

    auto request = reportRequest("http://hut.example"_url, {4, report, Photo{file, "image/png"}, "a.json"},
        tokenIn(answer->body).value_or(""));
    send(std::move(request.request), std::move(request.body));
    world.runAll();

    ASSERT_EQ(reports.received().size(), 1U);
    EXPECT_EQ(reports.received()[0].report, report);
    ASSERT_TRUE(reports.received()[0].photo);
    EXPECT_TRUE(reports.received()[0].photo->content == photo);
}

TEST_F(DirectServiceTest, SendsBodiesPieceByPiece)
{
    service.start([](const ServiceRequest&) { return ServiceResponse(); });

    send(orrenby::URLRequest("http://hut.example/a"_url), bytes(40'000));
    world.advance(0.07);
    EXPECT_THAT(sent, ElementsAre(16'384, 32'768));
    world.runAll();

    EXPECT_THAT(sent, ElementsAre(16'384, 32'768, 40'000));
    EXPECT_TRUE(answer);
}

TEST_F(DirectServiceTest, AnswersAsLateAsItSays)
{
    service.start([](const ServiceRequest&) { return ServiceResponse{.latency = 2.5}; });

    signIn();
    world.runAll();

    EXPECT_NEAR(answeredAt, 2.5, 0.01);
}

TEST_F(DirectServiceTest, SaysThatNobodyListens)
{
    signIn();
    world.runAll();

    EXPECT_EQ(failure, (TransportFailure{Kind::noConnection, "nobody listens"}));
}

TEST_F(DirectServiceTest, BreaksOffWhatIsOnItsWayWhenItIsKilled)
{
    service.start([this](const ServiceRequest& request) { return reports.handle(request); });
    send(orrenby::URLRequest("http://hut.example/reports/4"_url), bytes(100'000));
    world.advance(0.07);

    service.kill();
    service.start([this](const ServiceRequest& request) { return reports.handle(request); });
    world.runAll();

    EXPECT_EQ(failure, (TransportFailure{Kind::brokenOff, "the connection was closed"}));
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(DirectServiceTest, HasDoneWhatItWasAskedWhereTheAnswerIsCut)
{
    int asked = 0;
    service.start([&](const ServiceRequest&) {
        ++asked;
        return ServiceResponse{.isCut = true};
    });

    signIn();
    world.runAll();

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(failure, (TransportFailure{Kind::brokenOff, "the connection was closed"}));
}

TEST_F(DirectServiceTest, TellsNothingMoreOnceTheSubscriptionIsDropped)
{
    int asked = 0;
    service.start([&](const ServiceRequest&) {
        ++asked;
        return ServiceResponse();
    });
    send(orrenby::URLRequest("http://hut.example/a"_url), bytes(40'000));
    world.advance(0.01);

    subscription = {};
    world.runAll();

    EXPECT_EQ(asked, 0);
    EXPECT_EQ(sent.size(), 1U);
    EXPECT_EQ(world.pendingCount(), 0U);
}

TEST_F(DirectServiceTest, IsMissedByItsTransportsOnceItIsGone)
{
    auto gone = std::make_unique<DirectService>(loop);
    gone->start([](const ServiceRequest&) { return ServiceResponse(); });
    transport = gone->transport();
    gone.reset();

    signIn();
    world.runAll();

    EXPECT_EQ(failure, (TransportFailure{Kind::noConnection, "nobody listens"}));
}

} // namespace
