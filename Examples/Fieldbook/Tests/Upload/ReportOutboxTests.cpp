#include "Examples/Fieldbook/Upload/ReportOutbox.hpp"

#include "Examples/Fieldbook/Store/StoreFile.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using orrenby::operator""_url;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

Report titled(const char* title) { return {title, "Quay", "Nils", Severity::low, std::nullopt}; }

std::vector<int> numbersOf(const std::vector<QueuedReport>& reports)
{
    std::vector<int> numbers;
    for (const auto& report : reports)
        numbers.push_back(report.number);
    return numbers;
}

std::string textOf(orrenby::BodyStream& body)
{
    std::string text(static_cast<std::size_t>(body.length()), '\0');
    std::size_t length = 0;
    while (length < text.size())
        length += body.read(std::as_writable_bytes(std::span(text).subspan(length)));
    return text;
}

class ReportOutboxTest : public ::testing::Test {
protected:
    PutReports put(int number, std::optional<Photo> photo = {})
    {
        return outbox.put({{{number, titled("Rope frayed"), std::move(photo), std::to_string(number)}},
            "http://hut.example:8080"_url, "ada@hut.example"_email});
    }

    /// The outbox of another run on the same store.
    ReportOutbox later() const
    {
        return ReportOutbox(std::make_shared<Memory>(
            orrenby::make<orrenby::NSManagedObjectContext>(memory->context()->persistentStore())));
    }

    std::shared_ptr<Memory> memory = StoreFile::inMemory()->memory();
    ReportOutbox outbox{memory};
};

TEST_F(ReportOutboxTest, HoldsWhatIsPutInForLaterRuns)
{
    outbox.put({{{7, titled("Rope frayed"), {}, "b.json"}, {3, titled("Crane stuck"), {}, "a.json"}},
        "http://hut.example:8080"_url, "ada@hut.example"_email});

    const auto next = later();
    const auto reports = next.waiting();
    EXPECT_THAT(numbersOf(reports), ElementsAre(7, 3));
    EXPECT_EQ(reports[0].sender, "ada@hut.example"_email);
    EXPECT_EQ(reports[0].service, "http://hut.example:8080/"_url);
    EXPECT_EQ(memory->sendingOf("a.json"), Sending::asked);
}

TEST_F(ReportOutboxTest, RemembersThatAReportIsForTheServiceOfTheProgramsOwn)
{
    outbox.put({{{7, titled("Rope frayed"), {}, "a.json"}}, std::nullopt, "ada@hut.example"_email});

    const auto next = later();
    const auto reports = next.waiting();

    ASSERT_THAT(reports, SizeIs(1));
    EXPECT_EQ(reports[0].service, std::nullopt);
    const auto sent = ReportOutbox::request(*reports[0].entry, "http://127.0.0.1:4711"_url, "t");
    EXPECT_EQ(sent.request.url(), "http://127.0.0.1:4711/reports/7"_url);
}

TEST_F(ReportOutboxTest, SendsTheReportAndItsPhotoSignedAndUnderOneKey)
{
    const OwnFolder folder;
    folder.file("a.png", "PNG bytes");
    const auto queued = put(7, Photo{folder.file("a.png"), "image/png"}).queued.at(0);

    auto first = ReportOutbox::request(*queued.entry, *queued.service, "token");
    auto second = ReportOutbox::request(*queued.entry, *queued.service, "other");

    EXPECT_EQ(first.request.httpMethod(), "PUT");
    EXPECT_EQ(first.request.httpHeader("X-Auth-Token"), "token");
    EXPECT_EQ(first.request.httpHeader("From"), "ada@hut.example");
    EXPECT_EQ(first.request.httpHeader("Idempotency-Key"), second.request.httpHeader("Idempotency-Key"));
    EXPECT_NE(first.request.httpHeader("Idempotency-Key"), std::nullopt);
    const auto text = textOf(first.body);
    EXPECT_THAT(text, HasSubstr(R"("title" : "Rope frayed")"));
    EXPECT_THAT(text, HasSubstr("PNG bytes"));
    EXPECT_EQ(textOf(second.body), text);
}

TEST_F(ReportOutboxTest, LeavesOutAReportWhosePhotoIsGone)
{
    const auto result = put(7, Photo{"missing.png", "image/png"});

    EXPECT_THAT(result.queued, IsEmpty());
    EXPECT_THAT(result.problems, ElementsAre(Pair(7, HasSubstr("missing.png"))));
    EXPECT_THAT(outbox.waiting(), IsEmpty());
}

TEST_F(ReportOutboxTest, KeepsTheCountOfAttemptsOfARunThatWasKilled)
{
    const auto queued = put(7).queued.at(0);
    EXPECT_EQ(outbox.begin(queued), 1);
    EXPECT_THAT(outbox.waiting(), IsEmpty());

    auto next = later();

    ASSERT_THAT(numbersOf(next.waiting()), ElementsAre(7));
    EXPECT_EQ(next.begin(next.waiting()[0]), 2);
}

TEST_F(ReportOutboxTest, KeepsWhatFailedAndWhenItIsToBeTriedAgain)
{
    const auto queued = put(7).queued.at(0);
    const auto soon = orrenby::Date::now() + 60;
    outbox.begin(queued);

    outbox.wait(queued, soon, "no connection");

    const auto next = later();
    const auto entry = next.waiting().at(0).entry;
    EXPECT_EQ(entry->notBefore(), soon);
    EXPECT_EQ(entry->reason(), "no connection");
}

TEST_F(ReportOutboxTest, ForgetsWhatWasSent)
{
    const auto queued = put(7).queued.at(0);
    outbox.begin(queued);

    outbox.finish(queued);

    EXPECT_THAT(later().waiting(), IsEmpty());
    EXPECT_EQ(memory->sendingOf("7"), Sending::done);
    EXPECT_EQ(outbox.begin(queued), std::nullopt);
}

TEST_F(ReportOutboxTest, PutsARefusedReportInAnewWithAnotherKey)
{
    const auto refused = put(7).queued.at(0);
    const auto key = refused.entry->request().httpHeader("Idempotency-Key");
    outbox.begin(refused);
    outbox.refuse(refused, "status 400");
    EXPECT_EQ(memory->sendingOf("7"), Sending::notAsked);
    EXPECT_THAT(outbox.waiting(), IsEmpty());

    const auto again = put(7).queued.at(0);

    EXPECT_NE(again.entry->request().httpHeader("Idempotency-Key"), key);
    EXPECT_EQ(outbox.begin(again), 1);
}

TEST_F(ReportOutboxTest, TellsHowManyWait)
{
    std::vector<std::size_t> counts;
    const auto subscription = outbox.waitingCount().sink([&](const auto& payload) {
        if (payload.isValue())
            counts.push_back(*payload.asValue());
    });

    const auto queued = put(7).queued.at(0);
    put(8);
    outbox.begin(queued);
    outbox.finish(queued);

    EXPECT_EQ(counts.front(), 0U);
    EXPECT_EQ(counts.back(), 1U);
}

TEST_F(ReportOutboxTest, PassesOverWhatThisProgramHasNotPutIn)
{
    auto other = orrenby::Outbox(memory->context());
    other.add(orrenby::URLRequest("http://hut.example/"_url), {.key = "something else"});
    other.add(orrenby::URLRequest("http://hut.example/"_url), {.key = "report/4"}); // from nobody
    memory->context()->save();

    EXPECT_THAT(outbox.waiting(), IsEmpty());
}

} // namespace
