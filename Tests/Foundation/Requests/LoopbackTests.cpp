#include "Tests/Foundation/Requests/GoldenBodies.hpp"

#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>
#include <httplib.h>
#include <thread>
#include <tuple>

// What another library's server makes of the bodies, sent to it over a socket.

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

/// Name, file name, type, content.
using Part = std::tuple<std::string, std::string, std::string, std::string>;

/// A server on a free port that writes down what it gets.
class LoopbackServer {
public:
    LoopbackServer()
    {
        m_server.Post(".*", [this](const httplib::Request& request, httplib::Response&) {
            m_headers = request.headers;
            m_body = request.body;
            for (const auto& [name, file] : request.files)
                m_parts.emplace_back(name, file.filename, file.content_type, file.content);
        });
        m_port = m_server.bind_to_any_port("127.0.0.1");
        m_thread = std::thread([this] { m_server.listen_after_bind(); });
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    ~LoopbackServer()
    {
        m_server.stop();
        m_thread.join();
    }

    /// Sends the request and gives the parts that the server read.
    std::vector<Part> send(const URLRequest& request)
    {
        m_parts.clear();
        const auto body = bodyText(request);
        check(client().Post(std::string(request.url().path()), headersOf(request), body,
            request.httpHeader("Content-Type").value()));
        return m_parts;
    }

    /// The same, with a body that is read while it is sent.
    std::vector<Part> send(const URLRequest& request, BodyStream& body)
    {
        m_parts.clear();
        std::array<char, 1000> buffer;
        const auto provide = [&](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            const auto isSame = body.offset() == offset || body.restart(offset);
            const auto part = std::span(buffer).first(std::min(length, buffer.size()));
            const auto count = body.read(std::as_writable_bytes(part));
            return isSame && sink.write(buffer.data(), count);
        };
        check(client().Post(std::string(request.url().path()), headersOf(request), body.length(), provide,
            request.httpHeader("Content-Type").value()));
        return m_parts;
    }

    std::string header(const std::string& name) const
    {
        const auto found = m_headers.find(name);
        return found != m_headers.end() ? found->second : "(none)";
    }
    const std::string& body() const { return m_body; }

private:
    httplib::Client client() const { return httplib::Client("127.0.0.1", m_port); }

    static httplib::Headers headersOf(const URLRequest& request)
    {
        httplib::Headers headers;
        for (const auto& [name, value] : request.httpHeaders())
            if (name != "Content-Type") // which the client takes apart from them
                headers.emplace(name, value);
        return headers;
    }

    static void check(const httplib::Result& result)
    {
        ASSERT_TRUE(result) << httplib::to_string(result.error());
        ASSERT_EQ(result->status, 200);
    }

    httplib::Server m_server;
    int m_port = 0;
    std::thread m_thread;
    httplib::Headers m_headers;
    std::string m_body;
    std::vector<Part> m_parts;
};

std::string awkwardText()
{
    const auto bytes = awkwardBytes();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

URLRequest golden(std::string_view name)
{
    for (auto& body : goldenBodies())
        if (body.name == name)
            return std::move(body.request);
    return reportRequest();
}

TEST(Loopback, ReadsThePartsOfEveryUpload)
{
    LoopbackServer server;
    const auto type = Part("type", "", "", "photo");
    const auto photo = Part("photo", counted(2) + ".jpg", "image/jpeg", awkwardText());
    const auto videoType = Part("type", "", "", "video");
    const auto video = Part("video", counted(2) + ".mp4", "video/mp4", "moov");

    EXPECT_THAT(server.send(golden("photo")), UnorderedElementsAre(type, photo));
    EXPECT_THAT(server.send(golden("photo-pending")),
        UnorderedElementsAre(type, photo, Part("num_pending_media", "", "", "3")));
    EXPECT_THAT(server.send(golden("photo-ids")),
        UnorderedElementsAre(type, photo, Part("photo_ids", "", "", R"(["a", "b"])")));
    EXPECT_THAT(server.send(golden("video-pending")),
        UnorderedElementsAre(videoType, video, Part("num_pending_media", "", "", "-1")));
    EXPECT_THAT(server.send(golden("video-ids")),
        UnorderedElementsAre(videoType, video, Part("photo_ids", "", "", R"(["7"])")));
    EXPECT_THAT(server.send(golden("video")),
        UnorderedElementsAre(videoType, Part("video", counted(2) + ".mp4", "video/quicktime", "moov")));
}

TEST(Loopback, ReadsPartsThatWereAddedOneByOne)
{
    LoopbackServer server;

    EXPECT_THAT(server.send(golden("parts")),
        UnorderedElementsAre(Part("caption", "", "text/plain", "Wind"),
            Part("first", counted(1), "image/png", "\x89PNG\r\n"), Part("empty", "", "text/plain", ""),
            Part("second", counted(2), "application/json", R"({"a":1})")));
}

TEST(Loopback, ReadsASignedRequestWithABodyOfJSON)
{
    LoopbackServer server;
    const auto request = reportRequest() | using_(HTTPMethod::post) | signed_("t0k3n")
        | encoding({{"title", "Wind"}});

    EXPECT_THAT(server.send(request), IsEmpty());

    EXPECT_EQ(server.header("Authorization"), "Token token=\"t0k3n\"");
    EXPECT_EQ(server.header("X-Auth-Token"), "t0k3n");
    EXPECT_EQ(server.header("Content-Type"), "application/json");
    EXPECT_EQ(server.body(), R"({"title":"Wind"})");
}

TEST(Loopback, ReadsAnUploadThatIsSentPieceByPiece)
{
    LoopbackServer server;
    const TemporaryFolder folder;
    const CountedNames names;
    std::string content;
    for (int line = 0; line < 10000; ++line)
        content += std::to_string(line) + "\r\n";
    auto upload = makeStreamedUpload({.path = folder.file("video", content), .mimetype = "video/mp4"});
    std::vector<std::uint64_t> offsets;
    upload.body.setProgressHandler([&](std::uint64_t offset, std::uint64_t) { offsets.push_back(offset); });

    const auto parts = server.send(
        reportRequest() | addingHeader("Content-Type", upload.contentType), upload.body);

    EXPECT_THAT(parts,
        UnorderedElementsAre(
            Part("type", "", "", "video"), Part("video", counted(2) + ".mp4", "video/mp4", content)));
    EXPECT_EQ(server.header("Content-Length"), std::to_string(upload.body.length()));
    EXPECT_EQ(offsets.size(), (upload.body.length() + 999) / 1000);
    EXPECT_EQ(offsets.back(), upload.body.length());
}

} // namespace
