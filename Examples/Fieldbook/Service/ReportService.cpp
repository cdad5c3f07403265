#include "Service/ReportService.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Report/ReportDecoding.hpp"
#include "Report/ReportEncoding.hpp"
#include "Service/ServiceMessages.hpp"
#include "SignIn/SignIn.hpp"
#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace fieldbook {

namespace {

ServiceResponse answer(int status, const auto& value)
{
    return {.status = status, .body = orrenby::JSONEncoder().encodeText(value)};
}

ServiceResponse refusal(int status, std::string problem)
{
    return answer(status, ServiceProblem{std::move(problem)});
}

/// The number in "/reports/4"; nothing for every other path.
std::optional<int> reportNumberIn(std::string_view path)
{
    constexpr std::string_view prefix = "/reports/";
    if (!path.starts_with(prefix))
        return {};
    path.remove_prefix(prefix.size());
    int number = 0;
    const auto [end, error] = std::from_chars(path.data(), path.data() + path.size(), number);
    const bool isNumber = error == std::errc() && end == path.data() + path.size() && number > 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// The token in `Token token="…"`; empty when there is none.
std::string tokenIn(std::string_view authorization)
{
    constexpr std::string_view before = "Token token=\"";
    if (!authorization.starts_with(before) || authorization.size() == before.size()
        || !authorization.ends_with('"'))
        return "";
    authorization.remove_prefix(before.size());
    authorization.remove_suffix(1);
    return std::string(authorization);
}

/// The report in a request: a part, or all of the body.
std::optional<std::string_view> reportTextIn(const ServiceRequest& request)
{
    if (const auto* const part = request.part("report"))
        return part->content;
    if (request.parts.empty() && request.header("content-type").starts_with("application/json"))
        return request.body;
    return {};
}

ServiceResponse answerTo(const ReceivedReport& report)
{
    const auto photoBytes = report.photo ? report.photo->content.size() : 0;
    return answer(201, ReportAnswer{report.number, static_cast<std::int64_t>(photoBytes)});
}

constexpr auto nobody = "Nobody is signed in with this token.";

} // namespace

ReportService::ReportService(ReportServiceOptions options)
    : m_options(std::move(options))
{}

ServiceResponse ReportService::handle(const ServiceRequest& request)
{
    if (request.path == "/session")
        return request.method == "POST" ? signIn(request) : refusal(405, "Sessions are made by POST.");
    if (request.path == "/reports") {
        if (request.method == "GET")
            return list();
        return request.method == "POST" ? post(request)
                                        : refusal(405, "Reports are listed by GET and sent by POST.");
    }
    if (const auto number = reportNumberIn(request.path))
        return request.method == "PUT" ? put(*number, request) : refusal(405, "Reports are sent by PUT.");
    return refusal(404, "There is nothing here.");
}

ServiceResponse ReportService::signIn(const ServiceRequest& request)
{
    SignInRequest wish;
    try {
        wish = orrenby::JSONDecoder().decode<SignInRequest>(request.body);
    } catch (const orrenby::DecodingError&) {
        return refusal(400, "No address was given.");
    }
    const auto address = addressToSignIn(wish.address);
    if (const auto problem = address.error())
        return refusal(400, *problem);
    auto token = orrenby::World::current().uuids().next().uuidString();
    const std::lock_guard lock(m_mutex);
    m_tokens.insert_or_assign(token, address.unwrap());
    return answer(201, SignInAnswer{std::move(token)});
}

std::optional<orrenby::EmailAddress> ReportService::senderOf(const ServiceRequest& request) const
{
    const auto entry = m_tokens.find(tokenIn(request.header("authorization")));
    return entry != m_tokens.end() ? std::optional(entry->second) : std::nullopt;
}

ServiceResponse ReportService::list() const
{
    auto reports = m_options.feed;
    const std::lock_guard lock(m_mutex);
    for (auto entry = m_received.lower_bound(firstPosted); entry != m_received.end(); ++entry)
        reports.push_back(entry->second.report);
    return {.body = encodedReports(reports)};
}

ServiceResponse ReportService::post(const ServiceRequest& request)
{
    const std::lock_guard lock(m_mutex);
    const auto sender = senderOf(request);
    if (!sender)
        return refusal(401, nobody);
    const auto key = std::pair(sender->stringValue(), std::string(request.header("idempotency-key")));
    const auto known = m_posted.find(key);
    if (known != m_posted.end())
        if (const auto taken = m_received.find(known->second); taken != m_received.end())
            return answerTo(taken->second);
    const auto number = known != m_posted.end() ? known->second : m_nextPosted++;
    if (!key.second.empty())
        m_posted.insert_or_assign(key, number);
    return take(number, *sender, request);
}

ServiceResponse ReportService::put(int number, const ServiceRequest& request)
{
    const std::lock_guard lock(m_mutex);
    const auto sender = senderOf(request);
    return sender ? take(number, *sender, request) : refusal(401, nobody);
}

/// The mutex is held.
ServiceResponse ReportService::take(
    int number, const orrenby::EmailAddress& sender, const ServiceRequest& request)
{
    const auto text = reportTextIn(request);
    if (!text)
        return refusal(400, "The part \"report\" is missing.");
    const auto report = decodedReport(*text);
    if (const auto problem = report.error())
        return refusal(400, *problem);
    const auto* const photo = request.part("photo");
    if (photo != nullptr && !photo->mediaType.starts_with("image/"))
        return refusal(415, "The photo is no image.");
    if (!m_options.mood(number, ++m_attempts[number]))
        return refusal(503, "Too busy.");
    auto received = ReceivedReport{number, sender, report.unwrap(),
        photo != nullptr ? std::optional(*photo) : std::nullopt, std::string(*text)};
    if (m_options.keep)
        if (const auto problem = m_options.keep(received))
            return refusal(507, "The report cannot be kept: " + *problem);
    return answerTo(m_received.insert_or_assign(number, std::move(received)).first->second);
}

std::vector<ReceivedReport> ReportService::received() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<ReceivedReport> result;
    for (const auto& [number, report] : m_received)
        result.push_back(report);
    return result;
}

void ReportService::forgetTokens()
{
    const std::lock_guard lock(m_mutex);
    m_tokens.clear();
}

} // namespace fieldbook
