#include "Orrenby/Foundation/Outbox/OutboxEntry.hpp"

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::Optional;

namespace {

/// The entry as it is read from the file after a restart, with all that belongs to it.
class Kept {
public:
    explicit Kept(const URLRequest& request, const OutboxOptions& options = {})
    {
        Outbox before(outboxContext(m_folder.file("store")));
        before.add(request, options);
        before.context()->save();
        before = Outbox(outboxContext(m_folder.file("store")));
        entry = before.entries().at(0);
        context = before.context();
    }

    Ref<OutboxEntry> entry;
    Ref<NSManagedObjectContext> context;

private:
    TemporaryFolder m_folder;
};

BodyStreamError::Kind bodyFailure(const OutboxEntry& entry)
{
    try {
        entry.body();
    } catch (const BodyStreamError& error) {
        return error.kind();
    }
    throw std::logic_error("the body is there");
}

std::optional<std::string> damaged(const URLRequest& request, const char* key, Any value)
{
    const Kept kept(request);
    kept.entry->setValue(key, std::move(value));
    try {
        kept.entry->request();
        return std::nullopt;
    } catch (const StoreError& error) {
        return error.description();
    }
}

} // namespace

TEST(OutboxEntry, ShowsWhatWaits)
{
    Outbox outbox(outboxContext());
    auto request = requestNamed("a") | addingHeader("Accept", "text/plain");
    request.setHTTPBody(dataFromText("body"));
    //! [Reading what waits]
    const auto entry = outbox.add(request, {.key = "note 7", .notBefore = Date(1'800'000'000)}).entry;

    EXPECT_EQ(entry->state(), OutboxState::Pending);
    EXPECT_EQ(entry->attempts(), 0);
    EXPECT_EQ(entry->key(), "note 7");
    EXPECT_EQ(entry->notBefore(), Date(1'800'000'000));
    EXPECT_EQ(entry->url(), request.url());
    EXPECT_EQ(entry->bodyLength(), 4);
    EXPECT_EQ(entry->request(), request);
    EXPECT_EQ(entry->body().length(), 4u);
    //! [Reading what waits]
    EXPECT_EQ(entry->method(), "POST");
    EXPECT_EQ(entry->begunAt(), std::nullopt);
    EXPECT_EQ(entry->reason(), std::nullopt);
    EXPECT_FALSE(entry->hasStreamedBody());
    EXPECT_LE(entry->addedAt(), Date::now());
}

TEST(OutboxEntry, KeepsARequestAsItIs)
{
    using namespace std::string_literals;
    URLRequest request("https://u:p@example.org:8080/a%20b?q=1&q#f"_url, 0.5);
    request.setHTTPMethod("m\xff\0x"s);
    request.setHTTPHeaders({{"X-b", "1\r\n2"}, {"accept", ""}, {"A", "\xff\0"s}});
    request.setHTTPBody(dataFromText("\0\xff,:"s));

    const Kept kept(request);

    const auto same = kept.entry->request();
    EXPECT_EQ(same, request);
    std::vector<std::string> names;
    for (const auto& field : same.httpHeaders())
        names.push_back(field.name);
    EXPECT_THAT(names, ElementsAre("X-b", "accept", "A"));
    EXPECT_EQ(textOf(kept.entry->body()), "\0\xff,:"s);
}

TEST(OutboxEntry, TellsAnEmptyBodyFromNone)
{
    auto empty = requestNamed("a");
    empty.setHTTPBody(Data());

    EXPECT_THAT(Kept(empty).entry->request().httpBody(), Optional(Data()));
    EXPECT_EQ(Kept(requestNamed("a")).entry->request().httpBody(), std::nullopt);
    EXPECT_EQ(Kept(requestNamed("a")).entry->body().length(), 0u);
}

TEST(OutboxEntry, KeepsAnEndlessTimeLimit)
{
    auto request = requestNamed("a");
    request.setTimeoutInterval(std::numeric_limits<double>::infinity());

    EXPECT_EQ(Kept(request).entry->request(), request);
}

TEST(OutboxEntry, StreamsAFile)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a.jpg", "JPEG");

    const Kept kept(requestNamed("a"), {.file = HTTPBodyFile{.path = path, .mimetype = "image/jpeg"}});

    EXPECT_TRUE(kept.entry->hasStreamedBody());
    EXPECT_EQ(kept.entry->bodyLength(), 4);
    EXPECT_EQ(kept.entry->request().httpBody(), std::nullopt);
    EXPECT_THAT(kept.entry->request().httpHeader("Content-Type"), Optional(std::string("image/jpeg")));
    EXPECT_EQ(textOf(kept.entry->body()), "JPEG");
}

TEST(OutboxEntry, StreamsAnEmptyFile)
{
    const TemporaryFolder folder;

    const Kept kept(requestNamed("a") | addingHeader("Content-Type", "text/csv"),
        {.file = HTTPBodyFile{.path = folder.file("a", "")}});

    EXPECT_THAT(kept.entry->request().httpHeader("Content-Type"), Optional(std::string("text/csv")));
    EXPECT_TRUE(kept.entry->hasStreamedBody());
    EXPECT_EQ(kept.entry->body().length(), 0u);
}

TEST(OutboxEntry, StreamsPartsAsTheSameBytesInEachAttempt)
{
    const CountedNames names;
    const TemporaryFolder folder;
    const auto path = folder.file("a.jpg", "JPEG");

    const Kept kept(requestNamed("a"),
        {.parts = {{.key = "note", .contentType = "text/plain", .data = dataFromText("dry")},
             {.key = "photo", .contentType = "image/jpeg", .path = path}}});

    const auto boundary = "Boundary-" + counted(1);
    const auto expected = "--" + boundary
        + "\r\nContent-Disposition: form-data; name=\"note\"\r\nContent-Type: text/plain\r\n\r\ndry\r\n--"
        + boundary + "\r\nContent-Disposition: form-data; name=\"photo\"; filename=\"" + counted(2)
        + "\"\r\nContent-Type: image/jpeg\r\n\r\nJPEG\r\n--" + boundary + "--\r\n";
    EXPECT_THAT(kept.entry->request().httpHeader("Content-Type"),
        Optional("multipart/form-data; boundary=" + boundary));
    EXPECT_EQ(textOf(kept.entry->body()), expected);
    EXPECT_EQ(textOf(kept.entry->body()), expected);
    EXPECT_EQ(kept.entry->bodyLength(), static_cast<std::int64_t>(expected.size()));
}

TEST(OutboxEntry, FindsAFileFromAnotherWorkingDirectory)
{
    const TemporaryFolder folder;
    folder.file("a", "content");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.file(""));
    const Kept kept(requestNamed("a"), {.file = HTTPBodyFile{.path = "a"}});
    std::filesystem::current_path(before);

    EXPECT_EQ(textOf(kept.entry->body()), "content");
}

TEST(OutboxEntry, SaysThatAFileIsGone)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "content");
    const Kept kept(requestNamed("a"), {.file = HTTPBodyFile{.path = path}});

    std::filesystem::remove(path);
    EXPECT_EQ(bodyFailure(*kept.entry), BodyStreamError::Kind::CannotOpen);

    std::filesystem::create_directory(path);
    EXPECT_EQ(bodyFailure(*kept.entry), BodyStreamError::Kind::NoRegularFile);
}

TEST(OutboxEntry, SaysThatAFileIsAnotherThanItWas)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "content");
    const auto written = std::filesystem::last_write_time(path);
    const Kept kept(requestNamed("a"), {.file = HTTPBodyFile{.path = path}});

    folder.file("a", "con");
    EXPECT_EQ(bodyFailure(*kept.entry), BodyStreamError::Kind::Shrunk);
    folder.file("a", "content and more");
    EXPECT_EQ(bodyFailure(*kept.entry), BodyStreamError::Kind::Changed);
    folder.file("a", "CONTENT");
    std::filesystem::last_write_time(path, written + std::chrono::seconds(1));
    EXPECT_EQ(bodyFailure(*kept.entry), BodyStreamError::Kind::Changed);

    // A copy that was put back, as from a backup, is the same.
    std::filesystem::rename(folder.file("b", "content"), path);
    std::filesystem::last_write_time(path, written);
    EXPECT_EQ(textOf(kept.entry->body()), "content");
}

TEST(OutboxEntry, SaysThatTheStoreHoldsNoRequest)
{
    const auto request = requestNamed("a");

    EXPECT_EQ(damaged(request, "url", "no url"), "Corrupt: OutboxEntry/p1.url is nothing of a request");
    EXPECT_EQ(damaged(request, "headers", dataFromText("x")),
        "Corrupt: OutboxEntry/p1.headers is nothing of a request");
}

TEST(OutboxEntry, SaysThatTheStoreHoldsNoBody)
{
    const TemporaryFolder folder;
    const Kept kept(requestNamed("a"), {.file = HTTPBodyFile{.path = folder.file("a", "content")}});
    kept.entry->object("body")->setValue("content", dataFromText("damaged"));

    EXPECT_EQ(failureOf([&] { kept.entry->body(); }), StoreError::Kind::Corrupt);
}

TEST(OutboxEntry, OfAStateThatNobodyKnowsIsGivenUp)
{
    const Kept kept(requestNamed("a"));
    kept.entry->setValue("state", 17);
    kept.context->save();

    EXPECT_EQ(kept.entry->state(), OutboxState::GivenUp);
    EXPECT_EQ(Outbox(kept.context).next(), nullptr);
}

TEST(OutboxEntry, OfAListIsReadWithoutItsBody)
{
    auto request = requestNamed("a");
    request.setHTTPBody(dataFromText("body"));
    const Kept kept(request);

    // Held, so that what was read of it is not dropped with the last reference.
    const auto body = kept.entry->object("body");
    EXPECT_TRUE(body->isFault());
    EXPECT_EQ(kept.entry->request(), request);
    EXPECT_FALSE(body->isFault());
}
