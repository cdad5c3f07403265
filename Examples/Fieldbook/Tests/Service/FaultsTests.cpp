#include "Examples/Fieldbook/Service/Faults.hpp"

#include "Examples/Fieldbook/Report/ReportDecoding.hpp"
#include "Examples/Fieldbook/Report/ReportEncoding.hpp"
#include "Examples/Fieldbook/Report/SampleReports.hpp"
#include "Examples/Fieldbook/Service/ReportService.hpp"
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const ServiceRequest getReports = {"GET", "/reports", {}, {}, {}};
const ServiceRequest putReport = {"PUT", "/reports/4", {}, {}, {}};

/// A plan in which every request has this fault.
FaultPlan always(Fault fault) { return {.kinds = {fault}, .seed = "autumn", .percent = 100}; }

/// What a feed holds where it does not matter what.
const auto sampleReports = SampleReports("autumn").next(5);

ServiceResponse taken(const ServiceRequest&) { return {.status = 201}; }

TEST(Faults, AreReadByTheirNames)
{
    EXPECT_EQ(faultsIn("500"), std::vector{Fault::serverError});
    EXPECT_EQ(faultsIn("cut,latency"), (std::vector{Fault::cut, Fault::latency}));
    EXPECT_EQ(faultsIn("none"), std::vector<Fault>());
    EXPECT_EQ(faultsIn("all")->size(), 5U);
}

TEST(Faults, AreRefusedUnderOtherNamesAndTwice)
{
    for (const auto* const names : {"", ",", "cut,", ",cut", "404", "cut,cut", "all,cut", "Cut", "cut, 500"})
        EXPECT_EQ(faultsIn(names), std::nullopt) << names;
}

TEST(FaultyService, PassesOnWhatHasNoFault)
{
    FaultyService service(taken, {.kinds = {}, .percent = 100});
    FaultyService lucky(taken, {.kinds = *faultsIn("all"), .percent = 0});

    EXPECT_EQ(service.handle(putReport), (ServiceResponse{.status = 201}));
    EXPECT_EQ(lucky.handle(putReport), (ServiceResponse{.status = 201}));
}

TEST(FaultyService, HasSaidInEachRunTheSame)
{
    //! [Spoiling what a service answers]
    const auto service = [](const ServiceRequest&) { return ServiceResponse{.status = 201}; };
    auto faulty = FaultyService(service, {.kinds = {Fault::serverError}, .seed = "autumn", .percent = 50});

    std::vector<int> statuses;
    for (int attempt = 1; attempt <= 8; ++attempt)
        statuses.push_back(faulty.handle({"PUT", "/reports/4", {}, {}, {}}).status);
    //! [Spoiling what a service answers]

    FaultyService again(service, {.kinds = {Fault::serverError}, .seed = "autumn", .percent = 50});
    for (const auto status : statuses) {
        again.handle(getReports); // what else is asked changes nothing
        EXPECT_EQ(again.handle(putReport).status, status);
    }
    EXPECT_EQ(std::set(statuses.begin(), statuses.end()), (std::set{201, 500}));
}

TEST(FaultyService, HasOtherFaultsForAnotherSeed)
{
    const auto faultsOf = [](const char* seed) {
        const FaultyService service(taken, {.kinds = *faultsIn("all"), .seed = seed, .percent = 50});
        std::vector<std::optional<Fault>> faults;
        for (int attempt = 1; attempt <= 40; ++attempt)
            faults.push_back(service.faultOf("PUT", "/reports/4", attempt));
        return faults;
    };

    EXPECT_NE(faultsOf("autumn"), faultsOf("winter"));
    EXPECT_EQ(faultsOf("autumn"), faultsOf("autumn"));
}

TEST(FaultyService, HasAboutAsManyFaultsAsPlanned)
{
    const FaultyService service(taken, {.kinds = {Fault::cut}, .seed = "autumn", .percent = 30});

    int count = 0;
    for (int number = 1; number <= 1000; ++number)
        count += service.faultOf("PUT", "/reports/" + std::to_string(number), 1) ? 1 : 0;

    EXPECT_GT(count, 230);
    EXPECT_LT(count, 370);
}

TEST(FaultyService, DoesNothingWhereItBreaks)
{
    int handled = 0;
    const auto count = [&](const ServiceRequest&) {
        ++handled;
        return ServiceResponse();
    };

    const auto broken = FaultyService(count, always(Fault::serverError)).handle(putReport);
    const auto busy = FaultyService(count, always(Fault::tooManyRequests)).handle(putReport);

    EXPECT_EQ(broken, (ServiceResponse{500, R"({"problem":"Something broke."})"}));
    EXPECT_EQ(busy.status, 429);
    const auto wait = busy.headers.value("Retry-After");
    EXPECT_THAT((std::vector{"3", "4", "5", "6"}), ::testing::Contains(wait.value_or("")));
    EXPECT_EQ(handled, 0);
}

TEST(FaultyService, HasDoneEverythingWhereTheAnswerIsCutOrLate)
{
    const auto cut = FaultyService(taken, always(Fault::cut)).handle(putReport);
    const auto late = FaultyService(taken, always(Fault::latency)).handle(putReport);

    EXPECT_EQ(cut, (ServiceResponse{.status = 201, .isCut = true}));
    EXPECT_EQ(late.status, 201);
    EXPECT_GE(late.latency, 0.5);
    EXPECT_LE(late.latency, 3);
}

TEST(FaultyService, SpoilsOneMemberOfAListAndLeavesTheOthers)
{
    ReportService service({.feed = sampleReports});
    FaultyService faulty(
        [&](const auto& request) { return service.handle(request); }, always(Fault::malformed));

    const auto body = faulty.handle(getReports).body;

    EXPECT_EQ(service.handle(getReports).body, encodedReports(sampleReports));
    const auto first = body.find("quite bad");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(body.find("quite bad", first + 1), std::string::npos);
    for (const auto& report : sampleReports)
        EXPECT_NE(body.find(report.title.text), std::string::npos) << report.title.text;
}

TEST(FaultyService, SpoilsNothingThatIsNoList)
{
    FaultyService faulty(taken, always(Fault::malformed));
    ReportService service;
    FaultyService empty(
        [&](const auto& request) { return service.handle(request); }, always(Fault::malformed));

    EXPECT_EQ(faulty.faultOf("PUT", "/reports/4", 1), std::nullopt);
    EXPECT_EQ(faulty.handle(getReports), (ServiceResponse{.status = 201}));
    EXPECT_EQ(empty.handle(getReports).body, service.handle(getReports).body);
}

TEST(FaultyService, CountsAttemptsOnSeveralThreads)
{
    FaultyService faulty(taken, {.kinds = {Fault::serverError}, .seed = "autumn", .percent = 50});
    std::vector<int> expected;
    for (int attempt = 1; attempt <= 200; ++attempt)
        expected.push_back(faulty.faultOf("PUT", "/reports/4", attempt) ? 500 : 201);
    std::vector<int> one(100);
    std::vector<int> other(100);
    const auto ask = [&](std::vector<int>& statuses) {
        for (auto& status : statuses)
            status = faulty.handle(putReport).status;
    };

    std::thread thread([&] { ask(one); });
    ask(other);
    thread.join();

    one.insert(one.end(), other.begin(), other.end());
    EXPECT_THAT(one, ::testing::UnorderedElementsAreArray(expected));
}

} // namespace
