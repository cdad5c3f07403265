#include "Daemon/DaemonOptions.hpp"

#include "Terminal/Text.hpp"
#include <algorithm>
#include <charconv>
#include <utility>

namespace fieldbook {

namespace {

/// A whole number from 0 to the limit, in digits.
std::optional<int> numberUpTo(int limit, std::string_view text)
{
    int number = 0;
    const auto* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = error == std::errc() && rest == end && text.front() != '-' && number <= limit;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Sets one option; gives what is wrong with its value, or with its name.
std::optional<std::string> set(std::string_view name, std::string_view value, DaemonOptions& options)
{
    if (name == "--port") {
        const auto port = numberUpTo(65535, value);
        options.port = port.value_or(0);
        return port ? std::nullopt : std::optional("--port takes a number up to 65535");
    }
    if (name == "--seed") {
        // The seed's own rules stand with the reports that are made of it.
        const auto request = sampleRequestIn("1," + std::string(value), ',');
        if (!request)
            return "--seed takes up to 32 letters and digits";
        options.feed.seed = options.faults.seed = request->seed;
        return {};
    }
    if (name == "--reports") {
        const auto count = numberUpTo(SampleRequest::limit, value);
        options.feed.count = count.value_or(0);
        return count
            ? std::nullopt
            : std::optional("--reports takes a number up to " + std::to_string(SampleRequest::limit));
    }
    if (name == "--faults") {
        auto faults = faultsIn(value);
        if (!faults)
            return "--faults takes all, none, or some of latency,500,429,cut,malformed";
        options.faults.kinds = *std::move(faults);
        return {};
    }
    if (name == "--fault-rate") {
        const auto percent = numberUpTo(100, value);
        options.faults.percent = percent.value_or(0);
        return percent ? std::nullopt : std::optional("--fault-rate takes a percentage");
    }
    if (name == "--keep" && !value.empty()) {
        options.keep = value;
        return {};
    }
    return name == "--keep" ? "--keep takes a folder" : "unknown option \"" + printable(name) + '"';
}

} // namespace

orrenby::Result<DaemonOptions, std::string> parseDaemonOptions(std::span<const char* const> arguments)
{
    using Outcome = orrenby::Result<DaemonOptions, std::string>;
    DaemonOptions options;
    for (const std::string_view argument : arguments) {
        if (argument == "--help" || argument == "-h") {
            options.isHelp = true;
            continue;
        }
        if (!argument.starts_with('-'))
            return Outcome::failure("it takes no arguments besides options");
        const auto sign = std::min(argument.find('='), argument.size());
        const auto value = argument.substr(std::min(sign + 1, argument.size()));
        if (auto problem = set(argument.substr(0, sign), value, options))
            return Outcome::failure(*std::move(problem));
    }
    return Outcome::success(std::move(options));
}

std::string_view daemonHelpText()
{
    return R"(fieldbookd [OPTION...]

The service to which fieldbook sends reports, on 127.0.0.1. The first line that it prints is its address; then
follows one line for each request. It ends on Ctrl-C or a termination request, and keeps what it got in memory.

  --port=N          listen there; 0, which is the default, is any port that is free
  --reports=N       have N made-up reports to tell (default: 5)
  --seed=TEXT       of the reports and of the faults (default: demo)
  --faults=LIST     what may go wrong: some of latency,500,429,cut,malformed, or all, or none (default: none)
  --fault-rate=N    how often, in percent of the requests (default: 30)
  --keep=FOLDER     write the bytes of what it takes there: 4.json, and 4.png for its photo
  -h --help         print this text

Which request meets which fault follows from the seed, and is the same in every run.

Exit status: 0 after an end in order; 1 if it cannot listen or has no such folder; 2 for wrong arguments.
)";
}

} // namespace fieldbook
