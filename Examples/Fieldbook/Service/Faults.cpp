#include "Service/Faults.hpp"

#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Utilities/SeededRandomNumberGenerator.hpp"
#include <algorithm>
#include <cstddef>
#include <functional>
#include <span>
#include <utility>

namespace fieldbook {

namespace {

constexpr Fault allFaults[] = {
    Fault::latency, Fault::serverError, Fault::tooManyRequests, Fault::cut, Fault::malformed};

std::string nameOfRequest(std::string_view method, std::string_view path, int attempt)
{
    return std::string(method).append(" ").append(path).append("/").append(std::to_string(attempt));
}

bool isList(std::string_view method, std::string_view path) { return method == "GET" && path == "/reports"; }

/// The list with the severity of one member replaced, or as it is where it has no member.
std::string withMalformedMember(const std::string& body, const std::function<int(int)>& chosenOf)
{
    const auto value = orrenby::NSJSONSerialization::tryJSONObjectWithData(std::as_bytes(std::span(body)));
    auto members = value.value() ? value.value()->cast<orrenby::Array>() : std::nullopt;
    if (!members || members->empty())
        return body;
    auto& member = (*members)[static_cast<std::size_t>(chosenOf(static_cast<int>(members->size())))];
    auto object = member.cast<orrenby::Dictionary>();
    if (!object)
        return body;
    object->set("severity", "quite bad");
    member = *std::move(object);
    const auto data = orrenby::NSJSONSerialization::dataWithJSONObject(
        orrenby::Any(*std::move(members)), orrenby::NSJSONSerialization::WritingOptions::PrettyPrinted);
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

} // namespace

std::string_view nameOf(Fault fault)
{
    switch (fault) {
    case Fault::latency:
        return "latency";
    case Fault::serverError:
        return "500";
    case Fault::tooManyRequests:
        return "429";
    case Fault::cut:
        return "cut";
    case Fault::malformed:
        return "malformed";
    }
    return "";
}

std::optional<std::vector<Fault>> faultsIn(std::string_view names)
{
    if (names == "none")
        return std::vector<Fault>();
    if (names == "all")
        return std::vector<Fault>(std::begin(allFaults), std::end(allFaults));
    std::vector<Fault> faults;
    for (bool isLast = false; !isLast;) {
        const auto end = std::min(names.find(','), names.size());
        const auto* const fault = std::find_if(std::begin(allFaults), std::end(allFaults),
            [name = names.substr(0, end)](Fault each) { return nameOf(each) == name; });
        if (fault == std::end(allFaults) || std::find(faults.begin(), faults.end(), *fault) != faults.end())
            return std::nullopt;
        faults.push_back(*fault);
        isLast = end == names.size();
        names.remove_prefix(isLast ? end : end + 1);
    }
    return faults;
}

FaultyService::FaultyService(Handler service, FaultPlan plan)
    : m_service(std::move(service))
    , m_plan(std::move(plan))
{}

/// From 0, below the limit. A source of its own for each choice, so that one does not change the others.
int FaultyService::draw(std::string_view what, const std::string& request, int limit) const
{
    const auto seed = m_plan.seed + '/' + std::string(what) + '/' + request;
    return static_cast<int>(orrenby::SeededRandomNumberGenerator(seed, {.max = limit - 1}).next());
}

std::optional<Fault> FaultyService::faultOf(std::string_view method, std::string_view path, int attempt) const
{
    auto kinds = m_plan.kinds;
    if (!isList(method, path))
        std::erase(kinds, Fault::malformed);
    const auto request = nameOfRequest(method, path, attempt);
    if (kinds.empty() || draw("whether", request, 100) >= m_plan.percent)
        return {};
    return kinds[static_cast<std::size_t>(draw("which", request, static_cast<int>(kinds.size())))];
}

ServiceResponse FaultyService::handle(const ServiceRequest& request)
{
    const auto attempt = [&] {
        const std::lock_guard lock(m_mutex);
        return ++m_attempts[request.method + ' ' + request.path];
    }();
    const auto name = nameOfRequest(request.method, request.path, attempt);
    const auto fault = faultOf(request.method, request.path, attempt);
    if (fault == Fault::serverError)
        return {.status = 500, .body = R"({"problem":"Something broke."})"};
    if (fault == Fault::tooManyRequests)
        return {.status = 429,
            .body = R"({"problem":"Too many requests."})",
            .headers = {{"Retry-After", std::to_string(3 + draw("retry", name, 4))}}};
    auto response = m_service(request);
    if (fault == Fault::latency)
        response.latency = 0.5 * (1 + draw("latency", name, 6));
    else if (fault == Fault::cut)
        response.isCut = true;
    else if (fault == Fault::malformed)
        response.body = withMalformedMember(
            response.body, [&](int count) { return draw("member", name, count); });
    return response;
}

} // namespace fieldbook
