#include "Orrenby/Foundation/Requests/RequestMultipart.hpp"

#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"
#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Foundation/Requests/MultipartText.hpp"
#include <algorithm>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

void append(Data& body, std::span<const std::byte> bytes)
{
    body.insert(body.end(), bytes.begin(), bytes.end());
}

void append(Data& body, std::string_view text) { append(body, std::as_bytes(std::span(text))); }

/// Makes room for exactly this much, or, when the body has to move, for half as much again: chains of many
/// parts do not copy what is there for every one of them.
void makeRoom(Data& body, std::size_t count)
{
    const auto needed = body.size() + count;
    if (body.capacity() < needed)
        body.reserve(std::max(needed, body.capacity() + body.capacity() / 2));
}

URLRequest requestWithUpload(URLRequest request, std::span<const std::byte> data, std::string_view mimetype,
    std::optional<std::int64_t> pendingMediaCount, std::span<const std::string> photoIDs)
{
    if (request.httpBody())
        return request;

    const auto boundary = detail::newBoundary();
    const auto frame = detail::uploadFrame(
        boundary, mimetype, {.pendingMediaCount = pendingMediaCount, .photoIDs = photoIDs});
    Data body;
    body.reserve(frame.before.size() + data.size() + frame.after.size());
    append(body, frame.before);
    append(body, data);
    append(body, frame.after);
    request.setHTTPBody(std::move(body));
    request.setHTTPHeader(HTTPHeaderField::contentType, HTTPMediaType::multipartFormData(boundary));
    return request;
}

} // namespace

URLRequest detail::requestWithBodyPart(URLRequest request, const BodyPart& part)
{
    const auto value = part.value.bytes();
    if (!value)
        return request;

    const auto frame = bodyPartFrame(part.key, part.boundary, part.contentType);
    const auto closingSize = closingDelimiter(part.boundary).size();
    auto body = request.takeHTTPBody().value_or(Data());
    makeRoom(body, frame.before.size() + value->size() + frame.after.size() + closingSize);
    append(body, frame.before);
    append(body, *value);
    append(body, frame.after);
    request.setHTTPBody(std::move(body));
    return request;
}

URLRequest detail::requestWithClosedBody(URLRequest request, std::string_view boundary)
{
    auto body = request.takeHTTPBody().value_or(Data());
    append(body, closingDelimiter(boundary));
    request.setHTTPBody(std::move(body));
    return request;
}

URLRequest detail::Attach::operator()(
    URLRequest request, std::span<const std::byte> data, std::string_view mimetype) const
{
    return requestWithUpload(std::move(request), data, mimetype, std::nullopt, {});
}

URLRequest detail::Attach::operator()(
    URLRequest request, const HTTPBodyFormDataPart& media, std::int64_t pendingMediaCount) const
{
    return requestWithUpload(std::move(request), media.data, media.mimetype, pendingMediaCount, {});
}

URLRequest detail::Attach::operator()(
    URLRequest request, const HTTPBodyFormDataPart& media, const std::vector<std::string>& photoIDs) const
{
    return requestWithUpload(std::move(request), media.data, media.mimetype, std::nullopt, photoIDs);
}

} // namespace orrenby
