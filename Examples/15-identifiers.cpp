// Step 15: identifiers that are not mixed up, read from a response whose parts may be broken.

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Standard/ResultDecoding.hpp"
#include "Orrenby/Utilities/Identifier.hpp"
#include "Orrenby/Utilities/JSON/JSONObject.hpp"
#include <cstdio>

using namespace orrenby;

struct Station {
    using IdentifierType = std::string;
    Identifier<Station> id = "";
    std::string name;
    friend bool operator==(const Station&, const Station&) = default;
};

struct Reading {
    using IdentifierType = std::int64_t;
    Identifier<Reading> id = 0;
    Identifier<Station> station = ""; // the identifier of a reading does not fit here
    std::optional<JSONObject> details;
    friend bool operator==(const Reading&, const Reading&) = default;
};

template <> struct std::hash<Station> {
    std::size_t operator()(const Station& station) const { return std::hash<std::string>{}(station.name); }
};
template <> struct std::hash<Reading> {
    std::size_t operator()(const Reading& one) const { return std::hash<Identifier<Reading>>{}(one.id); }
};

struct Response {
    std::vector<Station> stations;
    std::vector<Result<Reading, DecodingError>> readings;
};

int main()
{
    const auto response = JSONDecoder().decode<Response>(R"({
        "stations": [{"id": "north", "name": "North Bridge"}],
        "readings": [
            {"id": 41, "station": "north", "details": {"level": 2.5, "unit": "m"}},
            {"id": "42", "station": "north"},
            {"id": 43, "station": "north"}
        ]
    })");

    for (const auto& reading : response.readings)
        reading
            .onSuccess([](const Reading& value) {
                const auto level = value.details ? value.details->getOptional<double>("level") : std::nullopt;
                std::printf("%ld of %s: %s\n", static_cast<long>(value.id.rawValue()),
                    value.station.rawValue().c_str(), describe(level).c_str());
            })
            .onFailure([](const DecodingError& error) { std::puts(error.description().c_str()); });
    return response.stations[0].id == "north" ? 0 : 1;
}
