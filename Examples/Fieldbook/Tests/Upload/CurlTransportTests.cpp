#include "Examples/Fieldbook/Upload/CurlTransport.hpp"

#include "Examples/Fieldbook/Application/EventLoop.hpp"
#include "Examples/Fieldbook/Service/Mood.hpp"
#include "Examples/Fieldbook/Service/ReportService.hpp"
#include "Examples/Fieldbook/Service/ServiceServer.hpp"
#include "Examples/Fieldbook/Terminal/Descriptor.hpp"
#include "Examples/Fieldbook/Tests/Loopback.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/ReportRequest.hpp"
#include "Examples/Fieldbook/Upload/ReportRequests.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include <arpa/inet.h>
#include <atomic>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <random>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace fieldbook;
using namespace std::chrono_literals;
using orrenby::operator""_email;
using orrenby::operator""_url;
using Kind = TransportFailure::Kind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Bytes of all kinds, with lines that begin as delimiters do.
std::string anyBytes(std::size_t size)
{
    std::mt19937 source(7);
    std::string bytes;
    while (bytes.size() < size) {
        bytes += "\r\n--";
        for (int count = 0; count < 997; ++count)
            bytes += static_cast<char>(source() & 0xFFU);
    }
    bytes.resize(size);
    return bytes;
}

class CurlTransportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto started = ServiceServer::start(
            [this](const ServiceRequest& request) { return spoil(service.handle(request)); });
        if (const auto problem = started.error())
            GTEST_SKIP() << *problem;
        server = std::move(started).unwrap();
        if (const auto problem = whyUnreachable(server->port()))
            GTEST_SKIP() << *problem;
        url = orrenby::URL::make(server->address()).value();
    }

    /// Sends, and hears until there is an answer or none to come.
    void send(orrenby::URLRequest request, orrenby::BodyStream body = {})
    {
        answer.reset();
        failure.reset();
        sent.clear();
        const auto patience = loop.after(30s, [this] { loop.stop(); });
        const auto subscription = transport.send(std::move(request), std::move(body))
                                      .sink(
                                          [this](const Transport::News::Payload& payload) { hear(payload); });
        loop.run();
    }

    void hear(const Transport::News::Payload& payload)
    {
        EXPECT_TRUE(orrenby::Thread::isMainThread());
        if (payload.isError())
            failure = *payload.asError();
        else if (const auto* const bytes = std::get_if<BytesSent>(payload.asValue()))
            return sent.push_back(*bytes);
        else
            answer = std::get<Answer>(*payload.asValue());
        loop.stop();
    }

    std::string token()
    {
        send(signInRequest(url, "ada@hut.example"_email));
        return answer ? tokenIn(answer->body).value_or("") : "";
    }

    OutgoingReport reportWithPhoto(const std::string& content)
    {
        const auto file = folder.file("a.png", content);
        auto report = Report{
            .title = Line{"Rope frayed"}, .place = Line{"Quay"}, .observer = Line{"Nils"}, .body = {}};
        return {4, std::move(report), Photo{file, "image/png"}, "a.json"};
    }

    /// What the answer says, without the fields that every server adds.
    std::optional<Answer> said() const
    {
        return answer ? std::optional(Answer{answer->status, answer->body}) : std::nullopt;
    }

    OwnFolder folder;
    ReportService service{isAlwaysTaken};
    /// Changes what the service answers. Set before anything is sent.
    std::function<ServiceResponse(ServiceResponse)> spoil = [](auto response) { return response; };
    std::unique_ptr<ServiceServer> server;
    orrenby::URL url = "http://127.0.0.1"_url;
    EventLoop loop;
    CurlTransport transport;
    std::optional<Answer> answer;
    std::optional<TransportFailure> failure;
    std::vector<BytesSent> sent;
};

TEST_F(CurlTransportTest, GetsATokenFromTheService) { EXPECT_THAT(token(), SizeIs(36)); }

TEST_F(CurlTransportTest, BringsAPhotoToTheServiceByteForByte)
{
    const auto photo = anyBytes(2'000'003);
    const auto outgoing = reportWithPhoto(photo);
    auto request = reportRequest(url, outgoing, token());
    const auto length = request.body.length();

    send(std::move(request.request), std::move(request.body));

    EXPECT_EQ(said(), (Answer{201, R"({"number":4,"photoBytes":2000003})"}));
    ASSERT_THAT(service.received(), SizeIs(1));
    const auto received = service.received().front();
    EXPECT_EQ(received.report, outgoing.report);
    EXPECT_EQ(received.sender, "ada@hut.example"_email);
    ASSERT_TRUE(received.photo);
    EXPECT_EQ(received.photo->mediaType, "image/png");
    EXPECT_TRUE(received.photo->content == photo);
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent.back(), (BytesSent{length, length}));
    for (std::size_t place = 1; place < sent.size(); ++place)
        EXPECT_LT(sent[place - 1].sent, sent[place].sent);
}

TEST_F(CurlTransportTest, BringsAnEmptyPhoto)
{
    auto request = reportRequest(url, reportWithPhoto(""), token());

    send(std::move(request.request), std::move(request.body));

    EXPECT_EQ(said(), (Answer{201, R"({"number":4,"photoBytes":0})"}));
    ASSERT_TRUE(service.received().front().photo);
    EXPECT_EQ(service.received().front().photo->content, "");
}

TEST_F(CurlTransportTest, GivesTheAnswerThatRefuses)
{
    auto request = reportRequest(url, reportWithPhoto("x"), "guessed");

    send(std::move(request.request), std::move(request.body));

    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 401);
    EXPECT_EQ(problemIn(answer->body), "Nobody is signed in with this token.");
    EXPECT_THAT(service.received(), IsEmpty());
}

TEST_F(CurlTransportTest, GivesTheHeaderFieldsOfTheAnswer)
{
    spoil = [](auto) {
        return ServiceResponse{.status = 429, .headers = {{"Retry-After", "4"}, {"X-Empty", ""}}};
    };

    send(signInRequest(url, "ada@hut.example"_email));

    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 429);
    EXPECT_EQ(answer->headers.value("retry-after"), "4");
    EXPECT_EQ(answer->headers.value("Content-Type"), "application/json");
}

TEST_F(CurlTransportTest, SaysThatAnAnswerWasCut)
{
    spoil = [](auto response) {
        response.isCut = true;
        return response;
    };

    send(signInRequest(url, "ada@hut.example"_email));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, Kind::brokenOff);
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(CurlTransportTest, GetsALateAnswerAsSoonAsTheServiceEnds)
{
    std::atomic<bool> isAsked = false;
    spoil = [&](auto response) {
        response.latency = 3600;
        isAsked = true;
        return response;
    };
    std::thread ending([&] {
        while (!isAsked)
            std::this_thread::yield();
        server.reset();
    });

    send(signInRequest(url, "ada@hut.example"_email));
    ending.join();

    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 201);
}

TEST_F(CurlTransportTest, SaysThatNobodyListensOnceTheServiceIsGone)
{
    server.reset();

    send(signInRequest(url, "ada@hut.example"_email));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, Kind::noConnection);
    EXPECT_THAT(failure->reason, HasSubstr("127.0.0.1"));
}

TEST_F(CurlTransportTest, SaysThatASilentServiceTookTooLong)
{
    const auto silent = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(::bind(silent.number(), reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(silent.number(), 1), 0);
    ASSERT_EQ(::getsockname(silent.number(), reinterpret_cast<sockaddr*>(&address), &size), 0);
    auto request = orrenby::URLRequest(
        orrenby::URL::make("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port))).value(), 1);

    send(std::move(request));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, Kind::timedOut);
}

TEST_F(CurlTransportTest, SaysThatAPhotoIsNotWhatItWas)
{
    const auto outgoing = reportWithPhoto(anyBytes(300'000));
    auto request = reportRequest(url, outgoing, token());
    std::filesystem::resize_file(outgoing.photo->file, 1000);

    send(std::move(request.request), std::move(request.body));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, Kind::bodyUnreadable);
    EXPECT_THAT(failure->reason, HasSubstr("a.png"));
    EXPECT_THAT(service.received(), IsEmpty());
}

TEST_F(CurlTransportTest, RefusesAHeaderFieldWithALineBreak)
{
    auto request = orrenby::URLRequest(url);
    request.setHTTPHeader("X-Auth-Token", "a\r\nX-Other: b");

    send(std::move(request));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, Kind::malformed);
}

TEST_F(CurlTransportTest, RefusesWhatIsNoAddressOfTheWeb)
{
    send(orrenby::URLRequest("file:///etc/hostname"_url));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, Kind::malformed);
}

TEST_F(CurlTransportTest, TellsNothingMoreOnceItsSubscriptionIsDropped)
{
    auto request = reportRequest(url, reportWithPhoto(anyBytes(300'000)), token());
    answer.reset();
    sent.clear();
    {
        const auto subscription = transport.send(std::move(request.request), std::move(request.body))
                                      .sink(
                                          [this](const Transport::News::Payload& payload) { hear(payload); });
    }
    loop.drain();

    EXPECT_EQ(answer, std::nullopt);
    EXPECT_EQ(failure, std::nullopt);
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(CurlTransportTest, SendsSeveralRequestsAtOnce)
{
    int answers = 0;
    const auto patience = loop.after(30s, [this] { loop.stop(); });
    std::vector<orrenby::Streams::AnyCancellable> subscriptions;
    for (int count = 0; count < 8; ++count)
        subscriptions.push_back(transport.send(signInRequest(url, "ada@hut.example"_email), {})
                                    .sink([&](const Transport::News::Payload& payload) {
                                        if (!payload.isError()
                                            && std::holds_alternative<Answer>(*payload.asValue())
                                            && ++answers == 8)
                                            loop.stop();
                                    }));
    loop.run();

    EXPECT_EQ(answers, 8);
}

TEST(ServiceServer, SaysWhyItCannotListen)
{
    const auto handler = [](const ServiceRequest&) { return ServiceResponse(); };
    const auto first = ServiceServer::start(handler);
    if (first.isFailure())
        GTEST_SKIP() << *first.error();

    const auto second = ServiceServer::start(handler, first.unwrap()->port());

    ASSERT_TRUE(second.isFailure());
    EXPECT_EQ(second.error(), "cannot listen on 127.0.0.1: Address already in use");
}

TEST(ServiceServer, CanBeEndedAtOnceAndGivesItsPortBack)
{
    const auto handler = [](const ServiceRequest&) { return ServiceResponse(); };

    int port = 0;
    for (int count = 0; count < 20; ++count) {
        const auto server = ServiceServer::start(handler, port);
        if (count == 0 && server.isFailure())
            GTEST_SKIP() << *server.error();
        ASSERT_TRUE(server.isSuccess()) << *server.error();
        port = server.unwrap()->port();
    }
}

} // namespace
