#include "Scenario/Steps.hpp"

#include "Daemon/DaemonOptions.hpp"
#include "Report/SampleReports.hpp"
#include "Scenario/Arguments.hpp"
#include "Scenario/Stage.hpp"
#include "Terminal/Text.hpp"
#include <thread>

namespace fieldbook::steps {

namespace {

ServiceRequest sessionRequest(const std::string& address)
{
    return {"POST", "/session", {}, R"({"address": ")" + address + "\"}", {}};
}

/// Signs in and posts one report, as often as it is told to. Gives how many were taken.
int postReports(ReportService& service, const std::string& address, int count)
{
    int taken = 0;
    for (int number = 1; number <= count; ++number) {
        const auto session = service.handle(sessionRequest(address)).body;
        const auto token = session.substr(session.find(':') + 2, 36);
        const auto answer = service.handle({"POST", "/reports",
            {{"authorization", "Token token=\"" + token + '"'}, {"content-type", "application/json"},
                {"idempotency-key", std::to_string(number)}},
            R"({"title": "Gate open", "place": "Weir", "observer": "Nils", "severity": "low"})", {}});
        taken += answer.status == 201 ? 1 : 0;
    }
    return taken;
}

} // namespace

StepProblem serve(Stage& stage, const std::string& arguments)
{
    const auto words = wordsOf(arguments);
    const auto options = parseDaemonOptions(pointersTo(words));
    if (const auto problem = options.error())
        return *problem;
    if (!stage.reports)
        stage.reports = std::make_unique<ReportService>(ReportServiceOptions{
            .feed = SampleReports(options.value()->feed.seed).next(options.value()->feed.count)});
    stage.faulty = std::make_unique<FaultyService>(
        [&stage](const ServiceRequest& request) { return stage.reports->handle(request); },
        options.value()->faults);
    stage.service.start([&stage](const ServiceRequest& request) {
        auto response = stage.faulty->handle(request);
        stage.terminal.print("  " + request.method + ' ' + request.path + ' '
            + std::to_string(response.status)
            + (response.isCut              ? " cut"
                    : response.latency > 0 ? " late"
                                           : ""));
        return response;
    });
    return {};
}

StepProblem kill(Stage& stage, const std::string&)
{
    stage.service.kill();
    return {};
}

StepProblem forget(Stage& stage, const std::string&)
{
    if (!stage.reports)
        return "there is no service";
    stage.reports->forgetTokens();
    return {};
}

StepProblem received(Stage& stage, const std::string&)
{
    if (!stage.reports)
        return "there is no service";
    for (const auto& report : stage.reports->received())
        stage.say("#" + std::to_string(report.number) + " from " + report.sender.stringValue() + ": "
            + report.report.title.text
            + (report.photo ? ", photo of " + std::to_string(report.photo->content.size()) + " bytes" : ""));
    return {};
}

StepProblem compare(Stage& stage, const std::string& numberAndFile)
{
    const auto words = wordsOf(numberAndFile);
    const auto number = words.size() == 2 ? numberIn(words[0]) : std::nullopt;
    if (!number || !stage.reports)
        return "it takes the number of a report and the name of a file";
    const auto content = contentOf(reportsFolder / words[1]);
    for (const auto& report : stage.reports->received())
        if (report.number == *number && report.photo) {
            const bool isSame = report.photo->content == content;
            stage.say("the photo of #" + words[0] + " and " + words[1] + ": "
                + (isSame ? "the same " + std::to_string(content.size()) + " bytes" : "other bytes"));
            return {};
        }
    return "no photo of #" + words[0] + " was received";
}

StepProblem rush(Stage& stage, const std::string& count)
{
    const auto times = numberIn(count);
    if (!times || !stage.reports)
        return "it takes how often, and a service";
    int first = 0;
    std::thread other([&] { first = postReports(*stage.reports, "ada@hut.example", *times); });
    const auto second = postReports(*stage.reports, "bo@hut.example", *times);
    other.join();
    stage.say(std::to_string(first) + " and " + std::to_string(second) + " requests were answered; "
        + counted(stage.reports->received().size(), "report") + " taken");
    return {};
}

} // namespace fieldbook::steps
