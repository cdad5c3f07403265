#include "Examples/Fieldbook/Service/ReportService.hpp"

#include "Examples/Fieldbook/Report/ReportEncoding.hpp"
#include "Examples/Fieldbook/Service/Mood.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto ropeFrayed
    = R"({"title": "Rope frayed", "place": "Quay", "observer": "Nils", "severity": "high"})";
const ServicePart report = {"report", "a.json", "application/json", ropeFrayed};
const ServicePart photo = {"photo", "a.png", "image/png", std::string("\x89PNG\0\r\n", 7)};

class ReportServiceTest : public ::testing::Test {
protected:
    static ServiceRequest signIn(std::string body) { return {"POST", "/session", {}, std::move(body), {}}; }
    std::string token()
    {
        const auto answer = service.handle(signIn(R"({"address": "ada@hut.example"})")).body;
        return answer.substr(answer.find(':') + 2, 36);
    }
    static ServiceRequest put(std::string path, const std::string& token, std::vector<ServicePart> parts)
    {
        return {"PUT", std::move(path), {{"authorization", "Token token=\"" + token + '"'}}, {},
            std::move(parts)};
    }

    ReportService service{isAlwaysTaken};
};

TEST_F(ReportServiceTest, GivesATokenForAnAddress)
{
    const auto answer = service.handle(signIn(R"({"address": "ada@hut.example"})"));

    EXPECT_EQ(answer.status, 201);
    EXPECT_THAT(answer.body, ::testing::StartsWith(R"({"token":")"));
    EXPECT_NE(token(), token());
}

TEST_F(ReportServiceTest, SaysWhyItGivesNoToken)
{
    const auto refused = service.handle(signIn(R"({"address": "ada@hut"})"));
    const auto garbled = service.handle(signIn("ada"));

    EXPECT_EQ(refused.status, 400);
    EXPECT_THAT(refused.body, HasSubstr("The domain has no dot."));
    EXPECT_EQ(garbled, (ServiceResponse{400, R"({"problem":"No address was given."})"}));
}

TEST_F(ReportServiceTest, TakesASignedReportWithItsPhoto)
{
    const auto answer = service.handle(put("/reports/4", token(), {report, photo}));

    EXPECT_EQ(answer, (ServiceResponse{201, R"({"number":4,"photoBytes":7})"}));
    ASSERT_THAT(service.received(), SizeIs(1));
    const auto received = service.received().front();
    EXPECT_EQ(received.number, 4);
    EXPECT_EQ(received.sender, "ada@hut.example"_email);
    EXPECT_EQ(received.report.title.text, "Rope frayed");
    EXPECT_EQ(received.photo, photo);
}

TEST_F(ReportServiceTest, TakesAReportWithoutAPhoto)
{
    const auto answer = service.handle(put("/reports/4", token(), {report}));

    EXPECT_EQ(answer, (ServiceResponse{201, R"({"number":4,"photoBytes":0})"}));
    EXPECT_EQ(service.received().front().photo, std::nullopt);
}

TEST_F(ReportServiceTest, ReplacesAReportOfTheSameNumber)
{
    const auto signature = token();
    service.handle(put("/reports/4", signature, {report, photo}));
    service.handle(put("/reports/2", signature, {report}));
    service.handle(put("/reports/4", signature, {report}));

    ASSERT_THAT(service.received(), SizeIs(2));
    EXPECT_EQ(service.received()[0].number, 2);
    EXPECT_EQ(service.received()[1].photo, std::nullopt);
}

TEST_F(ReportServiceTest, RefusesWhatIsNotSigned)
{
    const auto forgotten = token();
    service.forgetTokens();

    auto unsignedRequest = put("/reports/4", "", {report});
    EXPECT_EQ(service.handle(unsignedRequest).status, 401);
    unsignedRequest.headers = {{"authorization", "Token token=\""}};
    EXPECT_EQ(service.handle(unsignedRequest).status, 401);
    unsignedRequest.headers.clear();
    EXPECT_EQ(service.handle(unsignedRequest).status, 401);
    EXPECT_EQ(service.handle(put("/reports/4", "guessed", {report})).status, 401);
    EXPECT_EQ(service.handle(put("/reports/4", forgotten, {report})).status, 401);
    EXPECT_THAT(service.received(), IsEmpty());
}

TEST_F(ReportServiceTest, SaysWhatItCannotReadInAReport)
{
    const auto signature = token();
    const auto garbled = service.handle(
        put("/reports/4", signature, {{"report", "", "", R"({"title": ""})"}}));
    const auto missing = service.handle(put("/reports/4", signature, {photo}));

    EXPECT_EQ(garbled.status, 400);
    EXPECT_THAT(garbled.body, HasSubstr("line 1, column"));
    EXPECT_EQ(missing, (ServiceResponse{400, R"({"problem":"The part \"report\" is missing."})"}));
}

TEST_F(ReportServiceTest, RefusesAPhotoThatIsNoImage)
{
    const auto answer = service.handle(
        put("/reports/4", token(), {report, {"photo", "a.sh", "text/x-shellscript", "x"}}));

    EXPECT_EQ(answer, (ServiceResponse{415, R"({"problem":"The photo is no image."})"}));
    EXPECT_THAT(service.received(), IsEmpty());
}

TEST_F(ReportServiceTest, KnowsNothingElse)
{
    EXPECT_EQ(service.handle({"GET", "/", {}, {}, {}}).status, 404);
    for (const auto* const path : {"/reports/", "/reports/x", "/reports/4x", "/reports/0", "/reports/-1",
             "/reports/99999999999", "/reports/4/"})
        EXPECT_EQ(service.handle(put(path, token(), {report})).status, 404) << path;
    EXPECT_EQ(service.handle({"GET", "/session", {}, {}, {}}).status, 405);
    EXPECT_EQ(service.handle({"DELETE", "/reports/4", {}, {}, {}}).status, 405);
}

TEST_F(ReportServiceTest, TakesAReportWhenItIsInTheMood)
{
    ReportService moody(isTakenWhenMoody);
    const auto answer = moody.handle(signIn(R"({"address": "ada@hut.example"})")).body;
    const auto signature = answer.substr(answer.find(':') + 2, 36);

    EXPECT_EQ(moody.handle(put("/reports/4", signature, {report})).status, 503);
    EXPECT_EQ(moody.handle(put("/reports/4", signature, {report})).status, 201);
    EXPECT_EQ(moody.handle(put("/reports/6", signature, {report})).status, 201);
    for (int attempt = 0; attempt < 5; ++attempt)
        EXPECT_EQ(moody.handle(put("/reports/13", signature, {report})).status, 503);
}

class PostTest : public ReportServiceTest {
protected:
    static ServiceRequest post(const std::string& token, const std::string& key = "")
    {
        ServiceRequest request{"POST", "/reports",
            {{"authorization", "Token token=\"" + token + '"'}, {"content-type", "application/json"}},
            ropeFrayed, {}};
        if (!key.empty())
            request.headers.emplace("idempotency-key", key);
        return request;
    }
};

TEST_F(PostTest, GetsANumberOfItsOwn)
{
    const auto signature = token();
    const auto first = service.handle(post(signature));
    const auto second = service.handle(post(signature));

    EXPECT_EQ(first, (ServiceResponse{201, R"({"number":10001,"photoBytes":0})"}));
    EXPECT_EQ(second, (ServiceResponse{201, R"({"number":10002,"photoBytes":0})"}));
    EXPECT_EQ(service.received().front().text, ropeFrayed);
}

TEST_F(PostTest, IsTakenOnceUnderOneKey)
{
    const auto signature = token();
    const auto first = service.handle(post(signature, "k1"));
    const auto again = service.handle(post(signature, "k1"));
    const auto other = service.handle(post(signature, "k2"));

    EXPECT_EQ(again, first);
    EXPECT_EQ(other.body, R"({"number":10002,"photoBytes":0})");
    EXPECT_THAT(service.received(), SizeIs(2));
}

TEST_F(PostTest, KeepsItsNumberAlsoWhenItIsTakenLater)
{
    ReportService moody(isTakenWhenMoody);
    const auto answer = moody.handle(signIn(R"({"address": "ada@hut.example"})")).body;
    const auto signature = answer.substr(answer.find(':') + 2, 36);

    EXPECT_EQ(moody.handle(post(signature, "k1")).status, 503); // 10001 is taken at the third attempt
    EXPECT_EQ(moody.handle(post(signature, "k2")).status, 201); // 10002 at the first
    EXPECT_EQ(moody.handle(post(signature, "k1")).status, 503);
    EXPECT_EQ(moody.handle(post(signature, "k1")).body, R"({"number":10001,"photoBytes":0})");
}

TEST_F(PostTest, HasKeysForEachPerson)
{
    const auto bo = service.handle(signIn(R"({"address": "bo@hut.example"})")).body;

    service.handle(post(token(), "k1"));
    service.handle(post(bo.substr(bo.find(':') + 2, 36), "k1"));

    EXPECT_THAT(service.received(), SizeIs(2));
}

TEST_F(PostTest, IsRefusedWithoutAToken) { EXPECT_EQ(service.handle(post("")).status, 401); }

TEST_F(PostTest, MayHaveParts)
{
    auto request = post(token());
    request.headers["content-type"] = "multipart/form-data; boundary=x";
    request.body.clear();
    request.parts = {report, photo};

    EXPECT_EQ(service.handle(request).body, R"({"number":10001,"photoBytes":7})");
}

TEST_F(PostTest, IsRefusedAsAnythingElse)
{
    auto request = post(token());
    request.headers["content-type"] = "text/plain";

    EXPECT_EQ(service.handle(request).status, 400);
    EXPECT_EQ(service.handle({"DELETE", "/reports", {}, {}, {}}).status, 405);
}

TEST_F(PostTest, JoinsTheListBehindWhatTheServiceHadToTell)
{
    const auto told = Report{"Ladder gone", "Weir", "Ada", Severity::low, {}};
    ReportService telling({.feed = {told}});
    const auto answer = telling.handle(signIn(R"({"address": "ada@hut.example"})")).body;
    const auto signature = answer.substr(answer.find(':') + 2, 36);
    telling.handle(post(signature));
    telling.handle(put("/reports/4", signature, {photo, report}));

    const auto list = telling.handle({"GET", "/reports", {}, {}, {}});

    EXPECT_EQ(list.status, 200);
    EXPECT_EQ(list.body, encodedReports({told, {"Rope frayed", "Quay", "Nils", Severity::high, {}}}));
}

TEST_F(ReportServiceTest, ListsNothingWhereNothingIsToBeTold)
{
    EXPECT_THAT(
        service.handle({"GET", "/reports", {}, {}, {}}).body, ::testing::MatchesRegex("\\[\\s*\\]\n"));
}

TEST_F(ReportServiceTest, HandsOnWhatItTakesAndSaysWhyItCannotBeKept)
{
    std::vector<int> kept;
    ReportService keeping({.keep = [&](const ReceivedReport& received) -> std::optional<std::string> {
        kept.push_back(received.number);
        return received.number == 4 ? std::optional<std::string>("no space") : std::nullopt;
    }});
    const auto answer = keeping.handle(signIn(R"({"address": "ada@hut.example"})")).body;
    const auto signature = answer.substr(answer.find(':') + 2, 36);

    const auto refused = keeping.handle(put("/reports/4", signature, {report}));
    const auto taken = keeping.handle(put("/reports/5", signature, {report}));

    EXPECT_EQ(refused, (ServiceResponse{507, R"({"problem":"The report cannot be kept: no space"})"}));
    EXPECT_EQ(taken.status, 201);
    EXPECT_THAT(kept, ElementsAre(4, 5));
    EXPECT_THAT(keeping.received(), SizeIs(1));
}

} // namespace
