#include "Service/ReportService.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "ReportDecoding.hpp"
#include "Service/ServiceMessages.hpp"
#include "SignIn.hpp"
#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace fieldbook {

namespace {

ServiceResponse answer(int status, const auto& value)
{
    return {status, orrenby::JSONEncoder().encodeText(value)};
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

} // namespace

ReportService::ReportService(Mood mood)
    : m_mood(mood)
{}

ServiceResponse ReportService::handle(const ServiceRequest& request)
{
    if (request.path == "/session")
        return request.method == "POST" ? signIn(request) : refusal(405, "Sessions are made by POST.");
    if (const auto number = reportNumberIn(request.path))
        return request.method == "PUT" ? take(*number, request) : refusal(405, "Reports are sent by PUT.");
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

ServiceResponse ReportService::take(int number, const ServiceRequest& request)
{
    const std::lock_guard lock(m_mutex);
    const auto sender = senderOf(request);
    if (!sender)
        return refusal(401, "Nobody is signed in with this token.");
    const auto* const part = request.part("report");
    if (part == nullptr)
        return refusal(400, "The part \"report\" is missing.");
    const auto report = decodedReport(part->content);
    if (const auto problem = report.error())
        return refusal(400, *problem);
    const auto* const photo = request.part("photo");
    if (photo != nullptr && !photo->mediaType.starts_with("image/"))
        return refusal(415, "The photo is no image.");
    if (!m_mood(number, ++m_attempts[number]))
        return refusal(503, "Too busy.");
    m_received.insert_or_assign(number,
        ReceivedReport{
            number, *sender, report.unwrap(), photo != nullptr ? std::optional(*photo) : std::nullopt});
    return answer(
        201, ReportAnswer{number, static_cast<std::int64_t>(photo != nullptr ? photo->content.size() : 0)});
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
