// fieldbookd: the service to which Fieldbook sends reports, as a program of its own.

#include "Daemon/DaemonOptions.hpp"
#include "Report/SampleReports.hpp"
#include "Service/Faults.hpp"
#include "Service/ReportKeeper.hpp"
#include "Service/ReportService.hpp"
#include "Service/ServiceServer.hpp"
#include "Terminal/Terminal.hpp"
#include "Terminal/Text.hpp"
#include <csignal>
#include <cstdio>
#include <exception>
#include <mutex>
#include <signal.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace fieldbook {

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

void complain(const std::string& message) { Terminal(STDERR_FILENO, false).print("fieldbookd: " + message); }

/// `PUT /reports/4 201`, and what was done to the answer.
std::string lineFor(const ServiceRequest& request, const ServiceResponse& response)
{
    auto line = printable(request.method + ' ' + request.path) + ' ' + std::to_string(response.status);
    if (response.latency > 0)
        line += " late";
    return response.isCut ? line + " cut" : line;
}

/// The signals that end the program. From now on they wait to be asked for, on all threads.
sigset_t blockSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

int serve(const DaemonOptions& options)
{
    std::signal(SIGPIPE, SIG_IGN);
    if (std::error_code error; options.keep && !std::filesystem::is_directory(*options.keep, error)) {
        complain("no such folder: " + printable(options.keep->string()));
        return failed;
    }
    const auto signals = blockSignals(); // before there are threads
    ReportServiceOptions settings{.feed = SampleReports(options.feed.seed).next(options.feed.count)};
    if (options.keep)
        settings.keep = [folder = *options.keep](const auto& report) { return keepReport(report, folder); };
    ReportService service(std::move(settings));
    FaultyService spoilt(
        [&](const ServiceRequest& request) { return service.handle(request); }, options.faults);

    auto terminal = Terminal(STDOUT_FILENO, false);
    std::mutex mutex;
    // Its address is the first line, however soon somebody calls.
    std::unique_lock first(mutex);
    auto started = ServiceServer::start(
        [&](const ServiceRequest& request) {
            auto response = spoilt.handle(request);
            const std::lock_guard lock(mutex);
            terminal.print(lineFor(request, response));
            return response;
        },
        options.port);
    if (const auto problem = started.error()) {
        complain(*problem);
        return failed;
    }
    auto server = std::move(started).unwrap();
    terminal.print(server->address());
    first.unlock();

    int signal = 0;
    ::sigwait(&signals, &signal);
    server.reset();
    terminal.print("= ended by signal " + std::to_string(signal) + "; "
        + counted(service.received().size(), "report") + " taken");
    return terminal.isIntact() ? 0 : failed;
}

} // namespace

} // namespace fieldbook

int main(int argumentCount, char** arguments)
{
    using namespace fieldbook;
    const auto options = parseDaemonOptions({arguments + 1, static_cast<std::size_t>(argumentCount - 1)});
    if (const auto message = options.error()) {
        complain(*message + "\nTry --help.");
        return wronglyCalled;
    }
    if (options.value()->isHelp) {
        std::fputs(daemonHelpText().data(), stdout);
        return std::fflush(stdout) == 0 ? 0 : failed;
    }
    try {
        return serve(options.unwrap());
    } catch (const std::exception& error) {
        complain(error.what());
        return failed;
    }
}
