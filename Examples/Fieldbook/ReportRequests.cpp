#include "ReportRequests.hpp"

#include "Orrenby/Foundation/Requests/StreamedUpload.hpp"
#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "ReportEncoding.hpp"
#include "Service/ServiceMessages.hpp"
#include "Text.hpp"

namespace fieldbook {

namespace {

using orrenby::HTTPMethod;

constexpr double patience = 20; // seconds

orrenby::URLRequest requestTo(const orrenby::URL& service, const std::string& path)
{
    return orrenby::URLRequest(orrenby::URL::make(path, service).value(), patience);
}

template <class Message> std::optional<Message> decoded(std::string_view text)
{
    try {
        return orrenby::JSONDecoder().decode<Message>(text);
    } catch (const orrenby::DecodingError&) {
        return {};
    }
}

} // namespace

orrenby::URLRequest signInRequest(const orrenby::URL& service, const orrenby::EmailAddress& user)
{
    return requestTo(service, "/session") | orrenby::using_(HTTPMethod::post)
        | orrenby::encoding({{"address", user.stringValue()}});
}

SignedRequest reportRequest(const orrenby::URL& service, const OutgoingReport& report, std::string_view token)
{
    const auto boundary = orrenby::World::current().uuids().next().uuidString();
    const auto text = encodedReport(report.report);
    orrenby::BodyStream body;
    orrenby::appendBodyPart(body,
        orrenby::BodyPart{.key = "report",
            .value = text,
            .boundary = boundary,
            .contentType = orrenby::HTTPMediaType::json});
    if (report.photo) {
        const auto path = report.photo->file.string();
        orrenby::appendBodyPart(body,
            orrenby::BodyFilePart{
                .key = "photo", .path = path, .boundary = boundary, .contentType = report.photo->mediaType});
    }
    orrenby::appendClosingDelimiter(body, boundary);
    auto request = requestTo(service, "/reports/" + std::to_string(report.number))
        | orrenby::using_(HTTPMethod::put) | orrenby::signed_(token)
        | orrenby::addingHeader(
            orrenby::HTTPHeaderField::contentType, orrenby::HTTPMediaType::multipartFormData(boundary));
    return {std::move(request), std::move(body)};
}

std::optional<std::string> tokenIn(std::string_view answer)
{
    auto message = decoded<SignInAnswer>(answer);
    return message ? std::optional(std::move(message->token)) : std::nullopt;
}

std::optional<std::string> problemIn(std::string_view answer)
{
    const auto message = decoded<ServiceProblem>(answer);
    return message ? std::optional(printable(message->problem)) : std::nullopt;
}

} // namespace fieldbook
