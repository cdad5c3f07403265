// Step 16: a response for several services, one of which sends what it should not.

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include "Orrenby/Utilities/ServiceDecoder.hpp"
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

using namespace orrenby;

struct User {
    std::string name;
    std::optional<std::string> town;
};

struct Station {
    std::string name;
    double level = 0; // in metres

    static ServiceKey serviceKey() { return "station"; }
};

constexpr auto response = R"({
  "user": {"name": "Ann"},
  "station": {"name": "Mill", "level": "high", "since": 1700000000},
  "notes": ["closed", "no boats"],
  "version": 3
})";

int main()
{
    Log::onEvent([](Log::Level, const Log::DeferredEvent& deferred) {
        std::printf("reported: %s\n", deferred().properties().description().c_str());
    });

    ServiceDecoder services;
    services.register_("user", [](const User& user) { std::printf("user: %s\n", user.name.c_str()); });
    services.register_([](const Station& station) { std::printf("level: %g m\n", station.level); });

    std::size_t count = 0;
    const auto notes = serviceStream<std::vector<std::string>>(services, "notes");
    const auto subscription = notes.bind([&](const auto& texts) {
        count = texts.size();
        std::printf("%zu notes\n", count);
    });

    services.decode(response);

    // What is wrong with the response, all of it, and where.
    const auto report = decodeReport(services, response);
    for (const auto& failure : report.failures) {
        std::printf("line %zu: %s\n", failure.position.line, failure.excerpt.c_str());
        std::printf("%s\n", failure.error.description().c_str());
    }
    return report.failures.size() == 1 && count == 2 ? 0 : 1;
}
