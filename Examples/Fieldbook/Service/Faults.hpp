#pragma once

/// @file
/// What may go wrong with a service on purpose.

#include "Service/ServiceRequest.hpp"
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

enum class Fault {
    latency,         ///< The answer comes seconds later.
    serverError,     ///< Status 500; nothing was done.
    tooManyRequests, ///< Status 429, and when to come back; nothing was done.
    cut,             ///< Everything was done, and the connection breaks in the middle of the answer.
    malformed        ///< One member of a list is not what it ought to be.
};

/// As it stands on command lines: `latency`, `500`, `429`, `cut`, `malformed`.
std::string_view nameOf(Fault fault);

/// Which faults there are, and how often.
struct FaultPlan {
    std::vector<Fault> kinds = {};
    std::string seed = "demo";
    int percent = 30; ///< Of requests that have a fault, from 0 to 100.

    friend bool operator==(const FaultPlan&, const FaultPlan&) = default;
};

/// Reads names with a comma between them; `all` and `none` are lists, too. Nothing for any other text.
std::optional<std::vector<Fault>> faultsIn(std::string_view names);

/// Stands before a service and spoils some of what it answers.
///
/// What happens to a request follows from the seed, its method and path, and how often that was asked before:
/// it is the same in every run, whatever else is asked in between and on whichever thread. It neither waits
/// nor breaks anything off: the answer says that this is to be done.
///
/// @snippet Examples/Fieldbook/Tests/Service/FaultsTests.cpp Spoiling what a service answers
///
/// Safe to use from several threads, if the service is.
class FaultyService {
public:
    using Handler = std::function<ServiceResponse(const ServiceRequest&)>;

    FaultyService(Handler service, FaultPlan plan);

    ServiceResponse handle(const ServiceRequest& request);

    /// The fault of the `attempt`-th request (from 1) of this method and path, or nothing. Only lists have
    /// malformed members.
    std::optional<Fault> faultOf(std::string_view method, std::string_view path, int attempt) const;

private:
    int draw(std::string_view what, const std::string& request, int limit) const;

    Handler m_service;
    FaultPlan m_plan;
    std::mutex m_mutex;
    std::map<std::string, int> m_attempts; ///< By method and path.
};

} // namespace fieldbook
